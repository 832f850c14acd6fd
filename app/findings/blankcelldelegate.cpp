// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/findings/blankcelldelegate.h"

#include "app/findings/findingsview.h"

#include <QHelpEvent>
#include <QTableWidget>
#include <QToolTip>

BlankCellDelegate::BlankCellDelegate(QTableWidget* watchedTable, const QString& findingOfBlanks)
    : QStyledItemDelegate(watchedTable)
    , table(watchedTable)
    , text(findingOfBlanks)
{
    table->setItemDelegate(this);
}

bool BlankCellDelegate::isBlank(const QModelIndex& index) const
{
    return index.isValid() && table->item(index.row(), index.column()) == nullptr;
}

bool BlankCellDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                  const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || !isBlank(index)) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    QToolTip::showText(event->globalPos(), plainToolTip(text), view, view->visualRect(index));
    return true;
}

void BlankCellDelegate::initStyleOption(QStyleOptionViewItem* option,
                                        const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (isBlank(index)) {
        option->backgroundBrush = findingBrush();
    }
}
