// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/samplecounts.h"

#include "analysis/checkup/heading.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

double valueAt(const QVector<double>& row, int column)
{
    return column >= 0 && column < row.size() ? row.at(column)
                                              : std::numeric_limits<double>::quiet_NaN();
}

bool isRunning(const QVector<double>& numbers)
{
    for (int sample = 1; sample < numbers.size(); ++sample) {
        if (!(numbers.at(sample) == numbers.at(sample - 1) + 1)) {
            return false;
        }
    }
    return numbers.isEmpty() || !std::isnan(numbers.first());
}

void countNumbers(QVector<double> numbers, SampleCounts& counts)
{
    if (isRunning(numbers)) {
        return;
    }
    constexpr double mostMissing = 1e9; // numbers may be anything
    const auto end = std::remove_if(numbers.begin(), numbers.end(),
                                    [](double number) { return std::isnan(number); });
    counts.unnumbered = numbers.end() - end;
    numbers.erase(end, numbers.end());
    std::sort(numbers.begin(), numbers.end());
    double missing = 0;
    for (int sample = 1; sample < numbers.size(); ++sample) {
        const double step = numbers.at(sample) - numbers.at(sample - 1);
        counts.repeatedNumbers += int(step == 0);
        if (step > 1) {
            missing += std::ceil(step) - 1;
        }
    }
    counts.missingNumbers = qint64(std::min(missing, mostMissing));
}

bool sameNumbers(const QVector<double>& first, const QVector<double>& second)
{
    // Bit for bit: missing values agree.
    return first.size() == second.size()
           && std::memcmp(first.constData(), second.constData(), sizeof(double) * first.size())
                  == 0;
}

} // namespace

void SampleSums::add(const SampleCounts& counts)
{
    add(SampleSums{1, counts.samples, counts.samples, counts.samples, counts.withoutOfv,
                   counts.notConverged, counts.nearBoundary});
}

void SampleSums::add(const SampleSums& sums)
{
    if (sums.dataSets > 0) {
        fewest = dataSets > 0 ? qMin(fewest, sums.fewest) : sums.fewest;
        most = qMax(most, sums.most);
    }
    dataSets += sums.dataSets;
    samples += sums.samples;
    withoutOfv += sums.withoutOfv;
    notConverged += sums.notConverged;
    nearBoundary += sums.nearBoundary;
}

SampleColumns columnsByName(const QStringList& names, int colNumOFV)
{
    return {columnNamed(names, "model"), columnNamed(names, "minimization_successful"),
            columnNamed(names, "estimate_near_boundary"), colNumOFV - 1};
}

QVector<double> columnValues(const Table& table, int column)
{
    QVector<double> values;
    if (column >= 0) {
        values.reserve(table.size());
        for (const QVector<double>& row : table) {
            values.append(valueAt(row, column));
        }
    }
    return values;
}

SampleCounts countSamples(const Table& table, const SampleColumns& columns,
                          const QVector<double>& numbers, const QVector<double>& partnerNumbers)
{
    SampleCounts counts;
    counts.samples = table.size();
    auto ofWidth = counts.widths.end();
    for (const QVector<double>& row : table) {
        if (ofWidth == counts.widths.end() || ofWidth.key() != row.size()) {
            ofWidth = counts.widths.insert(row.size(), counts.widths.value(row.size()));
        }
        ++*ofWidth;
        counts.withoutOfv += int(std::isnan(valueAt(row, columns.ofv)));
        if (columns.converged >= 0) {
            const double converged = valueAt(row, columns.converged);
            counts.notConverged += int(converged == 0);
            counts.unknownConvergence += int(std::isnan(converged));
        }
        const double boundary = valueAt(row, columns.boundary);
        counts.nearBoundary += int(boundary < 0 || boundary > 0);
    }
    for (int sample = 0; sample < qMin(numbers.size(), partnerNumbers.size()); ++sample) {
        const double difference = numbers.at(sample) - partnerNumbers.at(sample);
        counts.mispaired += int(difference < 0 || difference > 0);
    }
    countNumbers(numbers, counts);
    if (!numbers.isEmpty()) {
        counts.firstNumber = numbers.first();
        counts.lastNumber = numbers.last();
        counts.fitFailed =
            counts.firstNumber == 0 && valueAt(table.first(), columns.converged) == 0;
    }
    return counts;
}

bool sameSamples(const Table& first, const Table& second)
{
    return !first.isEmpty()
           && (first.constData() == second.constData()
               || std::equal(first.begin(), first.end(), second.begin(), second.end(),
                             sameNumbers));
}
