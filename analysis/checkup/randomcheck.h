// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_RANDOMCHECK_H
#define VELMORA_ANALYSIS_CHECKUP_RANDOMCHECK_H

#include "analysis/study.h"

#include <QStringList>

// Whether a calculation draws so many random numbers that their sequence comes round.

/// Random numbers that the probability of a data set may take, at most: two for each ETA that
/// varies, by individual, dose, sample and model. All models count, whether or not they have a
/// weight, and all individuals, as if they went evenly into the processors. 0 where the data set
/// does not exist.
double mostRandomNumbers(const Study& study, int dataSet);

/// That the probability of a data set may draw more random numbers than there are before they
/// repeat (randomPeriod), in a sentence for a tooltip; nothing otherwise.
QStringList checkRandomNumbers(const Study& study, int dataSet);

/// The same of all data sets together; names the one from which on they may repeat.
QStringList checkRandomNumbersOfAll(const Study& study);

/// The same where the numbers that each data set draws are known, [dataSet].
QStringList checkRandomNumbers(const QVector<double>& ofDataSets);

#endif
