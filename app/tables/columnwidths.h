// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_TABLES_COLUMNWIDTHS_H
#define VELMORA_APP_TABLES_COLUMNWIDTHS_H

#include <QString>

class QTableWidget;

// Columns beyond those of usual files become a little wider than they have to be: their texts
// are measured letter by letter, as there may be 200,000 of them.

/// Makes the columns wide enough for their headings and for the widest number shown; none
/// becomes narrower.
void fitColumns(QTableWidget* table, const QString& widestNumber = "-1.23457e-308");

/// Makes the columns of a table of one row as wide as their texts and the numbers above them.
void fitColumnsToTexts(QTableWidget* table);

#endif
