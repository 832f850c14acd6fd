// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "compat/qtversions.h"
#include "io/csv.h"
#include "io/largetable.h"
#include "io/tablesizes.h"

#include <QDebug>
#include <QFile>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QTextStream>

#include <algorithm>

namespace {

using Table = QVector<QVector<double>>;

/// The most rows that stay while the number of columns changes.
constexpr int mostRowsMoved = 1'000;
constexpr qint64 mostCellsMoved = 100'000;

void writeCells(QFile& file, const QTableWidget& widget, int firstRow)
{
    QTextStream stream(&file);
    const int lastRow = widget.rowCount() - 1;
    if (lastRow < 0) {
        return;
    }
    for (int row = std::clamp(firstRow, 0, lastRow); row <= lastRow; ++row) {
        for (int column = 0; column < widget.columnCount(); ++column) {
            if (column > 0) {
                stream << ',';
            }
            const QString text = csvCellText(&widget, row, column);
            const bool isBlank = text.isEmpty() && widget.item(row, column) == nullptr;
            stream << streamedText(isBlank ? QStringLiteral(" ") : text);
        }
        if (row < lastRow) {
            stream << '\n';
        }
    }
}

void fillRow(QTableWidget& widget, int row, const QVector<double>& values, int columns)
{
    for (int column = 0; column < columns; ++column) {
        widget.setItem(row, column, new QTableWidgetItem(numberText(values, column)));
    }
}

/// Fills the cells of the widget.
void fillWithItems(QTableWidget& widget, const Table& table, int startColumns)
{
    int filledColumns = startColumns;
    for (int row = 0; row < widget.rowCount(); ++row) {
        filledColumns = std::max(filledColumns, int(table.at(row).size()));
        fillRow(widget, row, table.at(row), std::min(filledColumns, widget.columnCount()));
    }
}

void removeItems(QTableWidget& widget)
{
    for (int row = 0; row < widget.rowCount(); ++row) {
        for (int column = 0; column < widget.columnCount(); ++column) {
            delete widget.takeItem(row, column);
        }
    }
}

/// Sets the size of the widget. The content of its cells may be lost.
void resizeTable(QTableWidget& widget, int startColumns, const QSize& size)
{
    // A change of columns moves all cells once per row. So it is made only once, while there are
    // no rows below the current cell, which must not get lost, or no rows at all.
    const int currentRow = widget.currentRow();
    const int currentColumn = widget.currentColumn();
    if (size.width() != widget.columnCount() || size.width() != startColumns) {
        const int kept = std::min(size.height(), currentRow + 1);
        const int columns = std::max(size.width(), widget.columnCount());
        const bool areFew = kept <= mostRowsMoved && qint64(kept) * columns <= mostCellsMoved;
        widget.setRowCount(areFew ? kept : 0);
    }
    // First setting the smaller number drops the headings and items of the columns beyond it.
    widget.setColumnCount(startColumns);
    widget.setColumnCount(size.width());
    widget.setRowCount(size.height());
    if (currentRow >= 0 && widget.currentRow() < 0 && currentRow < size.height()
        && currentColumn < startColumns) {
        widget.setCurrentCell(currentRow, currentColumn);
    }
}

TableExtent extentOf(const Table& table, int lastLength, int namedColumns)
{
    TableExtent extent{std::max(lastLength, namedColumns), int(table.size()), 0, namedColumns};
    for (const QVector<double>& row : table) {
        extent.columns = std::max(extent.columns, int(row.size()));
        extent.numbers += row.size();
    }
    return extent;
}

/// Keeps the size of a table of which only a part is shown.
void setFullSize(QTableWidget& widget, const QSize& full)
{
    if (full.isValid()) {
        LargeTable::addedTo(widget).setFullSize(full);
    } else if (LargeTable* shown = LargeTable::of(widget)) {
        shown->setFullSize(full);
    }
}

void showTable(QTableWidget& widget, const Table& table, int namedColumns, LargeTableUse use)
{
    const int lastLength = table.isEmpty() ? widget.columnCount() : table.constLast().size();
    const TableSizes sizes = tableSizes(extentOf(table, lastLength, namedColumns), use);
    const int startColumns = std::min(lastLength, sizes.shown.width());
    setFullSize(widget, sizes.full);
    resizeTable(widget, startColumns, sizes.shown);
    if (sizes.hasItems) {
        if (LargeTable* shown = LargeTable::of(widget)) {
            shown->clearNumbers();
        }
        fillWithItems(widget, table, startColumns);
    } else {
        removeItems(widget);
        LargeTable::addedTo(widget).setNumbers(table, startColumns);
        widget.viewport()->update();
    }
}

} // namespace

void csvwrite(QString path, QTableWidget* widget)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        qDebug("Error, unable to save");
        return;
    }
    writeCells(file, *widget, 0);
}

void csvwrite(QString path, QTableWidget* widget, int firstRow)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        qDebug("Error, unable to save");
        return;
    }
    writeCells(file, *widget, firstRow);
}

void csvDisplay(QTableWidget* widget, QVector<QVector<double>> table)
{
    showTable(*widget, table, 0, LargeTableUse::InPart);
}

void csvDisplay(QTableWidget* widget, QVector<QVector<double>> table, QStringList header)
{
    showTable(*widget, table, header.size(), LargeTableUse::WithoutItems);
    const int named = std::min(int(header.size()), widget->columnCount());
    if (named == 0) {
        return;
    }
    {
        // Each signal lays out the heading again; one signal suffices for all names.
        const QSignalBlocker quiet(widget->model());
        for (int column = 0; column < named; ++column) {
            auto* name = new QTableWidgetItem(header.at(column).left(longestName));
            widget->setHorizontalHeaderItem(column, name);
        }
    }
    emit widget->model()->headerDataChanged(Qt::Horizontal, 0, named - 1);
}

void csvDisplayAppend(QTableWidget* widget, const QVector<double>& row)
{
    const int place = widget->rowCount();
    const TableSizes sizes =
        withRowBelow({widget->columnCount(), place}, csvFullSize(widget), row.size());
    const int columns = sizes.shown.width();
    setFullSize(*widget, sizes.full);
    widget->setColumnCount(columns);
    widget->setRowCount(place + 1);
    if (sizes.hasItems) {
        fillRow(*widget, place, row, columns);
    } else {
        LargeTable::addedTo(*widget).setRow(place, row, columns);
    }
}

QString csvCellText(const QTableWidget* widget, int row, int column)
{
    if (const QTableWidgetItem* item = widget->item(row, column)) {
        return item->text();
    }
    const LargeTable* shown = LargeTable::of(*widget);
    return shown == nullptr ? QString() : shown->text(row, column);
}

QSize csvFullSize(const QTableWidget* widget)
{
    const LargeTable* shown = LargeTable::of(*widget);
    return shown != nullptr && widget->rowCount() > 0 ? shown->fullSize() : QSize();
}
