// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/truth.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Rows of the summary.
enum SummaryRow { MeanAbove, MeanEqual, MeanBelow, MaximalAbove, MaximalEqual, MaximalBelow };
constexpr int summaryRows = 6;

/// -1, which no model has, for what no int can hold.
int truncated(double number)
{
    return std::fabs(number) < std::numeric_limits<int>::max() ? static_cast<int>(number) : -1;
}

/// Whether the true model has an endpoint for the row.
bool hasTruth(const Study& study, const QVector<double>& trueRow, int trueModel)
{
    return trueModel >= 0 && trueModel < study.endPoints.size() && !trueRow.isEmpty();
}

LevelComparison compareLevel(const Table& doseChoice, const QVector<double>& theoreticalMeds,
                             int level)
{
    LevelComparison comparison;
    int different = 0;
    const int dataSetCount = qMin(doseChoice.size(), theoreticalMeds.size());
    for (int dataSet = 0; dataSet < dataSetCount; ++dataSet) {
        const double estimate = doseChoice.at(dataSet).value(level, notANumber);
        const double truth = theoreticalMeds.at(dataSet);
        if (truth == estimate) {
            ++comparison.equal;
        } else if (truth < estimate) {
            ++comparison.over;
            comparison.meanAbsoluteError += estimate - truth;
            ++different;
        } else {
            ++comparison.under;
            if (!std::isnan(estimate)) {
                comparison.meanAbsoluteError += truth - estimate;
                ++different;
            }
        }
    }
    // This is intended: exact hits are not in the divisor.
    comparison.meanAbsoluteError /= different;
    return comparison;
}

void addToSummary(Table& summary, int column, const LevelComparison& comparison, double nominal)
{
    const auto add = [&summary, column](SummaryRow mean, SummaryRow maximum, double value) {
        summary[mean][column] += value;
        summary[maximum][column] = qMax(summary.at(maximum).at(column), value);
    };
    const double atOrAbove = comparison.over + comparison.equal;
    if (atOrAbove < nominal) {
        add(MeanBelow, MaximalBelow, nominal - atOrAbove);
    }
    if (nominal < comparison.over) {
        add(MeanAbove, MaximalAbove, comparison.over - nominal);
    }
    add(MeanEqual, MaximalEqual, comparison.equal);
}

/// Probabilities of 0 to n successes up to a common factor, which is that of the most probable
/// count: no power of p is needed, whatever n is. What is too improbable for a double is 0.
QVector<double> binomialWeights(int n, double p)
{
    QVector<double> weights(n + 1, 0.0);
    const double odds = p / (1 - p);
    const int mode = qMin(n, int((n + 1.0) * p));
    weights[mode] = 1;
    for (int k = mode; k < n && weights.at(k) > 0; ++k) {
        weights[k + 1] = weights.at(k) * odds * (n - k) / (k + 1);
    }
    for (int k = mode; k > 0 && weights.at(k) > 0; --k) {
        weights[k - 1] = weights.at(k) / odds * k / (n - k + 1);
    }
    return weights;
}

/// The first index up to which the weights reach the sum.
int quantile(const QVector<double>& weights, double sum)
{
    constexpr double roundingErrors = 1e-12;
    int k = 0;
    for (double reached = weights.first();
         k + 1 < weights.size() && reached < sum * (1 - roundingErrors); reached += weights.at(k)) {
        ++k;
    }
    return k;
}

} // namespace

TrueModelNumbers trueModelNumbers(const Table& table, int simulationCount, int modelCount)
{
    QVector<double> values;
    if (table.size() == simulationCount && !table.isEmpty() && table.first().size() == 1) {
        for (const QVector<double>& row : table) {
            values.append(row.value(0, notANumber));
        }
    } else if (table.size() == 1 && table.first().size() == simulationCount) {
        values = table.first();
    }
    TrueModelNumbers result;
    result.isValid = !values.isEmpty();
    for (const double value : qAsConst(values)) {
        const int number = truncated(value);
        result.numbers.append(number);
        result.isValid = result.isValid && number >= 0 && number < modelCount;
    }
    return result;
}

double roundedUpToDose(double trueMed, const QVector<double>& doses)
{
    int index = doses.size();
    while (index > 0 && !(doses.at(index - 1) < trueMed)) {
        --index;
    }
    return doses.value(index, notANumber);
}

double theoreticalMed(const QVector<double>& endpoints, const QVector<double>& doses,
                      const TargetInterval& target)
{
    int index = doses.size();
    while (index > 0 && target.contains(endpoints.value(index - 1, notANumber))) {
        --index;
    }
    return doses.value(index, notANumber);
}

TheoreticalMeds theoreticalMeds(const Study& study, const Table& trueRows,
                                const QVector<int>& trueModels,
                                const std::function<bool(int done)>& goesOn,
                                const GoesOn& isAwaited)
{
    QVector<endPoint> endPoints = study.endPoints; // bound to their columns here
    const GoesOnWithDoses within = isAwaited ? [&](int) { return isAwaited(); } : GoesOnWithDoses();
    TheoreticalMeds found;
    bool going = true;
    for (int dataSet = 0; going && dataSet < trueRows.size(); ++dataSet) {
        const int model = trueModels.value(dataSet, -1);
        const QVector<double>& row = trueRows.at(dataSet);
        const bool exists = hasTruth(study, row, model);
        const auto endpoints =
            exists ? endPoints[model].evaluateEndpoint(row, within) : QVector<double>();
        if (!endpoints) {
            break;
        }
        found.endpoints.append(*endpoints);
        found.meds.append(theoreticalMed(found.endpoints.last(), study.doses, study.target));
        going = goesOn(dataSet + 1);
    }
    return found;
}

qint64 randomNumberCountOfMed(const Study& study, const QVector<double>& trueRow, int trueModel)
{
    return hasTruth(study, trueRow, trueModel)
               ? endPoint(study.endPoints.at(trueModel)).randomNumberCount(trueRow)
               : 0;
}

int countMissing(const QVector<double>& theoreticalMeds)
{
    return int(std::count_if(theoreticalMeds.begin(), theoreticalMeds.end(),
                             [](double med) { return std::isnan(med); }));
}

QVector<LevelComparison> compareWithTruth(const Table& doseChoice,
                                          const QVector<double>& theoreticalMeds)
{
    QVector<LevelComparison> comparisons;
    const int levelCount = doseChoice.isEmpty() ? 0 : doseChoice.first().size();
    for (int level = 0; level < levelCount; ++level) {
        comparisons.append(compareLevel(doseChoice, theoreticalMeds, level));
    }
    return comparisons;
}

double nominalCount(const LevelComparison& comparison, double level)
{
    return comparison.all() * level / 100;
}

std::optional<CountRange> nominalRange(const LevelComparison& comparison, double level)
{
    if (comparison.all() < 1 || !(0 < level && level < 100)) {
        return std::nullopt;
    }
    const QVector<double> weights = binomialWeights(comparison.all(), level / 100);
    const double total = std::accumulate(weights.begin(), weights.end(), 0.0);
    return CountRange{quantile(weights, 0.025 * total), quantile(weights, 0.975 * total)};
}

QString misfit(const LevelComparison& comparison, const CountRange& range)
{
    if (comparison.over > range.highest) {
        return QString("over exceeds %1").arg(range.highest);
    }
    return comparison.over + comparison.equal < range.lowest
               ? QString("over or equal falls below %1").arg(range.lowest)
               : QString();
}

Table summariseComparison(const QVector<LevelComparison>& comparisons,
                          const QVector<double>& levels)
{
    Table summary(summaryRows, QVector<double>(2, 0.0));
    int levelCounts[2] = {0, 0};
    for (int i = 0; i < comparisons.size() && i < levels.size(); ++i) {
        const double level = levels.at(i);
        if (!(0 < level && level < 100)) {
            continue;
        }
        // This is intended: 50 itself is among the levels "above" 50.
        for (int column = 0; column < (level >= 50 ? 2 : 1); ++column) {
            addToSummary(summary, column, comparisons.at(i),
                         nominalCount(comparisons.at(i), level));
            ++levelCounts[column];
        }
    }
    for (const SummaryRow row : {MeanAbove, MeanEqual, MeanBelow}) {
        for (int column = 0; column < 2; ++column) {
            summary[row][column] /= levelCounts[column];
        }
    }
    return summary;
}
