// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/charts/bandgraph.h"

#include "report/curvegraph.h"

namespace {

/// By graph, with the names and hatchings of the report's bars.
struct GraphLook
{
    const char* name;
    Qt::BrushStyle hatching;
};
constexpr GraphLook looks[] = {{"Nominal", Qt::NoBrush},
                               {"Above theoretical MED", Qt::BDiagPattern},
                               {"Equal", Qt::NoBrush},
                               {"Below or none", Qt::DiagCrossPattern}};
constexpr int lookCount = 4;
const QColor ink(40, 40, 40);

void copyAxis(const QCPAxis* from, QCPAxis* to)
{
    to->setRange(from->range());
    to->setLabel(from->label());
    to->setLabelFont(from->labelFont());
    to->setTickLabelFont(from->tickLabelFont());
}

} // namespace

BandGraph::BandGraph(QCustomPlot* plot, Qt::BrushStyle hatchingOfArea)
    : QCPGraph(plot->xAxis, plot->yAxis)
    , hatching(ink, hatchingOfArea)
{
}

void BandGraph::drawFill(QCPPainter* painter, QVector<QPointF>* lines) const
{
    QCPGraph::drawFill(painter, lines);
    if (hatching.style() != Qt::NoBrush) {
        painter->setBrush(hatching);
        QCPGraph::drawFill(painter, lines);
    }
}

void BandGraph::drawLegendIcon(QCPPainter* painter, const QRectF& rect) const
{
    const QRectF box = rect.adjusted(0, 0, -1, -2); // with its outline within the rectangle
    painter->fillRect(box, brush());
    painter->fillRect(box, hatching);
    painter->setPen(ink);
    painter->drawRect(box);
}

void showBandLegend(QCustomPlot* plot)
{
    QCPLegend* legend = plot->legend;
    if (!legend->visible()) {
        plot->axisRect()->insetLayout()->take(legend);
        plot->plotLayout()->addElement(1, 0, legend);
        plot->plotLayout()->setRowStretchFactor(1, 0.001);
        legend->setVisible(true);
        legend->setFillOrder(QCPLegend::foColumnsFirst);
        legend->setWrap(lookCount);
        legend->setFont(plot->xAxis->tickLabelFont());
        legend->setBorderPen(Qt::NoPen);
        legend->setIconSize(24, 12);
        legend->setMargins(QMargins(12, 0, 12, 4));
    }
    for (int graph = 0; graph < qMin(plot->graphCount(), lookCount); ++graph) {
        plot->graph(graph)->setName(looks[graph].name);
    }
}

std::unique_ptr<QCustomPlot> printableBands(const QCustomPlot& plot)
{
    auto copy = std::make_unique<QCustomPlot>();
    copy->resize(plot.size());
    copy->setLocale(plot.locale());
    copyAxis(plot.xAxis, copy->xAxis);
    copyAxis(plot.yAxis, copy->yAxis);
    for (int graph = 0; graph < qMin(plot.graphCount(), lookCount); ++graph) {
        QCPGraph* copied =
            graph == 0 ? static_cast<QCPGraph*>(new CurveGraph(copy.get()))
                       : new BandGraph(copy.get(), looks[graph].hatching); // owned by the copy
        copied->setData(plot.graph(graph)->data());
        copied->setBrush(plot.graph(graph)->brush());
        copied->setPen(graph == 0 ? plot.graph(graph)->pen() : ink);
        copied->setChannelFillGraph(graph > 1 ? copy->graph(graph - 1) : nullptr);
    }
    if (copy->graphCount() > 0) {
        showBandLegend(copy.get());
    }
    return copy;
}
