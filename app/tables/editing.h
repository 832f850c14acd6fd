// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_TABLES_EDITING_H
#define VELMORA_APP_TABLES_EDITING_H

class QTableWidget;

/// Makes the cells of a table of results read-only for the user. Items and edit triggers stay as
/// they are, and the program still writes into the cells.
void makeReadOnly(QTableWidget* table);

/// The same for all columns but one, whose cells can be typed into even without an item.
void letEditOnly(QTableWidget* table, int column);

#endif
