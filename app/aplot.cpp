// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/aplot.h"

#include "app/charts/histogramgraph.h"
#include "io/csv.h"
#include "model/percentile.h"

#include <QDebug>
#include <QTableWidget>
#include <qcustomplot.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

// Far enough from QCPRange's limits that a margin does not cross them.
constexpr double largestShown = 1e249;
constexpr double smallestWidth = 1e-270;

struct Bounds
{
    double lower;
    double upper;
};

std::optional<Bounds> boundsShown(const QVector<double>& values)
{
    std::optional<Bounds> bounds;
    for (const double value : values) {
        if (std::isnan(value) || std::abs(value) > largestShown) {
            continue;
        }
        bounds = bounds ? Bounds{std::min(bounds->lower, value), std::max(bounds->upper, value)}
                        : Bounds{value, value};
    }
    return bounds;
}

/// The bounds themselves or, without a width that a chart can resolve, wider ones.
Bounds withWidth(Bounds bounds)
{
    const double magnitude = std::max(std::abs(bounds.lower), std::abs(bounds.upper));
    if (bounds.upper - bounds.lower >= std::max(smallestWidth, 1e-12 * magnitude)) {
        return bounds;
    }
    const double margin = magnitude < smallestWidth * 100 ? 0.5 : 0.05 * magnitude;
    return {bounds.lower - margin, bounds.upper + margin};
}

/// Values from one edge to the next; edges and data ascending, NaN last.
QVector<int> countPerBin(const QVector<double>& data, const QVector<double>& edges)
{
    QVector<int> counts;
    counts.reserve(edges.size() + 1);
    int position = 0;
    for (const double edge : edges) {
        const int passed = position;
        // False for NaN on either side, which leaves NaN above the last edge.
        while (position < data.size() && data.at(position) < edge) {
            ++position;
        }
        counts.append(position - passed);
    }
    counts.append(data.size() - position);
    return counts;
}

} // namespace

aplot::aplot() = default;

void histogram(QVector<double> data, QVector<double> edges, QCustomPlot* plot)
{
    std::sort(data.begin(), data.end(), ascendingNanLast);
    std::sort(edges.begin(), edges.end(), ascendingNanLast);
    const QVector<int> counts = countPerBin(data, edges);

    QVector<HistogramBin> bins;
    int highest = 0;
    for (int bin = 0; bin + 1 < edges.size() && !std::isnan(edges.at(bin + 1)); ++bin) {
        const int count = counts.at(bin + 1);
        bins.append({edges.at(bin), edges.at(bin + 1), count});
        highest = std::max(highest, count);
    }
    new HistogramGraph(plot, bins); // owned by the plot
    setAxisRange(plot->yAxis, 0.0, std::max(1, highest));
    plot->replot();
}

void histogram(QTableWidget* table, QCustomPlot* plot, int nBins)
{
    // Not visibleBinEdges: this division first, whose rounding differs, belongs to tables.
    const QCPRange range = plot->xAxis->range();
    QVector<double> edges;
    for (int edge = 0; edge < nBins; ++edge) {
        edges.append(range.lower + edge * (range.size() / nBins));
    }
    QVector<double> values;
    for (int row = 0; row < table->rowCount(); ++row) {
        bool ok = false;
        const double value = csvCellText(table, row, table->currentColumn()).toDouble(&ok);
        if (ok && !std::isnan(value)) {
            values.append(value);
        }
    }
    // Not at once, as the name of the list depends on the version of Qt.
    QDebug log = qDebug().nospace();
    log << "QVector(";
    for (int i = 0; i < values.size(); ++i) {
        log << (i > 0 ? ", " : "") << values.at(i);
    }
    log << ')';
    histogram(values, edges, plot);
}

QPen thickPen(const QColor& color)
{
    QPen pen(color);
    pen.setWidth(2);
    return pen;
}

QVector<double> visibleBinEdges(const QCustomPlot* plot, int nBins)
{
    const QCPRange range = plot->xAxis->range();
    QVector<double> edges;
    for (int edge = 0; edge < nBins; ++edge) {
        edges.append(range.lower + edge * range.size() / nBins);
    }
    return edges;
}

void setAxisRange(QCPAxis* axis, double lower, double upper)
{
    if (!std::isfinite(lower) || !std::isfinite(upper)) {
        return;
    }
    const Bounds shown = withWidth({std::min(lower, upper), std::max(lower, upper)});
    axis->setRange(shown.lower, shown.upper);
}

void setAxisRange(QCPAxis* axis, const QVector<double>& values)
{
    if (const std::optional<Bounds> bounds = boundsShown(values)) {
        setAxisRange(axis, bounds->lower, bounds->upper);
    }
}

bool anyValueVisible(const QCPAxis* axis, const QVector<double>& values)
{
    const QCPRange range = axis->range();
    return std::any_of(values.constBegin(), values.constEnd(),
                       [&range](double value) { return range.contains(value); });
}

bool fitHistogramRange(QCPAxis* axis, const QVector<double>& values, int nBins)
{
    const std::optional<Bounds> bounds = boundsShown(values);
    if (!bounds) {
        return false;
    }
    const Bounds filled = withWidth(*bounds);
    const double width = filled.upper - filled.lower;
    const double left = 0.02 * width;
    double right = left;
    if (nBins > 1) {
        // One bin of the final range is width + left over nBins - 1. The hundredth on top
        // keeps the largest value below the last edge in spite of rounding.
        right = std::max(left, (width + left) / (nBins - 1) + 0.01 * width);
    }
    axis->setRange(filled.lower - left, filled.upper + right);
    return true;
}
