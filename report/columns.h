// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_COLUMNS_H
#define VELMORA_REPORT_COLUMNS_H

#include "report/document.h"

/// Approximate number of letters in a line of a printed table.
constexpr int lettersInLine = 90;

/// The least width of a column, in letters. Numbers are never broken; texts and headings may be.
double leastLetters(const ReportTable& table, int column);

/// The widths of the columns of a table, as shares of a line. They add up to at most 1, and to 1
/// if texts have to be broken.
QVector<double> columnShares(const ReportTable& table);

#endif
