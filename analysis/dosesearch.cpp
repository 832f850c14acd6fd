// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/dosesearch.h"

#include <algorithm>
#include <cmath>
#include <limits>

int minimumEffectiveDoseIndex(const QVector<double>& probability, double target)
{
    int index = probability.size();
    while (index > 0 && probability.at(index - 1) > target) {
        --index;
    }
    return index;
}

QVector<double> minimumEffectiveDoses(const QVector<double>& probability,
                                      const QVector<double>& targets, const QVector<double>& doses)
{
    // The lowest probability from each dose on; NaN is below all. It never falls with the dose.
    QVector<double> lowest(probability.size());
    double lowestYet = std::numeric_limits<double>::infinity();
    for (int dose = probability.size() - 1; dose >= 0; --dose) {
        const double value = probability.at(dose);
        lowestYet = std::isnan(value) ? -std::numeric_limits<double>::infinity()
                                      : std::min(lowestYet, value);
        lowest[dose] = lowestYet;
    }
    QVector<double> found;
    found.reserve(targets.size());
    for (const double target : targets) {
        const auto first = std::partition_point(
            lowest.cbegin(), lowest.cend(), [target](double value) { return !(value > target); });
        const auto index = first - lowest.cbegin();
        found.append(index < doses.size() ? doses.at(int(index))
                                          : std::numeric_limits<double>::quiet_NaN());
    }
    return found;
}
