// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/charts/chartdata.h"

#include "app/aplot.h"
#include "app/charts/histogramgraph.h"
#include "model/percentile.h"

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

namespace {

constexpr int bandCount = 3;
const char* const bandNames[] = {"Nominal", "Over", "Over or equal", "All"};

/// Empty unless the plot shows a histogram.
QVector<HistogramBin> histogramBins(const QCustomPlot& plot)
{
    const auto* graph =
        plot.graphCount() == 0 ? nullptr : qobject_cast<const HistogramGraph*>(plot.graph(0));
    return graph == nullptr ? QVector<HistogramBin>() : graph->bins();
}

QString exactly(double number)
{
    return QString::number(number, 'g', std::numeric_limits<double>::digits10);
}

QString shown(double number)
{
    return QString::number(number, 'g', 6);
}

QString nameOf(const QCPAxis* axis, const char* fallback)
{
    return axis->label().isEmpty() ? QString(fallback) : axis->label();
}

QString keyName(const QCustomPlot& plot, const ChartReading& reading)
{
    return reading.keyName.isEmpty() ? nameOf(plot.xAxis, "Key") : reading.keyName;
}

QString graphName(const QCustomPlot& plot, ChartKind kind, int graph)
{
    return kind == ChartKind::Bands && graph <= bandCount ? QString(bandNames[graph])
                                                          : nameOf(plot.yAxis, "Value");
}

/// The point drawn nearest to the place, over all graphs; for bands the level counts alone.
/// nullptr without any.
const QCPGraphData* nearestPoint(const QCustomPlot& plot, ChartKind kind, const QPointF& place)
{
    const QCPGraphData* nearest = nullptr;
    double nearestDistance = std::numeric_limits<double>::infinity();
    for (int graph = 0; graph < plot.graphCount(); ++graph) {
        for (const QCPGraphData& point : *plot.graph(graph)->data()) {
            const double x = plot.xAxis->coordToPixel(point.key) - place.x();
            const double y = plot.yAxis->coordToPixel(point.value) - place.y();
            // False for NaN, which is drawn nowhere.
            const double distance = kind == ChartKind::Bands ? std::abs(x) : std::hypot(x, y);
            if (distance < nearestDistance) {
                nearestDistance = distance;
                nearest = &point;
            }
        }
    }
    return nearest;
}

QString bandText(const QCustomPlot& plot, double level)
{
    QVector<double> counts;
    for (int graph = 0; graph <= bandCount; ++graph) {
        const QCPGraphDataContainer& points = *plot.graph(graph)->data();
        const auto point = points.findBegin(level, false);
        counts.append(point == points.constEnd() ? 0.0 : point->value);
    }
    return QString("Level %1 %\nOver: %2\nEqual: %3\nUnder: %4\nNominal: %5")
        .arg(shown(level), shown(counts.at(1)), shown(counts.at(2) - counts.at(1)),
             shown(counts.at(3) - counts.at(2)), shown(counts.at(0)));
}

QString binText(const QCustomPlot& plot, double key)
{
    for (const HistogramBin& bin : histogramBins(plot)) {
        if (bin.lower <= key && key < bin.upper) {
            return QString("%1: %2 to %3\n%4: %5")
                .arg(nameOf(plot.xAxis, "Value"), shown(bin.lower), shown(bin.upper),
                     nameOf(plot.yAxis, "Frequency"), shown(bin.count));
        }
    }
    return {};
}

} // namespace

bool hasChartData(const QCustomPlot& plot)
{
    for (int graph = 0; graph < plot.graphCount(); ++graph) {
        if (!plot.graph(graph)->data()->isEmpty()) {
            return true;
        }
    }
    return false;
}

TextRows chartData(const QCustomPlot& plot, const ChartReading& reading)
{
    QStringList headings(keyName(plot, reading));
    for (int graph = 0; graph < plot.graphCount(); ++graph) {
        headings.append(graphName(plot, reading.kind, graph));
    }
    TextRows rows{headings};
    if (reading.kind == ChartKind::Histogram) {
        for (const HistogramBin& bin : histogramBins(plot)) {
            rows.append({exactly(bin.lower), exactly(bin.count)});
        }
        return rows;
    }
    std::map<double, QStringList, decltype(&ascendingNanLast)> values(&ascendingNanLast);
    for (int graph = 0; graph < plot.graphCount(); ++graph) {
        for (const QCPGraphData& point : *plot.graph(graph)->data()) {
            QStringList& row = values[point.key];
            while (row.size() < plot.graphCount()) {
                row.append(QString());
            }
            row[graph] = exactly(point.value);
        }
    }
    for (const auto& [key, row] : values) {
        rows.append(QStringList(exactly(key)) + row);
    }
    return rows;
}

QString chartTextAt(const QCustomPlot& plot, const ChartReading& reading, const QPointF& place,
                    const ChartNote& note)
{
    if (!plot.axisRect()->rect().contains(place.toPoint())) {
        return {};
    }
    if (reading.kind == ChartKind::Histogram) {
        return binText(plot, plot.xAxis->pixelToCoord(place.x()));
    }
    const QCPGraphData* point = nearestPoint(plot, reading.kind, place);
    if (point == nullptr) {
        return {};
    }
    const QString noted = note ? note(point->key) : QString();
    if (reading.kind == ChartKind::Bands && plot.graphCount() > bandCount) {
        return bandText(plot, point->key) + noted;
    }
    return QString("%1: %2\n%3: %4%5")
        .arg(keyName(plot, reading), shown(point->key), nameOf(plot.yAxis, "Value"),
             shown(point->value), reading.valueUnit + noted);
}

void fitChart(QCustomPlot* plot, ChartKind kind)
{
    QVector<double> keys;
    QVector<double> values;
    for (int graph = 0; graph < plot->graphCount(); ++graph) {
        for (const QCPGraphData& point : *plot->graph(graph)->data()) {
            keys.append(point.key);
            values.append(point.value);
        }
    }
    if (kind == ChartKind::Bands) {
        values.append(0.0);
        if (std::none_of(values.constBegin(), values.constEnd(), [](double v) { return v > 0; })) {
            values.append(1.0);
        }
    }
    setAxisRange(plot->xAxis, keys);
    setAxisRange(plot->yAxis, values);
    plot->replot();
}
