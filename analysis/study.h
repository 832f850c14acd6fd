// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_STUDY_H
#define VELMORA_ANALYSIS_STUDY_H

#include "analysis/bound.h"
#include "analysis/checkup/heading.h"
#include "analysis/target.h"
#include "model/endpoint.h"
#include "model/tables.h"

#include <QStringList>
#include <QVector>

/// Everything that results depend on, in one value that is cheap to copy.
///
/// The state may be uneven, as after an aborted import: models without data sets or without a
/// definition, rows of different length. Every function checks before it indexes.
struct Study
{
    RawResults rawResults;                  ///< [model][dataSet][sample][column]
    QVector<QStringList> rawResultsHeaders; ///< [model], pieces of the heading line
    QVector<Heading> headings;              ///< [model], of those; models may be missing
    /// That of rawResults by fingerprintOf; 0 if not calculated.
    quint64 fingerprint = 0;
    QVector<endPoint> endPoints; ///< [model]
    QVector<double> doses;       ///< candidate doses, ascending
    TargetInterval target{lowerSubstitute.value, upperSubstitute.value};
    QVector<double> levels;     ///< target probability levels in percent, ascending
    bool logScale = true;       ///< whether weights are natural logarithms
    bool selecting = true;      ///< model selection; else model averaging
    bool individualOfv = true;  ///< weights of each sample; else those of the first for all
    int colNumOFV = 20;         ///< 1-based; each definition has it, too
    int colNumTHETA1 = 21;      ///< 1-based; each definition has it, too
    int colNumThird = 22;       ///< 1-based; each definition has it, too
    int individuals = 100;      ///< simulated per dose; each definition has it, too
    int populationSummary = -1; ///< as in endPoint; each definition has it, too
    /// The model shown on page "0". This is intended: its data sets decide whether weights exist.
    int shownModel = 0;

    /// The data sets of model 0, over which doses are chosen.
    int dataSetCount() const { return rawResults.isEmpty() ? 0 : rawResults.first().size(); }

    /// The names of the columns of a model's results; read from the pieces if headings lacks the
    /// model.
    QStringList columnNamesOf(int model) const;
};

/// "model 0", "model 1" and so on.
QStringList numberedModelNames(int count);

/// Sets up a definition for every model, with its name and the study's column settings. Expressions
/// stay; new definitions take the study's individuals and population summary.
void defineModels(Study& study, const QStringList& modelNames);

/// Sets the doses of every definition and compiles its endpoint expression; to be called before
/// endpoints are evaluated.
void bringUpToDate(QVector<endPoint>& endPoints, const QVector<double>& doses);

/// The dose as the first model's endpoint expression calls it; empty without models.
QString doseName(const QVector<endPoint>& endPoints);

/// A number that differs for results with other numbers or another shape; never 0. It is the same
/// on every machine of the same byte order.
quint64 fingerprintOf(const RawResults& results);

#endif
