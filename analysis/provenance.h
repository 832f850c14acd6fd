// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_PROVENANCE_H
#define VELMORA_ANALYSIS_PROVENANCE_H

#include "analysis/study.h"

/// Kinds of inputs, in the order in which users are told of them.
enum class InputKind {
    Results,
    DataSet,
    Doses,
    Endpoints, ///< expressions, omega, population summary, the THETA1 column
    Individuals,
    Weights, ///< expressions, scale, the OFV column
    Interval,
    Choices, ///< averaging or selection, one or individual OFV
    Levels,
    TrueModels, ///< and the simulation models' results
    ChosenDoses ///< that were compared with the truth
};

/// What a result was made from. Whether the result is stale is a comparison with what it
/// would be made from now, never a flag.
///
/// Cheap to take, to copy and to compare: it shares what it holds. Bootstrap results are
/// told apart by their fingerprint and not kept.
struct Provenance
{
    QVector<InputKind> kinds; ///< that the result depends on; none where there is no result
    Study inputs;             ///< without bootstrap results and headings
    int dataSetCount = 0;
    /// Data sets for which model averaging finds weights: those that the model shown on page
    /// "0" has, too.
    int weighedDataSets = 0;
    int dataSet = -1;       ///< that the result is of; -1 for all
    int model = -1;         ///< the same
    Table trueRows;         ///< first rows of the simulation models' results, [dataSet]
    QStringList trueModels; ///< numbers as they stand in the table, [dataSet]
    Table chosenDoses;      ///< that were compared, [dataSet][level]

    bool exists() const { return !kinds.isEmpty(); }
};

/// Of the curve of one model's endpoint over the doses.
Provenance typicalCurveProvenance(const Study& study, int model);

/// Of the relative weights of a data set.
Provenance weightsProvenance(const Study& study, int dataSet);

/// Of the probability curve of a data set.
Provenance probabilityProvenance(const Study& study, int dataSet);

/// Of the doses chosen for all data sets.
Provenance doseProvenance(const Study& study);

/// Of endpoints that are kept for other levels and intervals. Weights and choices are among
/// the kinds, as models without a weight are left out.
Provenance endpointProvenance(const Study& study);

/// Of the comparison of chosen doses, [dataSet][level], with theoretical MEDs: those of true
/// models or, where trueRows is empty, of a file. What the doses were made from is a matter of
/// their own provenance.
Provenance truthProvenance(const Study& study, const Table& trueRows, const QStringList& trueModels,
                           const Table& chosenDoses);

/// The kinds of inputs in which a result that is made now would differ; only those that it
/// depends on. None if there is no result. Numbers that are NaN on both sides agree.
QVector<InputKind> changedKinds(const Provenance& made, const Provenance& now);

/// "doses, weights".
QString kindNames(const QVector<InputKind>& kinds);

/// For what a result was made: "0.4 < endpoint <= 1, model average". The data set is told
/// where there are several, one OFV per model where it was used.
QString madeFor(const Provenance& made);

/// What a user reads of a stale result: what was done ("The curve was calculated"), for what
/// the result was made, and "; since changed: doses, weights". Empty where nothing changed.
QString staleText(const QString& what, const Provenance& made, const QVector<InputKind>& changed);

#endif
