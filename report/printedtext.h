// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_PRINTEDTEXT_H
#define VELMORA_REPORT_PRINTEDTEXT_H

#include "report/document.h"

#include <QFont>
#include <QTextObjectInterface>

class QCPPainter;
class QTextDocument;

/// The size of letters in a printed report.
constexpr double printedPoints = 9;

QFont printedFont(double points = printedPoints);

/// Whether a paragraph belongs on the page on which what is behind it begins, as property of its
/// format.
constexpr int keptProperty = QTextFormat::UserProperty + 1;

/// Charts in a text that is printed: laid out as objects and drawn as lines and letters.
class PrintedCharts : public QObject, public QTextObjectInterface
{
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    static constexpr int objectType = QTextFormat::UserObject + 1;

    /// For pages that are painted by the painter, with so many dots to an inch.
    PrintedCharts(QCPPainter* painterOfPages, double dotsPerInch);

    /// The format of an object that shows the chart.
    QTextCharFormat add(const ReportChart& chart);

    QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
    void drawObject(QPainter* ofPages, const QRectF& place, QTextDocument* document, int position,
                    const QTextFormat& format) override;

private:
    QCPPainter* painter;
    double resolution;
    QVector<ReportChart> charts;
};

/// Puts a report into an empty text, its charts into these.
void printReport(const ReportDocument& report, QTextDocument* text, PrintedCharts* charts);

#endif
