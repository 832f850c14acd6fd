// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_NUMBERLIST_H
#define VELMORA_ANALYSIS_NUMBERLIST_H

#include <QString>
#include <QVector>

/// Ranges of more numbers than this are empty.
constexpr int longestNumberRange = 100000;

/// The numbers of a dose or level text in ascending order, NaN last. "start:step:end" is a range;
/// its last number may exceed end where step does not divide the distance; this is intended. Any
/// other text is a list "1,2,3" whose repeated parts count once, and whose parts that are not
/// numbers are left out. Empty if nothing can be read.
QVector<double> parseNumberList(const QString& text);

#endif
