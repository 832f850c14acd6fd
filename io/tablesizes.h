// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_TABLESIZES_H
#define VELMORA_IO_TABLESIZES_H

#include <QSize>

// Which part of a table of numbers a table widget shows, and whether each number of it gets
// an item, which takes thirty times the memory of the number.

/// What a table asks for.
struct TableExtent
{
    int columns = 0;      ///< of the longest row, or those with headings if they are more
    int rows = 0;         ///< empty ones included
    qint64 numbers = 0;   ///< in all rows together, some of which may be shorter
    int namedColumns = 0; ///< columns with headings; shown even if fewer rows can be then
};

/// What is shown of it.
struct TableSizes
{
    QSize shown;          ///< columns and rows
    QSize full;           ///< those of the whole table if a part is shown; else invalid
    bool hasItems = true; ///< whether cells have items
};

/// How a table of more than a million cells is shown.
enum class LargeTableUse {
    WithoutItems, ///< all of it, but at most two cells for each number, without items
    InPart        ///< at most a million cells, with items
};

/// A widget takes at most 20 million rows, 200,000 columns and 134 million cells. Of a table with
/// more than may be shown it gets the columns of a row of mean length, then all rows, then further
/// columns: one long row counts less than many short ones.
TableSizes tableSizes(const TableExtent& extent, LargeTableUse use);

/// The sizes after a row of this length is added below what is shown. Without items if more
/// than a million cells are shown then.
TableSizes withRowBelow(const QSize& shown, const QSize& full, int length);

#endif
