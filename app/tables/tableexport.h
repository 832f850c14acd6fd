// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_TABLES_TABLEEXPORT_H
#define VELMORA_APP_TABLES_TABLEEXPORT_H

#include "model/tables.h"

#include <QString>

#include <functional>

class ExportMenu;
class QAction;
class QTableWidget;

/// Gives a table of results its context menu and keys. Copied is the rectangle around the
/// selected cells, with blanks for the cells in it that are not selected; without a selection
/// the current cell. Headings are those of columns, and of rows if they have any. Full
/// precision is 17 digits for each cell that shows, rounded, the number at its place in
/// numbers, [row][column], which is asked then and may give fewer. fileName is offered for the
/// file; the shared entries end the menu, which others may follow.
ExportMenu* addTableExport(QTableWidget* table, const QString& fileName,
                           const std::function<Table()>& numbers, const QList<QAction*>& shared);

#endif
