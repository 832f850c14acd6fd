// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tables/datasettips.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QTableWidget>
#include <QToolTip>

DataSetTips::DataSetTips(QTableWidget* table)
    : QObject(table)
    , rowHeadings(table->verticalHeader())
{
    rowHeadings->viewport()->installEventFilter(this);
}

bool DataSetTips::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ToolTip) {
        return QObject::eventFilter(watched, event);
    }
    const auto* help = static_cast<QHelpEvent*>(event);
    const int dataSet = rowHeadings->logicalIndexAt(help->pos());
    if (dataSet < 0) {
        return QObject::eventFilter(watched, event);
    }
    const QRect heading(0, rowHeadings->sectionViewportPosition(dataSet), rowHeadings->width(),
                        rowHeadings->sectionSize(dataSet));
    QToolTip::showText(help->globalPos(), QString("data set %1").arg(dataSet),
                       rowHeadings->viewport(), heading);
    return true;
}
