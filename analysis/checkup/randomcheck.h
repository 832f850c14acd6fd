// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_RANDOMCHECK_H
#define VELMORA_ANALYSIS_CHECKUP_RANDOMCHECK_H

#include "analysis/study.h"

#include <QStringList>

// Whether a calculation draws so many random numbers that their sequence repeats.

/// Random numbers that the probability of a data set may take, at most: two for each ETA that
/// varies, by individual, dose, sample and model. All models count, whether or not they have a
/// weight, and all individuals, as if they went evenly into the processors. 0 where the data set
/// does not exist.
double mostRandomNumbers(const Study& study, int dataSet);

/// A sentence for a tooltip if the probability of a data set may draw more random numbers than the
/// sequence has before it repeats (randomPeriod); nothing otherwise.
QStringList checkRandomNumbers(const Study& study, int dataSet);

/// The same for all data sets together; names the data set from which on numbers may repeat.
QStringList checkRandomNumbersOfAll(const Study& study);

/// The same with a known number of draws for each data set, [dataSet].
QStringList checkRandomNumbers(const QVector<double>& ofDataSets);

#endif
