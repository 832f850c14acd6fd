// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_CHARTS_HISTOGRAMGRAPH_H
#define VELMORA_APP_CHARTS_HISTOGRAMGRAPH_H

#include <QVector>
#include <qcustomplot.h>

/// Counts the values in [lower, upper).
struct HistogramBin
{
    double lower;
    double upper;
    int count;
};

/// The graph of a histogram: a stepped line over bins, which it keeps, as its points do not show
/// bins that are narrower than the step. Owned by the plot.
class HistogramGraph : public QCPGraph
{
    Q_OBJECT

public:
    /// Adds itself to the plot as addGraph() does. The bins are ascending, without gaps.
    HistogramGraph(QCustomPlot* plot, const QVector<HistogramBin>& binsDrawn);

    /// What the line shows, ascending.
    const QVector<HistogramBin>& bins() const { return keptBins; }

private:
    QVector<HistogramBin> keptBins;
};

#endif
