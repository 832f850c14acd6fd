// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_PERCENTILE_H
#define VELMORA_MODEL_PERCENTILE_H

#include <QVector>

#include <cmath>

/// Ascending order with NaN after every number. All sorting of doubles uses it.
inline bool ascendingNanLast(double first, double second)
{
    return first < second || (std::isnan(second) && !std::isnan(first));
}

/// The element at index floor(individuals * percentile / 100) of the sorted values, with NaN
/// after every number. NaN if the index lies outside the values. This is intended: individuals
/// may exceed their count, and the 100th percentile is never reached.
double percentileOfIndividuals(QVector<double> values, int individuals, int percentile);

/// The endpoint of a population: a percentile of 0 to 100, or the mean if it is negative. Here,
/// too, individuals may exceed the count of the values.
double summaryOfIndividuals(const QVector<double>& values, int individuals, int percentile);

#endif
