// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/percentile.h"

#include <algorithm>
#include <limits>

double percentileOfIndividuals(QVector<double> values, int individuals, int percentile)
{
    const double position = std::floor(individuals * (percentile / 100.0));
    if (!(position >= 0 && position < values.size())) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    const auto element = values.begin() + static_cast<int>(position);
    std::nth_element(values.begin(), element, values.end(), ascendingNanLast);
    return *element;
}

double summaryOfIndividuals(const QVector<double>& values, int individuals, int percentile)
{
    if (percentile >= 0) {
        return percentileOfIndividuals(values, individuals, percentile);
    }
    double sum = 0.0;
    for (const double value : values) {
        sum += value;
    }
    return sum / individuals;
}
