// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/pdf.h"

#include "report/chartpainter.h"
#include "report/printedtable.h"

#include <QBuffer>
#include <qcustomplot.h>

namespace {

/// Memory that Qt may take to finish a PDF with its fonts. Qt crashes if it is not there.
constexpr int memoryForEnd = 48 << 20;
constexpr double shareOfCounting = 0.3; ///< of the time

/// How many steps of work a block is.
struct StepsOf
{
    int operator()(const ReportHeading& /*heading*/) const { return 1; }
    int operator()(const ReportParagraph& /*paragraph*/) const { return 1; }
    int operator()(const ReportList& list) const { return list.texts.size(); }
    int operator()(const ReportTable& table) const { return table.rows.size(); }
    int operator()(const ReportChart& /*chart*/) const { return 20; }
};

/// Puts the blocks of a report on pages.
class Printer
{
public:
    Printer(const ReportDocument& printed, QPdfWriter* writer, const GoesOnWithShare& asked)
        : report(printed)
        , paper(writer, report.title() + " - " + report.subtitle().value(0))
        , goesOn(asked)
    {
        for (const ReportBlock& counted : report.blocks()) {
            allSteps += std::visit(StepsOf(), counted);
        }
    }

    /// Counts the pages, then draws them. Returns false if aborted.
    bool print(QCPPainter* painter)
    {
        run(nullptr, 0, 0, shareOfCounting);
        if (isGoing) {
            run(painter, paper.pages(), shareOfCounting, 1);
        }
        return isGoing;
    }

    void operator()(const ReportHeading& heading)
    {
        paper.leave(ofPoints(heading.level == 1 ? 16 : 11));
        paper.demand(leadHeight(block));
        print({heading.text}, fontOf(heading));
        paper.leave(ofPoints(5));
    }

    void operator()(const ReportParagraph& paragraph)
    {
        paper.leave(ofPoints(2));
        print({paragraph.text}, fontOf(paragraph), 0, paragraph.emphasis);
        paper.leave(ofPoints(5));
    }

    void operator()(const ReportList& list)
    {
        paper.leave(ofPoints(2));
        print(list.texts, printedFont(), ofPoints(16), list.emphasis);
        paper.leave(ofPoints(5));
    }

    void operator()(const ReportTable& table)
    {
        paper.leave(ofPoints(8));
        paper.demand(leadHeight(block));
        print({table.caption}, printedFont(printedPoints, true));
        paper.leave(ofPoints(3));
        PrintedTable(table, &paper).print([this] { return step(); });
        paper.leave(ofPoints(6));
    }

    void operator()(const ReportChart& chart)
    {
        paper.leave(ofPoints(6));
        paper.demand(leadHeight(block));
        if (QCPPainter* const painter = paper.painter()) {
            painter->save();
            painter->translate(paper.at(0));
            painter->scale(dotsOfPixel, dotsOfPixel);
            drawChart(chart, painter);
            painter->restore();
        }
        paper.advance(chartHeight * dotsOfPixel);
        paper.leave(ofPoints(2));
        print({chart.caption}, printedFont(printedPoints, true));
        paper.leave(ofPoints(8));
    }

private:
    static constexpr double dotsOfPixel = Paper::dotsPerInch / 96.0;

    static QFont fontOf(const ReportHeading& heading)
    {
        return printedFont(heading.level == 1 ? 14 : 11, true);
    }

    static QFont fontOf(const ReportParagraph& paragraph)
    {
        const bool isStatement = paragraph.emphasis == Emphasis::Statement;
        return printedFont(printedPoints + (isStatement ? 1.5 : 0), isStatement);
    }

    void run(QCPPainter* painter, int pageCount, double begin, double end)
    {
        shareBefore = begin;
        shareOfRun = end - begin;
        steps = 0;
        paper.begin(painter, pageCount);
        print({report.title()}, printedFont(18, true));
        paper.leave(ofPoints(4));
        print(report.subtitle(), printedFont());
        for (block = 0; isGoing && block < report.blocks().size(); ++block) {
            std::visit(*this, report.blocks().at(block));
        }
    }

    /// Texts one below the other.
    void print(const QStringList& texts, const QFont& font, double indent = 0,
               Emphasis emphasis = Emphasis::None)
    {
        std::vector<PrintedText> printed;
        for (const QString& text : texts) {
            printed.push_back(
                paper.text(text, font, paper.width() - indent - 2 * Paper::padding(emphasis)));
            if (!step()) {
                return;
            }
        }
        paper.print(printed, ofPoints(indent > 0 ? 3 : 1), indent, emphasis);
    }

    double heightOf(const QString& text, const QFont& font) const
    {
        return paper.text(text, font, paper.width()).height();
    }

    /// The room that a page must have where a block begins, as far as a page can hold that: a
    /// heading stays with what follows it.
    double leadHeight(int number)
    {
        if (number >= report.blocks().size()) {
            return 0;
        }
        const ReportBlock& next = report.blocks().at(number);
        const QFont captionFont = printedFont(printedPoints, true);
        double height = ofPoints(40); // some lines of a text, in a box
        if (const auto* heading = std::get_if<ReportHeading>(&next)) {
            height =
                heightOf(heading->text, fontOf(*heading)) + ofPoints(16) + leadHeight(number + 1);
        } else if (const auto* table = std::get_if<ReportTable>(&next)) {
            height = heightOf(table->caption, captionFont) + ofPoints(11)
                     + PrintedTable(*table, &paper).leadHeight();
        } else if (const auto* chart = std::get_if<ReportChart>(&next)) {
            height =
                chartHeight * dotsOfPixel + heightOf(chart->caption, captionFont) + ofPoints(8);
        }
        return qMin(height, paper.height());
    }

    bool step()
    {
        ++steps;
        isGoing = isGoing && goesOn(shareBefore + shareOfRun * qMin(1.0, steps / allSteps));
        return isGoing;
    }

    const ReportDocument& report;
    Paper paper;
    const GoesOnWithShare& goesOn;
    int block = 0;
    double allSteps = 3; ///< title and subtitle
    double steps = 0;
    double shareBefore = 0;
    double shareOfRun = 1;
    bool isGoing = true;
};

} // namespace

std::optional<QByteArray> pdfReport(const ReportDocument& document, const GoesOnWithShare& goesOn)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(document.title());
    writer.setCreator("Velmora");
    writer.setResolution(Paper::dotsPerInch);
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF()));
    QCPPainter painter;
    QByteArray reserve(memoryForEnd, Qt::Uninitialized);
    if (!painter.begin(&writer)) {
        qBadAlloc();
    }
    painter.setMode(QCPPainter::pmVectorized);
    painter.setMode(QCPPainter::pmNonCosmetic);
    const bool isGoing = Printer(document, &writer, goesOn).print(&painter) && goesOn(1);
    reserve.clear();
    if (!painter.end()) {
        qBadAlloc();
    }
    return isGoing ? std::optional<QByteArray>(buffer.data()) : std::nullopt;
}
