// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/printedtext.h"

QFont printedCodeFont()
{
    QFont font("DejaVu Sans Mono");
    font.setStyleHint(QFont::Monospace);
    font.setPointSizeF(printedPoints - 2);
    return font;
}

QFont printedFont(double points, bool isBold)
{
    QFont font("DejaVu Sans");
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(points);
    font.setBold(isBold);
    // Letters apart are not joined to ligatures, which searches of a PDF would not find.
    font.setLetterSpacing(QFont::AbsoluteSpacing, 0.02);
    return font;
}

PrintedText::PrintedText(const QString& text, const QFont& font, double width,
                         Qt::Alignment alignment, QPaintDevice* device)
    : layout(std::make_unique<QTextLayout>(text, font, device))
{
    QTextOption option(alignment);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout->setTextOption(option);
    layout->beginLayout();
    double y = 0.0;
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        line.setLineWidth(width);
        line.setPosition(QPointF(0, y));
        y += line.height();
    }
    layout->endLayout();
}

double PrintedText::height() const
{
    double sum = 0.0;
    for (int line = 0; line < lineCount(); ++line) {
        sum += lineHeight(line);
    }
    return sum;
}

void PrintedText::drawLine(QPainter* painter, const QPointF& place, int line) const
{
    const QTextLine drawn = layout->lineAt(line);
    drawn.draw(painter, place - QPointF(0, drawn.y()));
}
