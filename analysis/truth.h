// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_TRUTH_H
#define VELMORA_ANALYSIS_TRUTH_H

#include "analysis/probability.h"

#include <QString>

#include <functional>
#include <optional>

/// Model numbers read from a file, 0-based, one per simulated data set.
struct TrueModelNumbers
{
    QVector<int> numbers; ///< what was read, whether valid or not
    bool isValid = false;
};

/// The true model numbers in a table of one column with simulationCount rows, or of one row
/// with as many values. Numbers are cut to integers towards 0; valid are those below
/// modelCount. Any other shape gives no numbers.
TrueModelNumbers trueModelNumbers(const Table& table, int simulationCount, int modelCount);

/// The candidate dose that a true MED is rounded up to: the one above the highest dose that is
/// below it. NaN above all doses; a MED of NaN gives the lowest dose, which is intended.
double roundedUpToDose(double trueMed, const QVector<double>& doses);

/// The lowest dose from which on, up to the highest, the endpoint lies in the target
/// interval. endpoints is the true model's endpoint per dose. NaN if the highest misses.
double theoreticalMed(const QVector<double>& endpoints, const QVector<double>& doses,
                      const TargetInterval& target);

/// Theoretical MEDs of simulated data sets, with the endpoints behind them.
struct TheoreticalMeds
{
    Table endpoints;      ///< of the true model, [dataSet][dose]; empty where there is none
    QVector<double> meds; ///< in dose units, [dataSet]; NaN for none
};

/// The theoretical MED of each simulated data set: the true model's endpoint for trueRows,
/// [dataSet][column], judged by theoreticalMed. trueModels are 0-based, [dataSet]; a number of no
/// model, or an empty row, gives NaN. The study's definitions must be up to date. goesOn receives
/// the number of data sets done; it aborts the rest by returning false, as isAwaited does within a
/// data set.
TheoreticalMeds theoreticalMeds(const Study& study, const Table& trueRows,
                                const QVector<int>& trueModels,
                                const std::function<bool(int done)>& goesOn,
                                const GoesOn& isAwaited = {});

/// How many uniform random numbers the theoretical MED of a data set draws, by the row and the
/// number of its true model.
qint64 randomNumberCountOfMed(const Study& study, const QVector<double>& trueRow, int trueModel);

/// How the estimated MEDs of one probability level compare with the theoretical ones.
struct LevelComparison
{
    int over = 0;  ///< data sets whose estimate is above the theoretical MED
    int equal = 0; ///< data sets in which both agree
    int under = 0; ///< all others, those without an estimate or a theoretical MED included
    /// Mean distance of the estimates from the theoretical MED over the data sets in which
    /// they differ, in dose units; NaN if there are none.
    double meanAbsoluteError = 0.0;

    int all() const { return over + equal + under; }
};

/// The number of data sets whose theoretical MED is NaN.
int countMissing(const QVector<double>& theoreticalMeds);

/// Compares level by level. doseChoice is [dataSet][level]; its first row has the number of levels.
/// Data sets without a theoretical MED entry are left out.
QVector<LevelComparison> compareWithTruth(const Table& doseChoice,
                                          const QVector<double>& theoreticalMeds);

/// The data sets of a level that a method without bias would put at or above the
/// theoretical MED.
double nominalCount(const LevelComparison& comparison, double level);

/// Counts from the lowest to the highest.
struct CountRange
{
    int lowest;
    int highest;
};

/// The counts that chance alone gives a method without bias in 95 % of studies: of n data sets,
/// each at or above the theoretical MED with a probability of level percent, the number of these
/// follows the binomial distribution B(n, level/100). From its 2.5 % to its 97.5 % quantile, a
/// quantile being the lowest k with P(X <= k) not below it; exact for any n, in a time that grows
/// with n. None without data sets, and unless the level lies strictly between 0 and 100, where
/// chance decides. Johnson, Kemp & Kotz, Univariate Discrete Distributions (2005).
std::optional<CountRange> nominalRange(const LevelComparison& comparison, double level);

/// Why the counts of a level are not compatible with the range of the nominal count: "over exceeds
/// 19" or "over or equal falls below 12"; empty if they are. As there are only a few doses, the
/// count of a method without bias lies anywhere from over to over or equal.
QString misfit(const LevelComparison& comparison, const CountRange& range);

/// Deviations from the nominal counts, 6 rows by 2 columns: mean excess of estimates above,
/// mean number of exact hits, mean shortfall; then the greatest of each. Column 0 is over
/// all levels strictly between 0 and 100 percent, column 1 over those from 50 on. Means
/// over no level are NaN.
Table summariseComparison(const QVector<LevelComparison>& comparisons,
                          const QVector<double>& levels);

#endif
