// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/chartpainter.h"

#include "analysis/checkup/wording.h"
#include "report/curvegraph.h"

#include <QBuffer>
#include <QMap>
#include <qcustomplot.h>

#include <cmath>
#include <iterator>

namespace {

constexpr int letterPixels = 12;
constexpr int legendColumns = 3;
constexpr int roomForGuideNames = 52;
constexpr int mostSpotTexts = 200;
constexpr int mostSymbols = 60;        ///< on a line
constexpr double largestShown = 1e249; ///< far enough from what QCPRange can hold

// Colours that most people can tell apart (Okabe & Ito 2008), dark enough for white paper.
const QColor lineColors[] = {QColor(0, 114, 178),  QColor(213, 94, 0),  QColor(0, 140, 102),
                             QColor(175, 85, 140), QColor(150, 110, 0), QColor(60, 60, 60)};
const QVector<qreal> dashPatterns[] = {{}, {7, 3}, {2, 3}, {7, 3, 2, 3}, {12, 4}};
const QCPScatterStyle::ScatterShape symbols[] = {
    QCPScatterStyle::ssSquare,     QCPScatterStyle::ssTriangle,
    QCPScatterStyle::ssDiamond,    QCPScatterStyle::ssPlus,
    QCPScatterStyle::ssCross,      QCPScatterStyle::ssTriangleInverted,
    QCPScatterStyle::ssCircle,     QCPScatterStyle::ssStar,
    QCPScatterStyle::ssPlusCircle, QCPScatterStyle::ssCrossSquare,
    QCPScatterStyle::ssPlusSquare};
const QColor bandColors[] = {QColor(228, 228, 228), QColor(190, 190, 190)};
const Qt::BrushStyle hatchings[] = {Qt::BDiagPattern, Qt::SolidPattern, Qt::DiagCrossPattern,
                                    Qt::HorPattern, Qt::FDiagPattern};

template <typename T, int count>
const T& cyclic(const T (&list)[count], int index)
{
    return list[index % count];
}

QFont chartFont()
{
    QFont font("DejaVu Sans");
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(letterPixels);
    return font;
}

/// The range that an axis shows.
class Span
{
public:
    void add(double value)
    {
        if (std::abs(value) <= largestShown) { // false for NaN
            lower = isEmpty ? value : qMin(lower, value);
            upper = isEmpty ? value : qMax(upper, value);
            isEmpty = false;
        }
    }
    void add(const QVector<double>& values)
    {
        for (const double value : values) {
            add(value);
        }
    }
    /// With a margin around the values, and around one alone.
    void applyTo(QCPAxis* axis) const
    {
        const double magnitude = qMax(std::abs(lower), std::abs(upper));
        const double width = upper - lower;
        const double margin =
            width > 1e-12 * magnitude ? 0.05 * width : (magnitude > 0 ? 0.05 * magnitude : 0.5);
        axis->setRange(lower - margin, upper + margin);
    }

private:
    double lower = 0.0;
    double upper = 0.0;
    bool isEmpty = true;
};

/// A plot in the making.
class Plot
{
public:
    explicit Plot(const ReportChart& content)
        : chart(content)
    {
        setUpAxes();
        plot.legend->setFillOrder(QCPLayoutGrid::foColumnsFirst);
        plot.legend->setWrap(legendColumns);
        for (const ChartBand& band : chart.bands) {
            add(band);
        }
        for (const ChartBars& bars : chart.bars) {
            add(bars);
        }
        for (const ChartCurve& curve : chart.curves) {
            add(curve);
        }
        addSpots();
        keySpan.applyTo(plot.xAxis);
        valueSpan.applyTo(plot.yAxis);
        if (chart.valueRange.size() == 2) {
            plot.yAxis->setRange(chart.valueRange.at(0), chart.valueRange.at(1));
        }
        if (plot.legend->itemCount() > 0) {
            showLegend();
        }
    }

    QCustomPlot plot;

private:
    void setUpAxes()
    {
        plot.setFont(chartFont());
        plot.setBackground(Qt::white);
        plot.xAxis->setLabel(chart.keyLabel);
        plot.yAxis->setLabel(chart.valueLabel);
        plot.axisRect()->setupFullAxesBox();
        for (QCPAxis* frame : {plot.xAxis2, plot.yAxis2}) {
            frame->setTicks(false); // their range has nothing to do with the chart
        }
        plot.axisRect()->setMinimumMargins(QMargins(0, letterPixels, roomForGuideNames, 0));
        for (QCPAxis* axis : plot.axisRect()->axes()) {
            axis->setTickLabelFont(chartFont());
            axis->setLabelFont(chartFont());
            axis->setNumberPrecision(6);
            axis->grid()->setPen(QPen(QColor(225, 225, 225), 0.6));
            axis->grid()->setZeroLinePen(QPen(QColor(225, 225, 225), 0.6));
        }
        if (!chart.valueTicks.isEmpty()) {
            const QSharedPointer<QCPAxisTickerText> ticker(new QCPAxisTickerText);
            for (const ChartTick& tick : chart.valueTicks) {
                ticker->addTick(tick.first, tick.second);
            }
            plot.yAxis->setTicker(ticker);
        }
    }

    /// Puts the legend below the axes, where many long names do not take their room.
    void showLegend()
    {
        plot.legend->setVisible(true);
        plot.legend->setFont(chartFont());
        plot.legend->setBorderPen(Qt::NoPen);
        plot.axisRect()->insetLayout()->take(plot.legend);
        plot.plotLayout()->addElement(1, 0, plot.legend);
        plot.plotLayout()->setRowStretchFactor(1, 0.001);
    }

    void span(const QVector<double>& keys, const QVector<double>& values)
    {
        keySpan.add(keys);
        valueSpan.add(values);
    }

    void add(const ChartBand& band)
    {
        const QPen edge(QColor(120, 120, 120), 0.6);
        QCPGraph* lower = plot.addGraph();
        lower->setData(band.keys, band.lower, true);
        lower->setPen(edge);
        lower->removeFromLegend();
        QCPGraph* upper = plot.addGraph();
        upper->setData(band.keys, band.upper, true);
        upper->setPen(edge);
        upper->setBrush(cyclic(bandColors, bandCount++));
        upper->setChannelFillGraph(lower);
        upper->setName(band.name);
        span(band.keys, band.lower);
        valueSpan.add(band.upper);
    }

    void add(const ChartBars& bars)
    {
        auto* drawn = new QCPBars(plot.xAxis, plot.yAxis); // owned by the plot
        drawn->setData(bars.keys, bars.values, true);
        drawn->setName(bars.name);
        drawn->setWidth(barWidth(bars.keys));
        drawn->setPen(QPen(Qt::black, 1));
        const QColor color = hatchings[barCount % int(std::size(hatchings))] == Qt::SolidPattern
                                 ? QColor(150, 150, 150)
                                 : QColor(60, 60, 60);
        drawn->setBrush(QBrush(color, cyclic(hatchings, barCount++)));
        if (lastBars != nullptr) {
            drawn->moveAbove(lastBars);
        }
        lastBars = drawn;
        const double half = drawn->width() / 2;
        for (int bar = 0; bar < bars.keys.size(); ++bar) {
            keySpan.add(bars.keys.at(bar) - half);
            keySpan.add(bars.keys.at(bar) + half);
            stacked.resize(qMax(stacked.size(), bar + 1));
            stacked[bar] += bars.values.value(bar);
        }
        valueSpan.add(0);
        valueSpan.add(stacked);
    }

    static double barWidth(const QVector<double>& keys)
    {
        double least = 0.0;
        for (int bar = 1; bar < keys.size(); ++bar) {
            const double distance = keys.at(bar) - keys.at(bar - 1);
            least = least > 0 ? qMin(least, distance) : distance;
        }
        return least > 0 ? 0.7 * least : 1.0;
    }

    void add(const ChartCurve& curve)
    {
        auto* graph = new CurveGraph(&plot); // owned by the plot
        graph->setData(curve.keys, curve.values, true);
        graph->setName(shortName(curve.name));
        style(graph, curve.role);
        const bool isDense = curve.keys.size() > mostSymbols;
        if (isDense && curve.role != ChartRole::Points) {
            graph->setScatterStyle(QCPScatterStyle::ssNone);
        }
        span(curve.keys, curve.values);
        if (curve.role == ChartRole::Guide) {
            graph->removeFromLegend();
            nameGuide(curve);
        }
        if (!curve.errors.isEmpty()) {
            auto* errors = new QCPErrorBars(plot.xAxis, plot.yAxis); // owned by the plot
            errors->setDataPlottable(graph);
            errors->setData(curve.errors);
            errors->setPen(QPen(Qt::black, isDense ? 0.4 : 1));
            errors->setWhiskerWidth(isDense ? 0 : 7);
            errors->removeFromLegend();
            for (int point = 0; point < curve.errors.size(); ++point) {
                valueSpan.add(curve.values.value(point) - curve.errors.at(point));
                valueSpan.add(curve.values.value(point) + curve.errors.at(point));
            }
        }
    }

    void style(QCPGraph* graph, ChartRole role)
    {
        if (role == ChartRole::Guide) {
            QPen pen(QColor(60, 60, 60), 0.8);
            pen.setDashPattern({1, 4});
            graph->setPen(pen);
        } else if (role == ChartRole::Main) {
            graph->setPen(QPen(Qt::black, 2.5));
            graph->setScatterStyle({QCPScatterStyle::ssDisc, QPen(Qt::black, 1), Qt::black, 6});
        } else if (role == ChartRole::Points) {
            graph->setLineStyle(QCPGraph::lsNone);
            graph->setScatterStyle(
                {QCPScatterStyle::ssDiamond, QPen(Qt::black, 1.5), Qt::white, 11});
        } else {
            const QColor color = cyclic(lineColors, lineCount);
            QPen pen(color, 1.4);
            const QVector<qreal>& dashes = cyclic(dashPatterns, lineCount);
            if (!dashes.isEmpty()) {
                pen.setDashPattern(dashes);
            }
            graph->setPen(pen);
            graph->setScatterStyle({cyclic(symbols, lineCount++), QPen(color, 1.2), Qt::white, 7});
        }
    }

    void nameGuide(const ChartCurve& guide)
    {
        auto* name = new QCPItemText(&plot); // owned by the plot
        name->setClipToAxisRect(false);
        name->setFont(chartFont());
        name->setText(guide.name);
        name->setPositionAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        name->position->setTypeX(QCPItemPosition::ptAxisRectRatio);
        name->position->setTypeY(QCPItemPosition::ptPlotCoords);
        name->position->setCoords(1.01, guide.values.value(0));
    }

    /// One graph for all spots of a size.
    void addSpots()
    {
        QMap<int, QPair<QVector<double>, QVector<double>>> bySize;
        int largest = 1;
        for (const ChartSpot& spot : chart.spots) {
            largest = qMax(largest, spot.count);
        }
        for (const ChartSpot& spot : chart.spots) {
            auto& places = bySize[qRound(6 + 22 * std::sqrt(double(spot.count) / largest))];
            places.first.append(spot.key);
            places.second.append(spot.value);
            keySpan.add(spot.key);
            valueSpan.add(spot.value);
        }
        for (auto places = bySize.begin(); places != bySize.end(); ++places) {
            QCPGraph* graph = plot.addGraph();
            graph->setLineStyle(QCPGraph::lsNone);
            graph->setData(places->first, places->second);
            graph->setScatterStyle({QCPScatterStyle::ssCircle, QPen(Qt::black, 1),
                                    QColor(205, 205, 205), double(places.key())});
            graph->removeFromLegend();
        }
        for (int spot = 0; spot < chart.spots.size() && chart.spots.size() <= mostSpotTexts;
             ++spot) {
            auto* count = new QCPItemText(&plot); // owned by the plot
            count->setFont(chartFont());
            count->setText(QString::number(chart.spots.at(spot).count));
            count->position->setCoords(chart.spots.at(spot).key, chart.spots.at(spot).value);
        }
    }

    const ReportChart& chart;
    Span keySpan;
    Span valueSpan;
    int bandCount = 0;
    int barCount = 0;
    int lineCount = 0;
    QCPBars* lastBars = nullptr;
    QVector<double> stacked; ///< height of the bars so far
};

} // namespace

void drawChart(const ReportChart& chart, QCPPainter* painter)
{
    Plot made(chart);
    made.plot.toPainter(painter, chartWidth, chartHeight);
}

QByteArray chartPng(const ReportChart& chart, int scale)
{
    Plot made(chart);
    const QImage image = made.plot.toPixmap(chartWidth, chartHeight, scale).toImage();
    QBuffer buffer;
    if (image.isNull() || !image.save(&buffer, "PNG")) {
        qBadAlloc();
    }
    return buffer.data();
}
