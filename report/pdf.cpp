// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/pdf.h"

#include "report/printedtext.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>
#include <qcustomplot.h>

namespace {

constexpr int dotsPerInch = 600;
constexpr double inch = 25.4; ///< mm
constexpr double sideMargin = 18;
constexpr double topMargin = 22; ///< with the heading of the page in it
constexpr double bottomMargin = 18;
constexpr double lineOfPage = 12; ///< of its heading, from the upper edge of the paper
/// What Qt may take for the end of a PDF, fonts included, which it does not survive the lack of.
constexpr int memoryForEnd = 48 << 20;

double dots(double millimetres)
{
    return millimetres / inch * dotsPerInch;
}

/// The pages of a text.
class Pages
{
public:
    Pages(const ReportDocument& report, QPdfWriter* pdfWriter, QCPPainter* painterOfPages)
        : writer(pdfWriter)
        , painter(painterOfPages)
        , charts(painterOfPages, dotsPerInch)
        , heading(report.title() + " - " + report.subtitle().value(0))
    {
        text.setDefaultFont(printedFont());
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        text.setDefaultTextOption(option);
        text.setUndoRedoEnabled(false);
        printReport(report, &text, &charts);
        QAbstractTextDocumentLayout* layout = text.documentLayout();
        layout->registerHandler(PrintedCharts::objectType, &charts);
        layout->setPaintDevice(writer);
        text.setDocumentMargin(0);
        body = QRectF(dots(sideMargin), dots(topMargin), writer->width() - 2 * dots(sideMargin),
                      writer->height() - dots(topMargin) - dots(bottomMargin));
        text.setPageSize(body.size());
        constexpr int mostPasses = 3; // as a break moves what is behind it
        for (int pass = 0; pass < mostPasses && keepTogether(); ++pass) {
            text.setPageSize(body.size()); // lays all out anew: changes leave parts undrawn
        }
    }

    int count() const { return text.pageCount(); }

    void draw(int page)
    {
        drawFrame(page);
        painter->save();
        painter->translate(body.left(), body.top() - page * body.height());
        QAbstractTextDocumentLayout::PaintContext context;
        context.clip = QRectF(0, page * body.height(), body.width(), body.height());
        painter->setClipRect(context.clip);
        context.palette.setColor(QPalette::Text, Qt::black);
        text.documentLayout()->draw(painter, context);
        painter->restore();
    }

private:
    int pageOf(double height) const { return int(height / body.height()); }

    /// The page on which a block ends or, if it is in a short table, on which that does.
    int lastPageOf(const QTextBlock& block) const
    {
        constexpr int shortRows = 16;
        const QAbstractTextDocumentLayout* layout = text.documentLayout();
        QTextTable* table = QTextCursor(block).currentTable();
        return pageOf((table != nullptr && table->rows() <= shortRows
                           ? layout->frameBoundingRect(table)
                           : layout->blockBoundingRect(block))
                          .bottom());
    }

    /// Moves headings and captions to the page on which what they belong to begins. Whether there
    /// were any to be moved.
    bool keepTogether()
    {
        const auto isKept = [](const QTextBlock& block) {
            return block.isValid() && block.blockFormat().property(keptProperty).toBool();
        };
        bool isChanged = false;
        for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
            if (!isKept(block)) {
                continue;
            }
            const QTextBlock first = block;
            while (isKept(block.next())) {
                block = block.next();
            }
            const QTextBlock last = block.next();
            const int page = pageOf(text.documentLayout()->blockBoundingRect(first).top());
            if (last.isValid() && lastPageOf(last) != page) {
                QTextBlockFormat format = first.blockFormat();
                isChanged |= format.pageBreakPolicy() == QTextFormat::PageBreak_Auto;
                format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
                QTextCursor(first).setBlockFormat(format);
            }
        }
        return isChanged;
    }

    void drawFrame(int page)
    {
        painter->setFont(printedFont(printedPoints - 1));
        painter->setPen(Qt::black);
        const QRectF line(body.left(), dots(lineOfPage), body.width(), dots(5));
        const QFontMetricsF metrics(painter->font(), writer);
        painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                          metrics.elidedText(heading, Qt::ElideMiddle, body.width()));
        painter->setPen(QPen(Qt::black, dots(0.2)));
        painter->drawLine(line.bottomLeft(), line.bottomRight());
        painter->drawText(QRectF(body.left(), writer->height() - dots(bottomMargin) + dots(3),
                                 body.width(), dots(6)),
                          Qt::AlignRight | Qt::AlignTop,
                          QString("Page %1 of %2").arg(page + 1).arg(count()));
    }

    QPdfWriter* writer;
    QCPPainter* painter;
    PrintedCharts charts;
    QTextDocument text;
    QString heading;
    QRectF body;
};

} // namespace

std::optional<QByteArray> pdfReport(const ReportDocument& document, const GoesOnWithShare& goesOn)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(document.title());
    writer.setCreator("Velmora");
    writer.setResolution(dotsPerInch);
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF()));
    QCPPainter painter;
    QByteArray reserve(memoryForEnd, Qt::Uninitialized);
    if (!painter.begin(&writer)) {
        qBadAlloc();
    }
    painter.setMode(QCPPainter::pmVectorized);
    painter.setMode(QCPPainter::pmNonCosmetic);
    bool isGoing = true;
    {
        Pages pages(document, &writer, &painter);
        const int count = pages.count();
        for (int page = 0; isGoing && page < count; ++page) {
            if (page > 0) {
                writer.newPage();
            }
            pages.draw(page);
            isGoing = goesOn(double(page + 1) / count);
        }
    }
    reserve.clear();
    if (!painter.end()) {
        qBadAlloc();
    }
    return isGoing ? std::optional<QByteArray>(buffer.data()) : std::nullopt;
}
