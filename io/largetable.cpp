// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/largetable.h"

#include <QTableWidget>

#include <algorithm>

LargeTable::LargeTable(QTableWidget* widget)
    : QStyledItemDelegate(widget)
{
    // Rows and columns removed by other means than csvDisplay must not come back.
    const auto forget = [this] { clearNumbers(); };
    connect(widget->model(), &QAbstractItemModel::rowsRemoved, this, forget);
    connect(widget->model(), &QAbstractItemModel::columnsRemoved, this, forget);
    connect(widget->model(), &QAbstractItemModel::modelReset, this, forget);
}

LargeTable* LargeTable::of(const QTableWidget& widget)
{
    return dynamic_cast<LargeTable*>(widget.itemDelegate());
}

LargeTable& LargeTable::addedTo(QTableWidget& widget)
{
    if (of(widget) == nullptr) {
        widget.setItemDelegate(new LargeTable(&widget));
    }
    return *of(widget);
}

void LargeTable::setNumbers(const QVector<QVector<double>>& table, int startColumns)
{
    numbers = table;
    filledColumns.clear();
    int filled = startColumns;
    for (const QVector<double>& row : table) {
        filled = std::max(filled, int(row.size()));
        filledColumns.append(filled);
    }
}

void LargeTable::setRow(int row, const QVector<double>& values, int columns)
{
    numbers.resize(row);
    filledColumns.resize(row);
    numbers.append(values);
    filledColumns.append(columns);
}

QString LargeTable::text(int row, int column) const
{
    const bool isFilled = column >= 0 && column < filledColumns.value(row);
    return isFilled ? numberText(numbers.at(row), column) : QString();
}

QWidget* LargeTable::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const
{
    if (editRule && !editRule(index.column())) {
        return nullptr;
    }
    // An editor would leave an item with the editor's text, which starts empty.
    const bool hasItem = numbers.isEmpty() || index.data().isValid();
    return hasItem ? QStyledItemDelegate::createEditor(parent, option, index) : nullptr;
}

void LargeTable::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const QString number = text(index.row(), index.column());
    if (!number.isNull() && !index.data().isValid()) {
        option->features |= QStyleOptionViewItem::HasDisplay;
        option->text = number;
    }
}

QString numberText(const QVector<double>& row, int column)
{
    return column < row.size() ? QString::number(row.at(column), 'g', 6) : QStringLiteral("NaN");
}
