// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_PAPER_H
#define VELMORA_REPORT_PAPER_H

#include "report/document.h"
#include "report/printedtext.h"

#include <QPdfWriter>

#include <vector>

class QCPPainter;

/// Pages filled from the top, each with a heading and its number. Lengths are in dots. Without a
/// painter the pages are only counted.
class Paper
{
public:
    static constexpr int dotsPerInch = 600;

    Paper(QPdfWriter* pdfWriter, const QString& headingOfPages);

    /// Begins the first page of pageCount pages.
    void begin(QCPPainter* painterOfPages, int pageCount);
    void newPage();
    int pages() const { return page; }

    double width() const { return body.width(); }
    double height() const { return body.height(); }
    double room() const { return body.bottom() - y; }
    bool isFresh() const { return !(y > body.top()); }

    /// Begins a new page if this one has less room than that.
    void demand(double height);
    /// Leaves a gap above what comes next, except at the top of a page. Of several gaps in a row
    /// the largest counts.
    void leave(double gap);
    void advance(double height);

    /// The place on the page, from the left edge of the text.
    QPointF at(double x, double below = 0) const { return {body.left() + x, y + below}; }

    /// None while pages are only counted.
    QCPPainter* painter() const { return ofPages; }

    PrintedText text(const QString& words, const QFont& font, double columnWidth,
                     Qt::Alignment alignment = Qt::AlignLeft) const;

    /// The distance between the box of an emphasis and its texts.
    static double padding(Emphasis emphasis);

    /// Prints texts one below the other, on several pages if necessary, in the box of the
    /// emphasis. Each indented text has a bullet.
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
    double gapAbove = 0; ///< distance of y from what was printed last
    int page = 0;
    int count = 0;
};

/// In dots.
double ofPoints(double points);

#endif
