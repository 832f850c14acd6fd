// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/printedtable.h"

#include "report/columns.h"

#include <qcustomplot.h>

namespace {

constexpr int shortRows = 15;      ///< of a table that stays on one page
constexpr double fewLines = 40;    ///< in points, of a row that is too high for a page
constexpr double cellPadding = 2;  ///< in points, above and below a text
constexpr double cellGap = 8;      ///< in points, right of a text
constexpr QChar wordBreak(0x200b); ///< has no width, and is no letter

} // namespace

PrintedTable::PrintedTable(const ReportTable& reportTable, Paper* pages)
    : table(reportTable)
    , paper(pages)
    , widths(columnShares(table))
{
    for (double& width : widths) {
        width *= paper->width();
    }
    heading = row(table.headings, true);
}

PrintedTable::Row PrintedTable::row(const QStringList& texts, bool isHeading) const
{
    Row made{{}, isHeading, 0};
    const QFont font = printedFont(printedPoints - 1, isHeading);
    for (int column = 0; column < texts.size(); ++column) {
        const QByteArray kind = table.alignment.mid(column, 1);
        const bool isCode = kind == "c" && !isHeading;
        const QString& text = texts.at(column);
        made.cells.push_back(paper->text(
            isCode ? codePieces(text).join(QChar::LineSeparator) : textPieces(text).join(wordBreak),
            isCode ? printedCodeFont() : font, widths.at(column) - ofPoints(cellGap),
            kind == "r" ? Qt::AlignRight : Qt::AlignLeft));
        made.height = qMax(made.height, made.cells.back().height() + 2 * ofPoints(cellPadding));
    }
    return made;
}

double PrintedTable::leadHeight() const
{
    const double most = 0.7 * paper->height();
    const int rows = table.rows.size() <= shortRows ? table.rows.size() : 1;
    double height = heading.height;
    double first = height;
    for (int number = 0; number < rows && height < most; ++number) {
        height += row(table.rows.at(number), false).height;
        first = number == 0 ? height : first;
    }
    return height < most ? height : qMin(first, heading.height + ofPoints(fewLines));
}

bool PrintedTable::print(const std::function<bool()>& goesOn)
{
    printRow(heading);
    for (const QStringList& texts : table.rows) {
        if (!goesOn()) {
            return false;
        }
        printRow(row(texts, false));
    }
    return true;
}

/// Prints a row; on several pages if it is too high for one.
void PrintedTable::printRow(const Row& row)
{
    const auto turn = [this, &row] {
        paper->newPage();
        if (!row.isHeading && heading.height < paper->height() / 2) {
            printRow(heading);
        }
    };
    const bool isTooHigh = row.height > paper->height() - heading.height;
    if ((isTooHigh ? ofPoints(fewLines) : row.height) > paper->room() && !row.isHeading) {
        turn();
    }
    std::vector<int> next(row.cells.size(), 0);
    while (printPart(row, next)) {
        turn();
    }
}

/// Prints as many lines of each cell as the page has room for. Returns true if lines are left.
bool PrintedTable::printPart(const Row& row, std::vector<int>& next)
{
    const double padding = ofPoints(cellPadding);
    const bool isWhole = row.height <= paper->room();
    double highest = 0;
    double x = 0;
    bool isLeft = false;
    for (size_t column = 0; column < row.cells.size(); ++column) {
        const PrintedText& cell = row.cells.at(column);
        int& line = next.at(column);
        // Headings stand on the line below them.
        double y =
            padding + (row.isHeading && isWhole ? row.height - 2 * padding - cell.height() : 0);
        while (line < cell.lineCount()
               && (isWhole || y + cell.lineHeight(line) <= paper->room() - padding)) {
            if (paper->painter() != nullptr) {
                paper->painter()->setPen(Qt::black);
                cell.drawLine(paper->painter(), paper->at(x, y), line);
            }
            y += cell.lineHeight(line);
            ++line;
        }
        isLeft = isLeft || line < cell.lineCount();
        highest = qMax(highest, y);
        x += widths.at(int(column));
    }
    paper->advance(highest + padding);
    if (paper->painter() != nullptr) {
        paper->painter()->setPen(row.isHeading ? QPen(Qt::black, ofPoints(1.2))
                                               : QPen(QColor(187, 187, 187), ofPoints(0.5)));
        paper->painter()->drawLine(paper->at(0), paper->at(x));
    }
    return isLeft;
}
