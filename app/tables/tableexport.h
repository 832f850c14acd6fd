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

/// Adds the context menu and keys of a table of results. Copies the rectangle around the selected
/// cells, with blanks for cells that are not selected; without a selection the current cell.
/// Headings are those of columns, and of rows if there are any. Full precision is 17 digits for
/// each cell that shows the rounded number at its place in numbers, [row][column]; the function is
/// called then and may return fewer. The file dialog proposes fileName. The shared entries come
/// last; others may follow them.
ExportMenu* addTableExport(QTableWidget* table, const QString& fileName,
                           const std::function<Table()>& numbers, const QList<QAction*>& shared);

#endif
