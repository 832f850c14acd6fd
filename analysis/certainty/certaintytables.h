// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CERTAINTY_CERTAINTYTABLES_H
#define VELMORA_ANALYSIS_CERTAINTY_CERTAINTYTABLES_H

#include "analysis/results.h"
#include "io/csvexport.h"

// Figures of certainty as tables and sentences.

/// A result of one data set, with everything that the figures of its certainty need.
struct JudgedResult
{
    int dataSet = 0;
    Study made;                       ///< inputs of the result; its levels are those of the tables
    QVector<double> probability;      ///< in percent, [dose]
    Evaluation evaluation;            ///< that exists
    QVector<DoseStability> stability; ///< [level]; empty where it was not asked for
};

/// The result of a curve, for levels in percent; without stability.
JudgedResult judgedResult(const ProbabilityCurve& curve, const QVector<double>& levels);

/// The result of a data set of a selection.
JudgedResult judgedResult(const DoseSelection& selection, int dataSet);

enum class CertaintyTable { Doses, Contributions, Endpoint, Sensitivity };

/// The headings of a table about models of these names.
QStringList certaintyHeadings(CertaintyTable table, const QVector<endPoint>& models);

/// The rows of the table for one result, with this number of digits: by level and dose, by model,
/// by dose and model, or by choice of fits. A missing MED is "none".
TextRows certaintyRows(CertaintyTable table, const JudgedResult& result, int digits);

/// The probabilities behind the doses: a heading with the doses and a row for each data set.
TextRows probabilityRows(const DoseSelection& selection, int digits);

/// The text behind the value of a point of a probability curve: ", Monte Carlo error 0.87", or a
/// line that says why there is none.
QString errorText(const ProbabilityCurve& curve, double dose);

/// A number of bootstrap samples to plan with, rounded up to two digits: 32000 for 31870. needed is
/// finite and above 0.
QString samplesToPlan(double needed);

/// How certain the MED of a level is: "80 %: 0.7 in 65 %, 0.6 in 35 % of resamples; 0.6 misses the
/// level by 0.4 errors", and how many samples would put it two errors away; or why this is not
/// known.
QString stabilityText(const DoseSelection& selection, int dataSet, int level);

/// The same for all data sets: the text of the only one, or the mean and the lowest share of
/// resamples in which the doses hold.
QString stabilityText(const DoseSelection& selection, int level);

/// The doses of a single data set that hold in less than 90 % of resamples.
QStringList unstableDoses(const DoseSelection& selection);

/// Monte Carlo errors, contributions, averaged endpoint and sensitivity of the curve, with MEDs for
/// levels in percent, as sections of the summary, each under its heading; the second function has
/// the stability of the doses. Empty where there are none.
QString certaintySummary(const ProbabilityCurve& curve, const QVector<double>& levels);
QString certaintySummary(const DoseSelection& selection);

#endif
