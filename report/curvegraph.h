// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_CURVEGRAPH_H
#define VELMORA_REPORT_CURVEGRAPH_H

#include <qcustomplot.h>

/// A curve that stays visible where it lies on an axis: it is drawn above the axes and is not
/// cut at their lines. Owned by the plot.
class CurveGraph : public QCPGraph
{
    Q_OBJECT

public:
    /// Adds itself to the plot as addGraph() does.
    explicit CurveGraph(QCustomPlot* plot);

protected:
    QRect clipRect() const override;
};

#endif
