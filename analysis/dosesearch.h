// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_DOSESEARCH_H
#define VELMORA_ANALYSIS_DOSESEARCH_H

#include <QVector>

/// Index of the minimum effective dose: the lowest dose from which on, up to the highest,
/// the probability is strictly above the target, both in percent.
/// The number of doses if the highest dose misses the target; 0 for an empty curve. NaN is
/// not above any target.
int minimumEffectiveDoseIndex(const QVector<double>& probability, double target);

/// The minimum effective dose for each target, NaN where no dose qualifies.
QVector<double> minimumEffectiveDoses(const QVector<double>& probability,
                                      const QVector<double>& targets, const QVector<double>& doses);

#endif
