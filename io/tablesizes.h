// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_TABLESIZES_H
#define VELMORA_IO_TABLESIZES_H

#include <QSize>

// Which part of a table of numbers a table widget shows, and whether each number gets an item,
// which takes thirty times the memory of the number.

/// The size that a table asks for.
struct TableExtent
{
    int columns = 0;      ///< of the longest row, or those with headings if there are more
    int rows = 0;         ///< including empty ones
    qint64 numbers = 0;   ///< in all rows together; some rows may be shorter
    int namedColumns = 0; ///< columns with headings; shown even at the expense of rows
};

/// The part of a table that is shown.
struct TableSizes
{
    QSize shown;          ///< columns and rows
    QSize full;           ///< of the whole table if only a part is shown; otherwise invalid
    bool hasItems = true; ///< whether cells have items
};

/// How a table of more than a million cells is shown.
enum class LargeTableUse {
    WithoutItems, ///< the whole table without items, with at most two cells for each number
    InPart        ///< at most a million cells, with items
};

/// A widget takes at most 20 million rows, 200,000 columns and 134 million cells. A larger table
/// gets the columns of a row of mean length, then all rows, then more columns: one long row counts
/// less than many short ones.
TableSizes tableSizes(const TableExtent& extent, LargeTableUse use);

/// The sizes after adding a row of this length below what is shown. Without items if more than a
/// million cells are shown then.
TableSizes withRowBelow(const QSize& shown, const QSize& full, int length);

#endif
