// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_SETTINGTEXTS_H
#define VELMORA_ANALYSIS_SETTINGTEXTS_H

#include "analysis/study.h"

#include <QString>

// The form of numbers and settings in summary and report.

/// A number that somebody typed, with all its digits; several, with commas between them.
QString typed(double number);
QString typed(const QVector<double>& numbers);

/// A number that was calculated, as tables show it.
QString calculated(double number);

/// The samples of a model's data sets: "1001", or "1000 to 1001".
QString countRange(const QVector<Table>& dataSets);

/// "0.4 < endpoint <= 1"; "endpoint > 0.4" without an upper bound.
QString intervalText(const Study& study);

/// "Mean of the Population, 100 individuals"; empty where nobody is simulated.
QString populationText(const Study& study);

/// The choices as the user makes them: "Model Average, using individual ofv".
QString methodText(const Study& study);

#endif
