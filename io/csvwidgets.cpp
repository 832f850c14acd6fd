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
/// Of the rows that stay while the number of columns changes.
constexpr int mostRowsMoved = 1'000;
constexpr qint64 mostCellsMoved = 100'000;
const char fullSizeProperty[] = "fullSize";

QString numberText(const QVector<double>& row, int column)
{
    return column < row.size() ? QString::number(row.at(column), 'g', 6) : QStringLiteral("NaN");
}

/// Shows the numbers of a large table in its cells as far as they have no items.
class NumberDelegate : public QStyledItemDelegate
{
public:
    explicit NumberDelegate(QTableWidget* widget)
        : QStyledItemDelegate(widget)
    {
        // What is removed by other means than csvDisplay must not come back.
        const auto forget = [this] { setNumbers({}, 0); };
        connect(widget->model(), &QAbstractItemModel::rowsRemoved, this, forget);
        connect(widget->model(), &QAbstractItemModel::columnsRemoved, this, forget);
        connect(widget->model(), &QAbstractItemModel::modelReset, this, forget);
    }

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

    /// The rows above it that have no numbers here are left to their items.
    void setRow(int row, const QVector<double>& values, int columns)
    {
        numbers.resize(row);
        filledColumns.resize(row);
        numbers.append(values);
        filledColumns.append(columns);
    }

    QString text(int row, int column) const
    {
        const bool isFilled = column >= 0 && column < filledColumns.value(row);
        return isFilled ? numberText(numbers.at(row), column) : QString();
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

NumberDelegate& addedNumberDelegate(QTableWidget& widget)
{
    if (numberDelegate(widget) == nullptr) {
        widget.setItemDelegate(new NumberDelegate(&widget));
    }
    return *numberDelegate(widget);
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

/// Fills the cells that the widget has.
void fillWithItems(QTableWidget& widget, const Table& table, int startColumns)
{
    int filledColumns = startColumns;
    for (int row = 0; row < widget.rowCount(); ++row) {
        filledColumns = std::max(filledColumns, table.at(row).size());
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

/// Columns and rows of a table, and of the part of it that a widget can show.
struct Sizes
{
    QSize full;
    QSize shown;
    bool isWhole() const { return full == shown; }
};

/// Of a table that is too large, one long row counts less than many short ones.
Sizes sizesOf(const Table& table, int width, qint64 numbers, int namedColumns, qint64 wantedCells)
{
    const qint64 cells = std::clamp(wantedCells, mostItems, mostCells);
    const int most = std::min(width, mostColumns);
    const qint64 meanLength = table.isEmpty() ? 0 : (numbers - 1) / table.size() + 1;
    const qint64 least = std::min<qint64>(std::max<qint64>({1, namedColumns, meanLength}), most);
    const qint64 columns = std::clamp<qint64>(cells / std::max(1, table.size()), least, most);
    const qint64 rows =
        std::min({qint64(table.size()), qint64(mostRows), cells / std::max<qint64>(1, columns)});
    return {{width, table.size()}, {int(columns), int(rows)}};
}

/// Sets the widget's size. Whatever was in its cells may stay or not.
void resizeTable(QTableWidget& widget, int startColumns, const QSize& size)
{
    // A change of columns moves all cells once per row, so it is made once for all, while
    // there are no rows below the current cell, which must not get lost, or no rows at all.
    const int currentRow = widget.currentRow();
    const int currentColumn = widget.currentColumn();
    if (size.width() != widget.columnCount() || size.width() != startColumns) {
        const int kept = std::min(size.height(), currentRow + 1);
        const int columns = std::max(size.width(), widget.columnCount());
        const bool areFew = kept <= mostRowsMoved && qint64(kept) * columns <= mostCellsMoved;
        widget.setRowCount(areFew ? kept : 0);
    }
    // The smaller number first drops the headings and items of the columns beyond it.
    widget.setColumnCount(startColumns);
    widget.setColumnCount(size.width());
    widget.setRowCount(size.height());
    if (currentRow >= 0 && widget.currentRow() < 0 && currentRow < size.height()
        && currentColumn < startColumns) {
        widget.setCurrentCell(currentRow, currentColumn);
    }
}

/// Without items beyond mostItems, or in part.
enum class LargeTable { WithoutItems, InPart };

void showTable(QTableWidget& widget, const Table& table, int namedColumns, LargeTable large)
{
    const int lastLength = table.isEmpty() ? widget.columnCount() : table.constLast().size();
    int width = std::max(lastLength, namedColumns);
    qint64 numbers = 0;
    for (const QVector<double>& row : table) {
        width = std::max(width, row.size());
        numbers += row.size();
    }
    const Sizes sizes = sizesOf(table, width, numbers, namedColumns,
                                large == LargeTable::WithoutItems ? 2 * numbers : mostItems);
    const qint64 cells = qint64(sizes.shown.width()) * sizes.shown.height();
    const bool withItems = large == LargeTable::InPart || (sizes.isWhole() && cells <= mostItems);
    const int startColumns = std::min(lastLength, sizes.shown.width());
    widget.setProperty(fullSizeProperty, sizes.isWhole() ? QVariant() : sizes.full);
    resizeTable(widget, startColumns, sizes.shown);
    if (withItems) {
        if (NumberDelegate* delegate = numberDelegate(widget)) {
            delegate->setNumbers({}, 0);
        }
        fillWithItems(widget, table, startColumns);
    } else {
        removeItems(widget);
        addedNumberDelegate(widget).setNumbers(table, startColumns);
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
    showTable(*widget, table, 0, LargeTable::InPart);
}

void csvDisplay(QTableWidget* widget, QVector<QVector<double>> table, QStringList header)
{
    showTable(*widget, table, header.size(), LargeTable::WithoutItems);
    for (int column = 0; column < std::min(header.size(), widget->columnCount()); ++column) {
        widget->setHorizontalHeaderItem(column,
                                        new QTableWidgetItem(header.at(column).left(longestName)));
    }
}

void csvDisplayAppend(QTableWidget* widget, const QVector<double>& row)
{
    const int columns = std::min(std::max(widget->columnCount(), row.size()), mostColumns);
    const int place = widget->rowCount();
    const QSize full = csvFullSize(widget);
    const bool isWhole = !full.isValid() && columns >= row.size();
    const QSize fullWithRow(std::max(full.width(), row.size()), std::max(full.height(), place) + 1);
    widget->setProperty(fullSizeProperty, isWhole ? QVariant() : fullWithRow);
    widget->setColumnCount(columns);
    widget->setRowCount(place + 1);
    if (qint64(place + 1) * columns <= mostItems) {
        fillRow(*widget, place, row, columns);
    } else {
        addedNumberDelegate(*widget).setRow(place, row, columns);
    }
}

QString csvCellText(const QTableWidget* widget, int row, int column)
{
    if (const QTableWidgetItem* item = widget->item(row, column)) {
        return item->text();
    }
    const NumberDelegate* delegate = numberDelegate(*widget);
    return delegate == nullptr ? QString() : delegate->text(row, column);
}

QSize csvFullSize(const QTableWidget* widget)
{
    return widget->rowCount() > 0 ? widget->property(fullSizeProperty).toSize() : QSize();
}
