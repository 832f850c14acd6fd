// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/charts/histogramgraph.h"

#include <algorithm>

HistogramGraph::HistogramGraph(QCustomPlot* plot, const QVector<HistogramBin>& binsDrawn)
    : QCPGraph(plot->xAxis, plot->yAxis)
    , keptBins(binsDrawn)
{
    setName("Graph " + QString::number(plot->graphCount()));
    // Makes the left side of a bin a nearly vertical step.
    constexpr double stepWidth = 1e-8;
    QVector<double> keys;
    QVector<double> values;
    for (const HistogramBin& bin : keptBins) {
        keys << bin.lower + stepWidth << bin.upper;
        values << bin.count << bin.count;
    }
    // The graph's own sorting may swap the equal keys that large edges give.
    setData(keys, values, std::is_sorted(keys.constBegin(), keys.constEnd()));
}
