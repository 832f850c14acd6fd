// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_PAPER_H
#define VELMORA_REPORT_PAPER_H

#include "report/document.h"
#include "report/printedtext.h"

#include <QPdfWriter>

#include <vector>

class QCPPainter;

/// Pages that are filled from above, each with a heading and its number. Lengths are in dots.
/// Without a painter the pages are only counted.
class Paper
{
public:
    static constexpr int dotsPerInch = 600;

    Paper(QPdfWriter* pdfWriter, const QString& headingOfPages);

    /// Begins with the first page; pageCount is that of all pages.
    void begin(QCPPainter* painterOfPages, int pageCount);
    void newPage();
    int pages() const { return page; }

    double width() const { return body.width(); }
    double height() const { return body.height(); }
    double room() const { return body.bottom() - y; }
    bool isFresh() const { return !(y > body.top()); }

    /// Goes on with a new page where the rest of this one is lower than that.
    void demand(double height);
    /// Leaves a gap above what comes next, but not at the upper edge of a page. Of several gaps
    /// in a row the largest counts.
    void leave(double gap);
    void advance(double height);

    /// The place on the page, from the left edge of the text.
    QPointF at(double x, double below = 0) const { return {body.left() + x, y + below}; }

    /// None where pages are counted.
    QCPPainter* painter() const { return ofPages; }

    PrintedText text(const QString& words, const QFont& font, double columnWidth,
                     Qt::Alignment alignment = Qt::AlignLeft) const;

    /// Between a box of the emphasis and the texts in it.
    static double padding(Emphasis emphasis);

    /// Prints texts one below the other, on several pages if need be, in a box that has the
    /// emphasis; indented ones with a bullet each.
    void print(const std::vector<PrintedText>& texts, double gap, double indent = 0,
               Emphasis emphasis = Emphasis::None);

private:
    struct Line;

    static std::vector<Line> linesOf(const std::vector<PrintedText>& texts, double gap);
    void drawLine(const Line& line, double left, double indent);
    void drawFrame();
    void drawBox(double boxHeight, Emphasis emphasis);

    QPdfWriter* writer;
    QCPPainter* ofPages = nullptr;
    QString heading;
    QRectF body;
    double y = 0;
    double gapAbove = 0; ///< that y has below what was printed last
    int page = 0;
    int count = 0;
};

/// In dots.
double ofPoints(double points);

#endif
