// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_PRINTEDTEXT_H
#define VELMORA_REPORT_PRINTEDTEXT_H

#include <QFont>
#include <QTextLayout>

#include <memory>

class QPainter;
class QPaintDevice;

/// The size of letters in a printed report.
constexpr double printedPoints = 9;

QFont printedFont(double points = printedPoints, bool isBold = false);
QFont printedCodeFont();

/// The lines of a text in a column of a page.
class PrintedText
{
public:
    /// Lengths are in dots of the device.
    PrintedText(const QString& text, const QFont& font, double width, Qt::Alignment alignment,
                QPaintDevice* device);

    int lineCount() const { return layout->lineCount(); }

    double lineHeight(int line) const { return layout->lineAt(line).height(); }
    double height() const; ///< of all lines

    /// Draws the line with its upper left corner at the place.
    void drawLine(QPainter* painter, const QPointF& place, int line) const;

    /// The distance of the first line's baseline from its upper edge.
    double ascent() const { return layout->lineAt(0).ascent(); }

private:
    std::unique_ptr<QTextLayout> layout;
};

#endif
