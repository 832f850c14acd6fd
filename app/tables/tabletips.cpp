// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tables/tabletips.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QTableWidget>
#include <QToolTip>

TableTips::TableTips(QTableWidget* describedTable, const Texts& itsTexts)
    : QObject(describedTable)
    , table(describedTable)
    , texts(itsTexts)
{
    for (QAbstractItemView* view :
         QList<QAbstractItemView*>{table, table->verticalHeader(), table->horizontalHeader()}) {
        view->viewport()->installEventFilter(this);
    }
}

bool TableTips::eventFilter(QObject* watched, QEvent* event)
{
    return (event->type() == QEvent::ToolTip
            && showTip(qobject_cast<QWidget*>(watched), *static_cast<QHelpEvent*>(event)))
           || QObject::eventFilter(watched, event);
}

/// False where there is nothing to show.
bool TableTips::showTip(QWidget* place, const QHelpEvent& help) const
{
    QString text;
    QRect area; // within which the tooltip stays
    const QHeaderView* rows = table->verticalHeader();
    const QHeaderView* columns = table->horizontalHeader();
    if (place == rows->viewport()) {
        const int row = rows->logicalIndexAt(help.pos());
        area = QRect(0, rows->sectionViewportPosition(row), rows->width(), rows->sectionSize(row));
        text = row < 0 || !texts.rowHeading ? QString() : texts.rowHeading(row);
    } else if (place == columns->viewport()) {
        const int column = columns->logicalIndexAt(help.pos());
        area = QRect(columns->sectionViewportPosition(column), 0, columns->sectionSize(column),
                     columns->height());
        text = column < 0 || !texts.columnHeading ? QString() : texts.columnHeading(column);
    } else {
        const QModelIndex cell = table->indexAt(help.pos());
        area = table->visualRect(cell);
        text = !cell.isValid() || !texts.cell ? QString() : texts.cell(cell.row(), cell.column());
    }
    if (text.isEmpty()) {
        return false;
    }
    QToolTip::showText(help.globalPos(), text, place, area);
    return true;
}
