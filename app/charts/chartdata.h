// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_CHARTS_CHARTDATA_H
#define VELMORA_APP_CHARTS_CHARTDATA_H

#include "io/csvexport.h"

#include <QPointF>

#include <functional>

class QCustomPlot;

enum class ChartKind {
    Curve,     ///< values over doses
    Histogram, ///< graph 0 is aplot's histogram
    Bands      ///< counts over levels: graph 0 nominal, 1 over, 2 over or equal, 3 all
};

/// How the graphs of a chart are to be read.
struct ChartReading
{
    ChartKind kind;
    QString keyName;   ///< of the keys; the label of the axis if empty
    QString valueUnit; ///< behind values that are shown, with a blank in front
};

/// An additional text for the point at a key; empty for none. It follows the point's own text
/// directly, so it begins with a comma or a new line.
using ChartNote = std::function<QString(double key)>;

/// Whether the chart shows anything.
bool hasChartData(const QCustomPlot& plot);

/// The numbers behind the chart below their headings, with 15 digits: one column of keys and
/// one per graph, blank where a graph has no value at a key. The key of a histogram's bin is
/// its lower edge.
TextRows chartData(const QCustomPlot& plot, const ChartReading& reading);

/// What the chart shows nearest to a place in it, in pixels: the point of a curve, the bin
/// of a histogram or the counts of a level. Empty outside of the axes and without data. The
/// note, which may be missing, is for points and levels, not for bins.
QString chartTextAt(const QCustomPlot& plot, const ChartReading& reading, const QPointF& place,
                    const ChartNote& note = {});

/// Sets both axes to what the graphs span; bands stand on 0, with room for 1 where nothing was
/// counted.
void fitChart(QCustomPlot* plot, ChartKind kind);

#endif
