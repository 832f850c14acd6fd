// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/csv.h"

#include <QDebug>
#include <QFile>
#include <QTableWidget>
#include <QTextStream>

#include <algorithm>

namespace {

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
            const QTableWidgetItem* item = widget.item(row, column);
            stream << (item != nullptr ? item->text() : QStringLiteral(" "));
        }
        if (row < lastRow) {
            stream << '\n';
        }
    }
}

void fillRow(QTableWidget& widget, int row, const QVector<double>& values, int columns)
{
    for (int column = 0; column < columns; ++column) {
        const QString text = column < values.size() ? QString::number(values.at(column), 'g', 6)
                                                    : QStringLiteral("NaN");
        widget.setItem(row, column, new QTableWidgetItem(text));
    }
}

void showTable(QTableWidget& widget, const QVector<QVector<double>>& table, int leastColumns)
{
    const int startColumns = table.isEmpty() ? widget.columnCount() : table.constLast().size();
    int columns = std::max(startColumns, leastColumns);
    for (const QVector<double>& row : table) {
        columns = std::max(columns, row.size());
    }
    // A change of columns moves all cells once per row, so it is made once for all, while
    // there are no rows below the current cell, which must not get lost.
    if (columns != widget.columnCount() || columns != startColumns) {
        widget.setRowCount(std::min(table.size(), widget.currentRow() + 1));
    }
    // The smaller number first drops the headings and items of the columns beyond it.
    widget.setColumnCount(startColumns);
    widget.setColumnCount(columns);
    widget.setRowCount(table.size());

    int filledColumns = startColumns;
    for (int row = 0; row < table.size(); ++row) {
        filledColumns = std::max(filledColumns, table.at(row).size());
        fillRow(widget, row, table.at(row), filledColumns);
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
    showTable(*widget, table, 0);
}

void csvDisplay(QTableWidget* widget, QVector<QVector<double>> table, QStringList header)
{
    showTable(*widget, table, header.size());
    for (int column = 0; column < header.size(); ++column) {
        widget->setHorizontalHeaderItem(column, new QTableWidgetItem(header.at(column)));
    }
}

void csvDisplayAppend(QTableWidget* widget, const QVector<double>& row)
{
    const int columns = std::max(widget->columnCount(), row.size());
    widget->setColumnCount(columns);
    widget->setRowCount(widget->rowCount() + 1);
    fillRow(*widget, widget->rowCount() - 1, row, columns);
}
