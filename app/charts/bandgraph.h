// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_CHARTS_BANDGRAPH_H
#define VELMORA_APP_CHARTS_BANDGRAPH_H

#include <qcustomplot.h>

#include <memory>

/// A graph whose filled area may be hatched over its colour. Owned by the plot.
class BandGraph : public QCPGraph
{
    Q_OBJECT

public:
    /// Adds itself to the plot as addGraph() does.
    explicit BandGraph(QCustomPlot* plot, Qt::BrushStyle hatchingOfArea = Qt::NoBrush);

protected:
    void drawFill(QCPPainter* painter, QVector<QPointF>* lines) const override;
    void drawLegendIcon(QCPPainter* painter, const QRectF& rect) const override;

private:
    QBrush hatching;
};

/// Names the four graphs of a chart of bands in a legend below the axes.
void showBandLegend(QCustomPlot* plot);

/// A copy of such a chart, with its size and ranges, that can be read without colours.
std::unique_ptr<QCustomPlot> printableBands(const QCustomPlot& plot);

#endif
