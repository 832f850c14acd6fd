// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/charts/histogramview.h"

#include "app/aplot.h"

#include <QSignalBlocker>
#include <qcustomplot.h>

bool HistogramSource::operator==(const HistogramSource& other) const
{
    return model == other.model && dataSet == other.dataSet && column == other.column;
}

HistogramView::HistogramView(QCustomPlot* chart, const Look& histogramLook,
                             const std::function<void()>& redraw)
    : QObject(chart)
    , plot(chart)
    , look(histogramLook)
    , drawAnew(redraw)
{
    plot->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom | QCP::iSelectAxes);
    connect(plot->xAxis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this, drawAnew);
    connect(plot, &QCustomPlot::mouseDoubleClick, this, &HistogramView::showAll);
}

void HistogramView::dragHorizontally()
{
    plot->axisRect(0)->setRangeDrag(Qt::Horizontal);
    drawAnew();
}

void HistogramView::zoomBothWays()
{
    plot->axisRect(0)->setRangeZoom(Qt::Horizontal | Qt::Vertical);
    drawAnew();
}

void HistogramView::forget()
{
    shown.reset();
}

void HistogramView::showAll()
{
    forget();
    drawAnew();
}

void HistogramView::expectNewValues()
{
    isRenewed = true;
}

void HistogramView::chooseRange(const HistogramSource& source, const QVector<double>& values,
                                const QVector<double>& fitValues, int binCount)
{
    const bool isNew = isRenewed || !(shown == source);
    bool isShown = true;
    if (!shown || (isNew && !anyValueVisible(plot->xAxis, values))) {
        // The values are drawn next in any case.
        const QSignalBlocker quiet(plot->xAxis);
        isShown = fitHistogramRange(plot->xAxis, fitValues, binCount);
    }
    if (isShown) {
        shown = source;
        isRenewed = false;
    }
}

void HistogramView::draw(const std::function<void()>& addHistogram, const QString& valueName)
{
    plot->clearGraphs();
    addHistogram();
    QCPGraph* graph = plot->graph(0);
    graph->setPen(look.outline);
    graph->setBrush(look.area);
    graph->setChannelFillGraph(nullptr);
    plot->xAxis->setLabel(valueName);
    plot->yAxis->setLabel("Frequency");
    plot->replot();
}
