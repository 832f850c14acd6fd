// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tables/columnwidths.h"

#include <QHeaderView>
#include <QStyle>
#include <QTableWidget>

void fitColumns(QTableWidget* table, const QString& widestNumber)
{
    QHeaderView* header = table->horizontalHeader();
    const int margins = 4 * table->style()->pixelMetric(QStyle::PM_FocusFrameHMargin);
    const int widest = table->fontMetrics().horizontalAdvance(widestNumber) + margins;
    for (int column = 0; column < table->columnCount(); ++column) {
        const int width = qMax(widest, header->sectionSizeHint(column));
        if (width > header->sectionSize(column)) {
            header->resizeSection(column, width);
        }
    }
}
