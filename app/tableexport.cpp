// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tableexport.h"

#include "app/exportmenu.h"
#include "io/csv.h"

#include <QBitArray>
#include <QTableWidget>

namespace {

/// Cells within a rectangle, of which some may be left out.
struct Cells
{
    QRect area; ///< x is the column, y the row
    QBitArray included;

    bool contains(int row, int column) const
    {
        return included.at((row - area.top()) * area.width() + column - area.left());
    }
};

QRect areaOf(const QItemSelectionRange& range)
{
    return {QPoint(range.left(), range.top()), QPoint(range.right(), range.bottom())};
}

Cells selectedCells(const QTableWidget& table)
{
    QVector<QRect> ranges;
    for (const QItemSelectionRange& range : table.selectionModel()->selection()) {
        ranges.append(areaOf(range));
    }
    if (ranges.isEmpty() && table.currentRow() >= 0 && table.currentColumn() >= 0) {
        ranges.append({table.currentColumn(), table.currentRow(), 1, 1});
    }
    Cells cells;
    for (const QRect& range : qAsConst(ranges)) {
        cells.area |= range;
    }
    cells.included.resize(cells.area.width() * cells.area.height());
    for (const QRect& range : qAsConst(ranges)) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            const int start = (row - cells.area.top()) * cells.area.width() - cells.area.left();
            cells.included.fill(true, start + range.left(), start + range.right() + 1);
        }
    }
    return cells;
}

/// The text with all digits if it is the number as tables show it. Another text was typed, or
/// belongs to a number that has changed since.
QString withAllDigits(const QString& text, double number)
{
    return text == QString::number(number, 'g', 6) ? QString::number(number, 'g', 17) : text;
}

bool hasRowHeadings(const QTableWidget& table)
{
    for (int row = 0; row < table.rowCount(); ++row) {
        if (table.verticalHeaderItem(row) != nullptr) {
            return true;
        }
    }
    return false;
}

template <typename CellText>
TextRows textsOf(const Cells& cells, CellText text)
{
    TextRows rows;
    for (int row = cells.area.top(); row <= cells.area.bottom(); ++row) {
        QStringList texts;
        texts.reserve(cells.area.width() + 1);
        for (int column = cells.area.left(); column <= cells.area.right(); ++column) {
            texts.append(cells.contains(row, column) ? text(row, column) : QString());
        }
        rows.append(texts);
    }
    return rows;
}

TextRows textsOf(const QTableWidget& table, const Cells& cells, Headings headings)
{
    TextRows rows =
        textsOf(cells, [&table](int row, int column) { return csvCellText(&table, row, column); });
    if (headings == Headings::Without || cells.area.width() <= 0) {
        return rows;
    }
    const QAbstractItemModel& model = *table.model();
    QStringList names;
    for (int column = cells.area.left(); column <= cells.area.right(); ++column) {
        names.append(model.headerData(column, Qt::Horizontal).toString());
    }
    rows.prepend(names);
    if (hasRowHeadings(table)) {
        rows.first().prepend(QString());
        for (int row = cells.area.top(); row <= cells.area.bottom(); ++row) {
            rows[row - cells.area.top() + 1].prepend(
                model.headerData(row, Qt::Vertical).toString());
        }
    }
    return rows;
}

} // namespace

TextRows selectedTexts(const QTableWidget& table, Headings headings)
{
    return textsOf(table, selectedCells(table), headings);
}

TextRows selectedTexts(const QTableWidget& table, const Table& numbers)
{
    return textsOf(selectedCells(table), [&](int row, int column) {
        const QString text = csvCellText(&table, row, column);
        const bool hasNumber = row < numbers.size() && column < numbers.at(row).size();
        return hasNumber ? withAllDigits(text, numbers.at(row).at(column)) : text;
    });
}

QByteArray allLines(const QTableWidget& table)
{
    constexpr int cellsAtATime = 1'000'000; // texts take far more memory than their line
    const int columns = table.columnCount();
    const int rowsAtATime = qMax(1, cellsAtATime / qMax(1, columns));
    QByteArray lines;
    for (int row = 0; row == 0 || row < table.rowCount(); row += rowsAtATime) {
        const QRect area(0, row, columns, qMin(rowsAtATime, table.rowCount() - row));
        const Cells cells{area, QBitArray(area.width() * area.height(), true)};
        const TextRows rows = textsOf(table, cells, Headings::With);
        lines += commaSeparated(row == 0 ? rows : rows.mid(1));
    }
    return lines;
}

void addTableExport(QTableWidget* table, const QString& fileName,
                    const std::function<Table()>& numbers, QAction* summary)
{
    const auto copy = [](const TextRows& rows) {
        if (!rows.isEmpty()) {
            copyText(tabSeparated(rows));
        }
    };
    auto* menu = new ExportMenu(table);
    menu->addEntry(
        "Copy", "Copy", [=] { copy(selectedTexts(*table, Headings::Without)); },
        QKeySequence::keyBindings(QKeySequence::Copy));
    menu->addEntry("CopyWithHeadings", "Copy with headings",
                   [=] { copy(selectedTexts(*table, Headings::With)); },
                   {Qt::CTRL + Qt::SHIFT + Qt::Key_C});
    menu->addEntry("CopyFullPrecision", "Copy with full precision",
                   [=] { copy(selectedTexts(*table, numbers())); });
    menu->addEntry("SaveCsv", "Save as CSV...", [=] {
        saveAs(table, "Save as CSV...", fileName + ".csv", [table] { return allLines(*table); });
    });
    menu->addSeparator();
    menu->addEntry(summary);
}
