// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tables/tableexport.h"

#include "app/widgets/exportmenu.h"
#include "app/widgets/messagebox.h"
#include "app/widgets/progressloop.h"
#include "io/csv.h"
#include "io/csvexport.h"

#include <QBitArray>
#include <QTableWidget>

#include <optional>
#include <type_traits>

namespace {

enum class Headings { Without, With };

constexpr int cellsAtATime = 100'000;
/// Half of what a QString or QByteArray can hold at most.
constexpr int longestText = 500'000'000;
const char tooLongText[] = "The table is too large to be copied or saved.";

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

Cells allCells(const QTableWidget& table)
{
    const QRect area(0, 0, table.columnCount(), table.rowCount());
    return {area, QBitArray(area.width() * area.height(), true)};
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

using CellText = std::function<QString(int row, int column)>;

QStringList headingsOf(const QTableWidget& table, const QRect& area, bool withRowHeadings)
{
    QStringList names;
    if (withRowHeadings) {
        names.append(QString());
    }
    for (int column = area.left(); column <= area.right(); ++column) {
        names.append(table.model()->headerData(column, Qt::Horizontal).toString());
    }
    return names;
}

/// Joins the texts of the cells a part at a time, which take far more memory than the whole, while
/// a progress dialog shows how far it is. Nothing if the user aborts it, or if it is too long,
/// which a message reports.
template <typename Join>
std::optional<std::invoke_result_t<Join, TextRows>>
joinedTexts(QTableWidget* table, const Cells& cells, Headings headings, const CellText& text,
            Join join, const char* betweenParts)
{
    const QRect& area = cells.area;
    const bool hasHeadings = headings == Headings::With && area.width() > 0;
    const bool withRowHeadings = hasHeadings && hasRowHeadings(*table);
    const int rowsAtATime = qMax(1, cellsAtATime / qMax(1, area.width()));
    ProgressLoop progress(table, "Collecting cells...", "Abort", area.height());
    std::invoke_result_t<Join, TextRows> joined;
    for (int first = 0; first == 0 || first < area.height(); first += rowsAtATime) {
        TextRows rows;
        if (first == 0 && hasHeadings) {
            rows.append(headingsOf(*table, area, withRowHeadings));
        }
        const int end = qMin(area.height(), first + rowsAtATime);
        for (int row = area.top() + first; row < area.top() + end; ++row) {
            QStringList texts;
            texts.reserve(area.width() + 1);
            if (withRowHeadings) {
                texts.append(table->model()->headerData(row, Qt::Vertical).toString());
            }
            for (int column = area.left(); column <= area.right(); ++column) {
                texts.append(cells.contains(row, column) ? text(row, column) : QString());
            }
            rows.append(texts);
        }
        joined += (first == 0 ? "" : betweenParts) + join(rows);
        if (joined.size() > longestText) {
            showMessage(table, tooLongText);
            return std::nullopt;
        }
        if (!progress.advance(end)) {
            return std::nullopt;
        }
    }
    return joined;
}

} // namespace

ExportMenu* addTableExport(QTableWidget* table, const QString& fileName,
                           const std::function<Table()>& numbers, const QList<QAction*>& shared)
{
    const CellText shown = [table](int row, int column) { return csvCellText(table, row, column); };
    const auto copy = [table](Headings headings, const CellText& text) {
        const Cells cells = selectedCells(*table);
        if (cells.area.isEmpty()) {
            return;
        }
        if (const auto lines = joinedTexts(table, cells, headings, text, tabSeparated, "\n")) {
            copyText(*lines);
        }
    };
    auto* menu = new ExportMenu(table);
    menu->addEntry(
        "Copy", "Copy", [=] { copy(Headings::Without, shown); },
        QKeySequence::keyBindings(QKeySequence::Copy));
    menu->addEntry("CopyWithHeadings", "Copy with headings", [=] { copy(Headings::With, shown); },
                   {QKeySequence("Ctrl+Shift+C")});
    menu->addEntry("CopyFullPrecision", "Copy with full precision", [=] {
        const Table exact = numbers();
        copy(Headings::Without, [&](int row, int column) {
            const bool hasNumber = row < exact.size() && column < exact.at(row).size();
            const QString text = shown(row, column);
            return hasNumber ? withAllDigits(text, exact.at(row).at(column)) : text;
        });
    });
    menu->addEntry("SaveCsv", "Save as CSV...", [=] {
        saveAs(table, "Save as CSV...", fileName + ".csv", [&] {
            return joinedTexts(table, allCells(*table), Headings::With, shown, commaSeparated, "");
        });
    });
    menu->addSeparator();
    for (QAction* entry : shared) {
        menu->addEntry(entry);
    }
    return menu;
}
