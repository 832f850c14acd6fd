// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_CHART_H
#define VELMORA_REPORT_CHART_H

#include <QPair>
#include <QString>
#include <QVector>

// Charts of a report as plain data.

enum class ChartRole {
    Line,   ///< a thin line with symbols
    Main,   ///< the thick line that the chart is about
    Points, ///< symbols alone
    Guide   ///< a dotted line across the chart, named at its end and not in the legend
};

/// Values over keys, with error bars in both directions if there are errors.
struct ChartCurve
{
    QString name;
    QVector<double> keys;
    QVector<double> values;
    QVector<double> errors = {};
    ChartRole role = ChartRole::Line;
};

/// The area between two curves.
struct ChartBand
{
    QString name;
    QVector<double> keys;
    QVector<double> lower;
    QVector<double> upper;
};

/// Bars stacked on those before them.
struct ChartBars
{
    QString name;
    QVector<double> keys;
    QVector<double> values;
};

/// A circle whose area is a count, with the count next to it.
struct ChartSpot
{
    double key;
    double value;
    int count;
};

using ChartTick = QPair<double, QString>;

struct ReportChart
{
    QString caption;
    QString description; ///< what the chart shows, for readers who cannot see it
    QString keyLabel;
    QString valueLabel;
    QVector<ChartBand> bands = {};
    QVector<ChartBars> bars = {};
    QVector<ChartCurve> curves = {};
    QVector<ChartSpot> spots = {};
    QVector<ChartTick> valueTicks = {}; ///< shown instead of numbers on the axis of values
    QVector<double> valueRange = {};    ///< lower and upper; empty for the range of the values
};

#endif
