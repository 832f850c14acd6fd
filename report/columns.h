// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_COLUMNS_H
#define VELMORA_REPORT_COLUMNS_H

#include "report/document.h"

/// How wide the columns of a table are to be, as shares of a line that holds so many letters:
/// they add up to 1 at the most, and to 1 where texts have to be broken.
QVector<double> columnShares(const ReportTable& table, int lettersInLine);

#endif
