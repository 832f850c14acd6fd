// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_PROVENANCE_H
#define VELMORA_ANALYSIS_PROVENANCE_H

#include "analysis/study.h"

/// Kinds of inputs, in the order in which texts name them.
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

/// The inputs that a result was made from. Whether the result is stale is a comparison with the
/// current inputs, never a flag.
///
/// Cheap to take, to copy and to compare: it shares what it holds. Bootstrap results are not kept;
/// their fingerprint identifies them.
struct Provenance
{
    QVector<InputKind> kinds; ///< on which the result depends; none without a result
    Study inputs;             ///< without bootstrap results and headings
    int dataSetCount = 0;
    /// Data sets for which model averaging finds weights: those that the model shown on page
    /// "0" has, too.
    int weighedDataSets = 0;
    int dataSet = -1;       ///< of the result; -1 for all
    int model = -1;         ///< the same
    Table trueRows;         ///< first rows of the simulation models' results, [dataSet]
    QStringList trueModels; ///< numbers as they stand in the table, [dataSet]
    Table chosenDoses;      ///< that were compared, [dataSet][level]

    bool exists() const { return !kinds.isEmpty(); }
};

/// The provenance of the curve of one model's endpoint over the doses.
Provenance typicalCurveProvenance(const Study& study, int model);

/// The provenance of the relative weights of a data set.
Provenance weightsProvenance(const Study& study, int dataSet);

/// The provenance of the probability curve of a data set.
Provenance probabilityProvenance(const Study& study, int dataSet);

/// The provenance of the doses chosen for all data sets.
Provenance doseProvenance(const Study& study);

/// The provenance of endpoints that are kept for other levels and intervals. Weights and choices
/// are among the kinds, as models without a weight are left out.
Provenance endpointProvenance(const Study& study);

/// The provenance of the comparison of chosen doses, [dataSet][level], with theoretical MEDs: those
/// of true models or, where trueRows is empty, of a file. The doses have a provenance of their own.
Provenance truthProvenance(const Study& study, const Table& trueRows, const QStringList& trueModels,
                           const Table& chosenDoses);

/// The kinds of inputs that differ between made and now, among those on which the result depends.
/// None without a result. Numbers that are NaN on both sides agree.
QVector<InputKind> changedKinds(const Provenance& made, const Provenance& now);

/// "doses, weights".
QString kindNames(const QVector<InputKind>& kinds);

/// The settings for which a result was made: "0.4 < endpoint <= 1, model average". Names the data
/// set if there are several, and one OFV per model if it was used.
QString madeFor(const Provenance& made);

/// The text on a stale result: what was done ("The curve was calculated"), the settings of the
/// result, and "; since changed: doses, weights". Empty where nothing changed.
QString staleText(const QString& what, const Provenance& made, const QVector<InputKind>& changed);

#endif
