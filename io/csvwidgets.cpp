// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/csv.h"

#include <QDebug>
#include <QFile>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QTextStream>

#include <algorithm>

namespace {

using Table = QVector<QVector<double>>;

/// An item takes thirty times the memory of its number, so the cells of a larger table get
/// none.
constexpr qint64 mostItems = 1'000'000;
/// What a widget can hold; the positions of rows and columns are counted in pixels.
constexpr int mostColumns = 200'000;
constexpr int mostRows = 20'000'000;
constexpr qint64 mostCells = 1 << 27;

QString numberText(const QVector<double>& row, int column)
{
    return column < row.size() ? QString::number(row.at(column), 'g', 6) : QStringLiteral("NaN");
}

/// Shows the numbers of a large table in its cells as far as they have no items.
class NumberDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Shares the table's memory. An empty one leaves all cells to their items.
    void setNumbers(const Table& table, int startColumns)
    {
        numbers = table;
        filledColumns.clear();
        int filled = startColumns;
        for (const QVector<double>& row : table) {
            filled = std::max(filled, row.size());
            filledColumns.append(filled);
        }
    }

    QString text(int row, int column) const
    {
        return column < filledColumns.value(row) ? numberText(numbers.at(row), column) : QString();
    }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override
    {
        // An editor would leave an item with its own text, which starts empty.
        const bool hasItem = numbers.isEmpty() || index.data().isValid();
        return hasItem ? QStyledItemDelegate::createEditor(parent, option, index) : nullptr;
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (!index.data().isValid()) {
            option->features |= QStyleOptionViewItem::HasDisplay;
            option->text = text(index.row(), index.column());
        }
    }

private:
    Table numbers;
    QVector<int> filledColumns;
};

NumberDelegate* numberDelegate(const QTableWidget& widget)
{
    return dynamic_cast<NumberDelegate*>(widget.itemDelegate());
}

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
            stream << (isBlank ? QStringLiteral(" ") : text);
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

void fillWithItems(QTableWidget& widget, const Table& table, int startColumns)
{
    int filledColumns = startColumns;
    for (int row = 0; row < table.size(); ++row) {
        filledColumns = std::max(filledColumns, table.at(row).size());
        fillRow(widget, row, table.at(row), filledColumns);
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

void showTable(QTableWidget& widget, const Table& table, int leastColumns)
{
    const int lastLength = table.isEmpty() ? widget.columnCount() : table.constLast().size();
    int width = std::max(lastLength, leastColumns);
    qint64 numbers = 0;
    for (const QVector<double>& row : table) {
        width = std::max(width, row.size());
        numbers += row.size();
    }
    const int columns = std::min(width, mostColumns);
    const int startColumns = std::min(lastLength, columns);
    const qint64 cells = std::clamp(2 * numbers, mostItems, mostCells);
    const int rows =
        int(std::min({qint64(table.size()), qint64(mostRows), cells / qMax(1, columns)}));
    const bool isWhole = rows == table.size() && columns == width;
    const bool withItems = isWhole && qint64(rows) * columns <= mostItems;
    // A change of columns moves all cells once per row, so it is made once for all, while
    // there are no rows below the current cell, which must not get lost.
    if (!withItems || columns != widget.columnCount() || columns != startColumns) {
        widget.setRowCount(std::min(rows, widget.currentRow() + 1));
    }
    // The smaller number first drops the headings and items of the columns beyond it.
    widget.setColumnCount(startColumns);
    widget.setColumnCount(columns);
    if (!withItems) {
        removeItems(widget);
    }
    widget.setRowCount(rows);

    NumberDelegate* delegate = numberDelegate(widget);
    if (delegate == nullptr && !withItems) {
        delegate = new NumberDelegate(&widget);
        widget.setItemDelegate(delegate);
    }
    if (delegate != nullptr) {
        delegate->setNumbers(withItems ? Table() : table, startColumns);
    }
    if (withItems) {
        fillWithItems(widget, table, startColumns);
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
    for (int column = 0; column < std::min(header.size(), widget->columnCount()); ++column) {
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

QString csvCellText(const QTableWidget* widget, int row, int column)
{
    if (const QTableWidgetItem* item = widget->item(row, column)) {
        return item->text();
    }
    const NumberDelegate* delegate = numberDelegate(*widget);
    return delegate == nullptr ? QString() : delegate->text(row, column);
}
