// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_LARGETABLE_H
#define VELMORA_IO_LARGETABLE_H

#include <QSize>
#include <QStyledItemDelegate>
#include <QVector>

#include <functional>

class QTableWidget;

/// Shows numbers in those cells of a table widget that have no items, and keeps how large the
/// table is of which the widget shows a part. It is the delegate of the widget, which owns it.
class LargeTable : public QStyledItemDelegate
{
public:
    /// The one that shows the widget's cells; null if none does.
    static LargeTable* of(const QTableWidget& widget);

    /// The same; from now on there is one.
    static LargeTable& addedTo(QTableWidget& widget);

    /// Shows the numbers, [row][column], and "NaN" where a row is short: its cells reach as far
    /// as the longest row down to it, at least startColumns. Shares the table's memory. Rows or
    /// columns that the widget loses take all numbers with them.
    void setNumbers(const QVector<QVector<double>>& table, int startColumns);

    /// Leaves all cells to their items.
    void clearNumbers() { setNumbers({}, 0); }

    /// Shows values in a row of so many columns. Rows above it keep their numbers or none, and
    /// are then left to their items; those below it lose theirs.
    void setRow(int row, const QVector<double>& values, int columns);

    /// The text shown in a cell without an item; null if there is no such number.
    QString text(int row, int column) const;

    /// Columns and rows of the table that is shown in part; invalid if the whole is.
    QSize fullSize() const { return full; }
    void setFullSize(const QSize& size) { full = size; }

    /// Decides by its column whether a cell can be edited; without one all can.
    using EditRule = std::function<bool(int column)>;
    void setEditRule(const EditRule& newRule) { editRule = newRule; }

    /// None against the rule, and none for a cell without an item while numbers are shown.
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
