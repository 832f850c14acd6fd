// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/paper.h"

#include <qcustomplot.h>

namespace {

constexpr double inch = 25.4; ///< mm
constexpr double sideMargin = 18;
constexpr double topMargin = 22; ///< with the heading of the page in it
constexpr double bottomMargin = 18;
constexpr double lineOfPage = 12; ///< of its heading, from the upper edge of the paper

const QColor warningColor(253, 240, 220);
const QColor warningBorderColor(138, 90, 0);
const QColor statementColor(235, 235, 235);

double dots(double millimetres)
{
    return millimetres / inch * Paper::dotsPerInch;
}

constexpr QChar bullet(0x2022);

} // namespace

/// A line of one of several texts, with the gap above it.
struct Paper::Line
{
    const PrintedText* text;
    int number;
    double above;

    double height() const { return text->lineHeight(number); }
};

double ofPoints(double points)
{
    constexpr double pointsPerInch = 72;
    return points / pointsPerInch * Paper::dotsPerInch;
}

Paper::Paper(QPdfWriter* pdfWriter, const QString& headingOfPages)
    : writer(pdfWriter)
    , heading(headingOfPages)
    , body(dots(sideMargin), dots(topMargin), writer->width() - 2 * dots(sideMargin),
           writer->height() - dots(topMargin) - dots(bottomMargin))
{
}

void Paper::begin(QCPPainter* painterOfPages, int pageCount)
{
    ofPages = painterOfPages;
    count = pageCount;
    page = 1;
    y = body.top();
    drawFrame();
}

void Paper::newPage()
{
    if (ofPages != nullptr) {
        writer->newPage();
    }
    ++page;
    y = body.top();
    drawFrame();
}

void Paper::demand(double height)
{
    if (height > room() && !isFresh()) {
        newPage();
    }
}

void Paper::leave(double gap)
{
    if (!isFresh()) {
        y += qMax(0.0, gap - gapAbove);
        gapAbove = qMax(gap, gapAbove);
    }
}

void Paper::advance(double height)
{
    y += height;
    gapAbove = 0;
}

PrintedText Paper::text(const QString& words, const QFont& font, double columnWidth,
                        Qt::Alignment alignment) const
{
    return PrintedText(words, font, columnWidth, alignment, writer);
}

std::vector<Paper::Line> Paper::linesOf(const std::vector<PrintedText>& texts, double gap)
{
    std::vector<Line> lines;
    for (const PrintedText& cell : texts) {
        for (int number = 0; number < cell.lineCount(); ++number) {
            lines.push_back({&cell, number, number == 0 ? gap : 0});
        }
    }
    return lines;
}

double Paper::padding(Emphasis emphasis)
{
    return emphasis == Emphasis::None ? 0 : ofPoints(5);
}

void Paper::print(const std::vector<PrintedText>& texts, double gap, double indent,
                  Emphasis emphasis)
{
    const double inner = padding(emphasis);
    const std::vector<Line> lines = linesOf(texts, gap);
    for (size_t next = 0; next < lines.size();) {
        double boxHeight = 2 * inner;
        size_t end = next;
        while (end < lines.size()) {
            const double more = lines.at(end).height() + (end > next ? lines.at(end).above : 0);
            const bool isForced = end == next && isFresh();
            if (boxHeight + more > room() && !isForced) {
                break;
            }
            boxHeight += more;
            ++end;
        }
        if (next < end) {
            drawBox(boxHeight, emphasis);
            y += inner - lines.at(next).above;
            for (; next < end; ++next) {
                const Line& line = lines.at(next);
                y += line.above;
                if (ofPages != nullptr) {
                    drawLine(line, inner, indent);
                }
                y += line.height();
            }
            advance(inner);
        }
        if (next < lines.size()) {
            newPage();
        }
    }
}

void Paper::drawLine(const Line& line, double left, double indent)
{
    ofPages->setPen(Qt::black);
    line.text->drawLine(ofPages, at(left + indent), line.number);
    if (indent > 0 && line.number == 0) {
        ofPages->setFont(printedFont());
        ofPages->drawText(at(left + indent / 2, line.text->ascent()), QString(bullet));
    }
}

void Paper::drawBox(double boxHeight, Emphasis emphasis)
{
    if (ofPages == nullptr || emphasis == Emphasis::None) {
        return;
    }
    const bool isWarning = emphasis == Emphasis::Warning;
    ofPages->setPen(isWarning ? QPen(warningBorderColor, ofPoints(1)) : QPen(Qt::NoPen));
    ofPages->setBrush(isWarning ? warningColor : statementColor);
    ofPages->drawRect(QRectF(at(0), QSizeF(width(), boxHeight)));
    ofPages->setBrush(Qt::NoBrush);
}

void Paper::drawFrame()
{
    if (ofPages == nullptr) {
        return;
    }
    ofPages->setFont(printedFont(printedPoints - 1));
    ofPages->setPen(Qt::black);
    const QRectF line(body.left(), dots(lineOfPage), body.width(), dots(5));
    const QFontMetricsF metrics(ofPages->font(), writer);
    ofPages->drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                      metrics.elidedText(heading, Qt::ElideMiddle, body.width()));
    ofPages->setPen(QPen(Qt::black, dots(0.2)));
    ofPages->drawLine(line.bottomLeft(), line.bottomRight());
    ofPages->drawText(
        QRectF(body.left(), writer->height() - dots(bottomMargin) + dots(3), body.width(), dots(6)),
        Qt::AlignRight | Qt::AlignTop, QString("Page %1 of %2").arg(page).arg(count));
}
