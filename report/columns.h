// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_COLUMNS_H
#define VELMORA_REPORT_COLUMNS_H

#include "report/document.h"

/// Letters that a line of a printed table holds, about.
constexpr int lettersInLine = 90;

/// How wide a column has to be at least, in letters: numbers are not broken, texts and headings
/// may be.
double leastLetters(const ReportTable& table, int column);

/// How wide the columns of a table are to be, as shares of a line: they add up to 1 at the most,
/// and to 1 where texts have to be broken.
QVector<double> columnShares(const ReportTable& table);

#endif
