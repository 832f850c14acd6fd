// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/analysis/dosesearch.h"

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
    QVector<double> found;
    found.reserve(targets.size());
    for (const double target : targets) {
        const int index = minimumEffectiveDoseIndex(probability, target);
        found.append(index < doses.size() ? doses.at(index)
                                          : std::numeric_limits<double>::quiet_NaN());
    }
    return found;
}
