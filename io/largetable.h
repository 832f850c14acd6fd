// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_LARGETABLE_H
#define VELMORA_IO_LARGETABLE_H

#include <QSize>
#include <QStyledItemDelegate>
#include <QVector>

#include <functional>

class QTableWidget;

/// Shows numbers in the cells of a table widget that have no items, and keeps the size of the whole
/// table if the widget shows only a part. It is the delegate of the widget, which owns it.
class LargeTable : public QStyledItemDelegate
{
public:
    /// The object that shows the widget's cells; null if there is none.
    static LargeTable* of(const QTableWidget& widget);

    /// The same; creates the object if there is none.
    static LargeTable& addedTo(QTableWidget& widget);

    /// Shows the numbers, [row][column], and "NaN" where a row is short. The cells of a row reach
    /// as far as the longest row down to it, at least startColumns. Shares the table's memory. If
    /// the widget loses rows or columns, all numbers go.
    void setNumbers(const QVector<QVector<double>>& table, int startColumns);

    /// Removes all numbers; cells then show only their items.
    void clearNumbers() { setNumbers({}, 0); }

    /// Shows values in a row of this many columns. Rows above it keep their numbers, or show their
    /// items if they have none; rows below it lose their numbers.
    void setRow(int row, const QVector<double>& values, int columns);

    /// The text shown in a cell without an item; null if there is no such number.
    QString text(int row, int column) const;

    /// Columns and rows of the whole table if only a part is shown; otherwise invalid.
    QSize fullSize() const { return full; }
    void setFullSize(const QSize& size) { full = size; }

    /// Decides by its column whether a cell can be edited. Without a rule all cells can.
    using EditRule = std::function<bool(int column)>;
    void setEditRule(const EditRule& newRule) { editRule = newRule; }

    /// No editor against the rule, and none for a cell without an item while numbers are shown.
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    explicit LargeTable(QTableWidget* widget);

    QVector<QVector<double>> numbers;
    QVector<int> filledColumns; ///< of each row of numbers
    QSize full;
    EditRule editRule;
};

/// The text of the number of a row in a column; "NaN" if the row is too short.
QString numberText(const QVector<double>& row, int column);

#endif
