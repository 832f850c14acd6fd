// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/charts/chartexport.h"

#include "app/charts/bandgraph.h"
#include "app/widgets/memory.h"

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QHelpEvent>
#include <QPdfWriter>
#include <QToolTip>
#include <qcustomplot.h>

namespace {

constexpr int printDotsPerInch = 300;
constexpr double inchesPerMeter = 1000 / 25.4;
constexpr int pointsPerInch = 72;
/// Bytes for the end of a PDF, fonts included.
constexpr int memoryForEnd = 48 << 20;

/// The chart, so many times its size on the screen.
QPixmap pictureOf(QCustomPlot* plot, double scale)
{
    constexpr int copies = 3; // of the picture: drawn, changed and encoded
    constexpr int bytesPerDot = 4;
    demandMemory(qint64(plot->width() * plot->height() * scale * scale * bytesPerDot * copies));
    QPixmap picture = plot->toPixmap(0, 0, scale);
    demandDone(!picture.isNull());
    return picture;
}

/// The chart in its size on the screen, in the resolution of a printer.
QByteArray pngOf(QCustomPlot* plot)
{
    QImage image = pictureOf(plot, double(printDotsPerInch) / plot->logicalDpiX()).toImage();
    demandDone(!image.isNull());
    image.setDotsPerMeterX(qRound(printDotsPerInch * inchesPerMeter));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    QBuffer buffer;
    demandDone(image.save(&buffer, "PNG"));
    return buffer.data();
}

/// A page of the chart's size on the screen, with lines and letters as such.
QByteArray pdfOf(QCustomPlot* plot)
{
    demandMemory(memoryForEnd);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setCreator("Velmora");
    writer.setResolution(plot->logicalDpiX());
    const QSizeF size = QSizeF(plot->size()) * pointsPerInch / plot->logicalDpiX();
    writer.setPageLayout(
        QPageLayout(QPageSize(size, QPageSize::Point, QString(), QPageSize::ExactMatch),
                    QPageLayout::Portrait, QMarginsF()));
    QCPPainter painter;
    // Free again when the painter ends the page, also where drawing has failed: Qt does not
    // survive a lack of memory there, and takes most of this for a page with nothing on it.
    QByteArray reserve(memoryForEnd, Qt::Uninitialized);
    demandDone(painter.begin(&writer));
    painter.setMode(QCPPainter::pmVectorized);
    painter.setWindow(plot->rect());
    plot->toPainter(&painter);
    reserve.clear();
    demandDone(painter.end());
    return buffer.data();
}

bool isRightClick(const QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        return static_cast<const QMouseEvent*>(event)->button() == Qt::RightButton;
    default:
        return false;
    }
}

} // namespace

ChartExport::ChartExport(QCustomPlot* chart, const ChartExportSettings& how,
                         const QList<QAction*>& shared)
    : ExportMenu(chart)
    , plot(chart)
    , settings(how)
{
    addPictureEntries();
    addSeparator();
    addDataEntries();
    addSeparator();
    QAction* fit = addEntry("FitToData", "Fit to data", [this] {
        settings.fit ? settings.fit() : fitChart(plot, settings.reading.kind);
    });
    setCondition(fit, [this] { return hasChartData(*plot); });
    addSeparator();
    for (QAction* entry : shared) {
        addEntry(entry);
    }
}

/// The chart as its pictures show it, by a copy where the window relies on colours.
std::shared_ptr<QCustomPlot> ChartExport::toExport() const
{
    if (settings.reading.kind == ChartKind::Bands) {
        return printableBands(*plot);
    }
    return {plot, [](QCustomPlot*) { /* stays */ }};
}

void ChartExport::addPictureEntries()
{
    addEntry("CopyPicture", "Copy picture",
             [this] { QApplication::clipboard()->setPixmap(pictureOf(toExport().get(), 1)); });
    addEntry("SavePdf", "Save as PDF...", [this] {
        saveAs(plot, "Save as PDF...", settings.fileName + ".pdf",
               [this] { return pdfOf(toExport().get()); });
    });
    addEntry("SavePng", "Save as PNG...", [this] {
        saveAs(plot, "Save as PNG...", settings.fileName + ".png",
               [this] { return pngOf(toExport().get()); });
    });
}

void ChartExport::addDataEntries()
{
    QAction* copy = addEntry("CopyData", "Copy data", [this] {
        copyText(tabSeparated(chartData(*plot, settings.reading)));
    });
    QAction* save = addEntry("SaveDataCsv", "Save data as CSV...", [this] {
        saveAs(plot, "Save data as CSV...", settings.fileName + ".csv",
               [this] { return commaSeparated(chartData(*plot, settings.reading)); });
    });
    for (QAction* entry : {copy, save}) {
        setCondition(entry, [this] { return hasChartData(*plot); });
    }
}

bool ChartExport::eventFilter(QObject* watched, QEvent* event)
{
    // The chart would take any button for the start of a drag.
    if (isRightClick(event)) {
        return true;
    }
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QString text = chartTextAt(*plot, settings.reading, help->pos(), settings.note);
        if (!text.isEmpty()) {
            const QStringList remarks = settings.remarks ? settings.remarks() : QStringList();
            QToolTip::showText(help->globalPos(), (QStringList(text) + remarks).join('\n'), plot);
            return true;
        }
        QToolTip::hideText();
    }
    return ExportMenu::eventFilter(watched, event);
}
