// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_TABLES_H
#define VELMORA_MODEL_TABLES_H

#include <QVector>

/// Numbers indexed [row][column]; rows may differ in length, missing numbers are NaN.
using Table = QVector<QVector<double>>;

/// The bootstrap results, indexed [model][dataSet][sample][column].
using RawResults = QVector<QVector<Table>>;

#endif
