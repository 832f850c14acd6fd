// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_CSV_H
#define VELMORA_IO_CSV_H

#include <QSize>
#include <QString>
#include <QStringList>
#include <QVector>

class QTableWidget;

// Comma-separated files. A comma always separates: no quoting, no escaping, no
// trimming. A table is indexed [row][column]; rows may differ in length, and a
// field that is no number (QString::toDouble) is NaN.

// A reader adds the name of a file that cannot be read to its end, without folders, to unread.
// A missing file does not count as such.

/// Every line of the file as a row of numbers.
/// An empty line is a row of one NaN. Empty if the file cannot be read to its end, is not a
/// regular file, such as a pipe, or has a line of 268 million characters.
QVector<QVector<double>> csvReadToDouble(QString path, QStringList* unread = nullptr);

/// The same without the first line, which has the headings.
QVector<QVector<double>> csvWithHeaderReadToDouble(QString path, QStringList* unread = nullptr);

/// The fields of the first line unchanged, including quotes.
/// Empty if the line cannot be read or the file has no content.
QStringList csvWithHeaderReadHeader(QString path, QStringList* unread = nullptr);

/// Writes the table, one line per row, numbers with at most 6 significant digits.
/// Like all writers, it reports a file that cannot be opened only on the debug log.
void csvwrite(QString path, QVector<QVector<double>> table);

/// The same below a heading line that has only the last name of the header.
/// An empty table writes nothing, not even the heading.
void csvwrite(QString path, QVector<QVector<double>> table, QStringList header);

/// Writes the texts of the widget's cells without its headers; the last line has no
/// line break. A cell without an item is a blank. A widget without rows gives an empty
/// file.
void csvwrite(QString path, QTableWidget* widget);

/// The same from row firstRow on (0 if negative). It always writes the last row.
void csvwrite(QString path, QTableWidget* widget, int firstRow);

/// Shows the table, each number with 6 significant digits and "NaN" where a row is short.
/// The column count starts at the length of the last row and grows with longer rows, so
/// rows above such a row keep cells without an item. An empty table removes the rows and
/// leaves the columns. The current cell stays current if it still exists.
/// It shows only a part of a table of more than a million cells, with all rows if possible.
void csvDisplay(QTableWidget* widget, QVector<QVector<double>> table);

/// The same with the names of the header as column headings. It widens the table to show
/// every name, and shows at most longestName characters of a name.
/// Beyond a million cells, cells have no items; csvCellText returns their texts. It shows only
/// a part beyond 20 million rows, 200,000 columns or 134 million cells, or if most of more than
/// a million cells have no number.
void csvDisplay(QTableWidget* widget, QVector<QVector<double>> table, QStringList header);

constexpr int longestName = 1000;

/// Adds a row below the others, as csvDisplay with a header would show it.
void csvDisplayAppend(QTableWidget* widget, const QVector<double>& row);

/// The text that a cell shows; null if it has none.
QString csvCellText(const QTableWidget* widget, int row, int column);

/// The columns and rows of the whole table if the widget shows only a part; otherwise invalid.
QSize csvFullSize(const QTableWidget* widget);

#endif
