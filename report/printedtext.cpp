// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/printedtext.h"

#include "report/chartpainter.h"
#include "report/columns.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>
#include <qcustomplot.h>

#include <numeric>

namespace {

constexpr int lettersInLine = 88; ///< about so many, of a table
constexpr int chartProperty = keptProperty + 1;

const QColor warningColor(253, 240, 220);
const QColor warningBorderColor(138, 90, 0);
const QColor statementColor(235, 235, 235);

/// Puts blocks of a report into a text.
class TextMaker
{
public:
    TextMaker(QTextDocument* text, PrintedCharts* chartObjects)
        : cursor(text)
        , charts(chartObjects)
    {
    }

    void addTitle(const ReportDocument& report)
    {
        paragraph(report.title(), printedFont(18), 0, 4, true);
        for (const QString& line : report.subtitle()) {
            paragraph(line, printedFont(), 0, 1);
        }
    }

    void operator()(const ReportHeading& heading)
    {
        const bool isChapter = heading.level == 1;
        paragraph(heading.text, printedFont(isChapter ? 14 : 11), isChapter ? 16 : 11, 5, true,
                  true);
        QTextBlockFormat format = cursor.blockFormat();
        format.setHeadingLevel(heading.level);
        cursor.setBlockFormat(format);
    }

    void operator()(const ReportParagraph& block)
    {
        const bool isStatement = block.emphasis == Emphasis::Statement;
        beginFrame(block.emphasis);
        paragraph(block.text, printedFont(isStatement ? printedPoints + 1.5 : printedPoints), 2, 5,
                  isStatement);
        endFrame(block.emphasis);
    }

    void operator()(const ReportList& list)
    {
        QTextListFormat format;
        format.setStyle(QTextListFormat::ListDisc);
        format.setIndent(1);
        QTextList* made = nullptr;
        beginFrame(list.emphasis);
        for (const QString& text : list.texts) {
            paragraph(text, printedFont(), 1, 2);
            if (made == nullptr) {
                made = cursor.createList(format);
            } else {
                made->add(cursor.block());
            }
        }
        endFrame(list.emphasis);
    }

    void operator()(const ReportTable& table)
    {
        paragraph(table.caption, printedFont(), 8, 3, true, true);
        QTextTable* cells =
            cursor.insertTable(table.rows.size() + 1, table.headings.size(), tableFormat(table));
        for (int column = 0; column < table.headings.size(); ++column) {
            fill(cells->cellAt(0, column), table.headings.at(column), table, column, true);
            for (int row = 0; row < table.rows.size(); ++row) {
                fill(cells->cellAt(row + 1, column), table.rows.at(row).at(column), table, column,
                     false);
            }
        }
        cursor.movePosition(QTextCursor::End);
        isFresh = true;
        paragraph(QString(), printedFont(6), 0, 0); // margins right below a table have no effect
    }

    void operator()(const ReportChart& chart)
    {
        paragraph(QString(), printedFont(), 6, 0, false, true);
        cursor.insertText(QString(QChar::ObjectReplacementCharacter), charts->add(chart));
        paragraph(chart.caption, printedFont(), 2, 8, true);
    }

private:
    /// Begins a paragraph; margins are in points.
    void paragraph(const QString& text, const QFont& font, double above, double below,
                   bool isBold = false, bool isKept = false)
    {
        QTextBlockFormat block;
        block.setTopMargin(above);
        block.setBottomMargin(below);
        block.setProperty(keptProperty, isKept);
        QTextCharFormat letters;
        letters.setFont(font);
        letters.setFontWeight(isBold ? QFont::Bold : QFont::Normal);
        if (isFresh) {
            cursor.setBlockFormat(block);
            cursor.setBlockCharFormat(letters);
        } else {
            cursor.insertBlock(block, letters);
        }
        isFresh = false;
        cursor.insertText(text, letters);
    }

    void beginFrame(Emphasis emphasis)
    {
        if (emphasis == Emphasis::None) {
            return;
        }
        const bool isWarning = emphasis == Emphasis::Warning;
        QTextFrameFormat format;
        format.setBackground(isWarning ? warningColor : statementColor);
        format.setBorder(isWarning ? 1 : 0);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderBrush(warningBorderColor);
        format.setPadding(5);
        format.setBottomMargin(6);
        cursor.insertFrame(format);
        isFresh = true;
    }

    void endFrame(Emphasis emphasis)
    {
        if (emphasis != Emphasis::None) {
            cursor.movePosition(QTextCursor::End);
            isFresh = true;
        }
    }

    static void fill(QTextTableCell cell, const QString& text, const ReportTable& table, int column,
                     bool isHeading)
    {
        QTextTableCellFormat border;
        border.setBottomBorder(isHeading ? 1.2 : 0.5);
        border.setBottomBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        border.setBottomBorderBrush(isHeading ? Qt::black : QColor(187, 187, 187));
        border.setVerticalAlignment(isHeading ? QTextCharFormat::AlignBottom
                                              : QTextCharFormat::AlignTop);
        border.setTopPadding(2);
        border.setBottomPadding(2);
        border.setRightPadding(8);
        cell.setFormat(border);
        QTextCursor inside = cell.firstCursorPosition();
        QTextBlockFormat block;
        block.setAlignment(table.alignment.mid(column, 1) == "r" ? Qt::AlignRight : Qt::AlignLeft);
        inside.setBlockFormat(block);
        QTextCharFormat letters;
        letters.setFont(printedFont(printedPoints - 1));
        letters.setFontWeight(isHeading ? QFont::Bold : QFont::Normal);
        inside.insertText(text, letters);
    }

    static QTextTableFormat tableFormat(const ReportTable& table)
    {
        QTextTableFormat format;
        format.setHeaderRowCount(1);
        format.setBorder(0);
        format.setCellPadding(0);
        format.setCellSpacing(0);
        const QVector<double> shares = columnShares(table, lettersInLine);
        const double sum = std::accumulate(shares.begin(), shares.end(), 0.0);
        QVector<QTextLength> widths;
        for (const double share : shares) {
            widths.append(QTextLength(QTextLength::PercentageLength, 100 * share / sum));
        }
        format.setColumnWidthConstraints(widths);
        format.setWidth(QTextLength(QTextLength::PercentageLength, 100 * qMin(1.0, sum)));
        return format;
    }

    QTextCursor cursor;
    PrintedCharts* charts;
    bool isFresh = true; ///< whether the cursor stands in an empty paragraph
};

} // namespace

QFont printedFont(double points)
{
    QFont font("DejaVu Sans");
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(points);
    // Letters apart are not joined to ligatures, which searches of a PDF would not find.
    font.setLetterSpacing(QFont::AbsoluteSpacing, 0.02);
    return font;
}

PrintedCharts::PrintedCharts(QCPPainter* painterOfPages, double dotsPerInch)
    : painter(painterOfPages)
    , resolution(dotsPerInch)
{
}

QTextCharFormat PrintedCharts::add(const ReportChart& chart)
{
    QTextCharFormat format;
    format.setObjectType(objectType);
    format.setProperty(chartProperty, charts.size());
    charts.append(chart);
    return format;
}

QSizeF PrintedCharts::intrinsicSize(QTextDocument* /*document*/, int /*position*/,
                                    const QTextFormat& /*format*/)
{
    constexpr double chartDotsPerInch = 96;
    return QSizeF(chartWidth, chartHeight) * resolution / chartDotsPerInch;
}

void PrintedCharts::drawObject(QPainter* /*ofPages*/, const QRectF& place,
                               QTextDocument* /*document*/, int /*position*/,
                               const QTextFormat& format)
{
    painter->save();
    painter->translate(place.topLeft());
    painter->scale(place.width() / chartWidth, place.height() / chartHeight);
    drawChart(charts.at(format.property(chartProperty).toInt()), painter);
    painter->restore();
}

void printReport(const ReportDocument& report, QTextDocument* text, PrintedCharts* charts)
{
    TextMaker maker(text, charts);
    maker.addTitle(report);
    for (const ReportBlock& block : report.blocks()) {
        std::visit(maker, block);
    }
}
