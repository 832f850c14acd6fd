// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_TABLEEXPORT_H
#define VELMORA_APP_TABLEEXPORT_H

#include "app/analysis/tables.h"
#include "io/csvexport.h"

#include <QRect>

#include <functional>

class ExportMenu;
class QAction;
class QTableWidget;

enum class Headings { Without, With };

/// The texts of the table's selected cells: of the rectangle around them, with blanks for the
/// cells in it that are not selected. Without a selection the current cell; empty without
/// either. Where a row has a heading of its own, headings stand to the left as well.
TextRows selectedTexts(const QTableWidget& table, Headings headings);

/// The same without headings and with 17 digits for each cell that shows, rounded, the number
/// at its place in numbers, [row][column].
TextRows selectedTexts(const QTableWidget& table, const Table& numbers);

/// The texts of all cells below the column headings, with those of the rows if they have any,
/// as comma-separated lines.
QByteArray allLines(const QTableWidget& table);

/// Gives a table of results its context menu and keys. numbers gives the numbers that the
/// table shows, [row][column]; it is asked when they are copied and may give fewer. fileName
/// is offered for the file; summary is added to the menu.
void addTableExport(QTableWidget* table, const QString& fileName,
                    const std::function<Table()>& numbers, QAction* summary);

#endif
