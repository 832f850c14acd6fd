// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_TABLES_COLUMNWIDTHS_H
#define VELMORA_APP_TABLES_COLUMNWIDTHS_H

#include <QString>

class QTableWidget;

/// Makes the columns wide enough for their headings and for the widest number shown; none
/// becomes narrower.
void fitColumns(QTableWidget* table, const QString& widestNumber = "-1.23457e-308");

#endif
