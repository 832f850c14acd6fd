// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/curvegraph.h"

CurveGraph::CurveGraph(QCustomPlot* plot)
    : QCPGraph(plot->xAxis, plot->yAxis)
{
    const QString layerAboveAxes = "curves";
    if (plot->layer(layerAboveAxes) == nullptr) {
        plot->addLayer(layerAboveAxes, plot->layer("axes"));
    }
    setLayer(layerAboveAxes);
    setName("Graph " + QString::number(plot->graphCount()));
}

/// The layer cuts a row of pixels higher than this.
QRect CurveGraph::clipRect() const
{
    const int halfWidth = qCeil(pen().widthF() / 2);
    return QCPGraph::clipRect().adjusted(-halfWidth, 0, halfWidth, halfWidth + 1);
}
