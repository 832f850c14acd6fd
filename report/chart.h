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
    Guide   ///< a dotted line across, named at its end instead of in the legend
};

/// Values over keys, with error bars of both directions where errors are given.
struct ChartCurve
{
    QString name;
    QVector<double> keys;
    QVector<double> values;
    QVector<double> errors = {};
    ChartRole role = ChartRole::Line;
};

/// What lies between two curves.
struct ChartBand
{
    QString name;
    QVector<double> keys;
    QVector<double> lower;
    QVector<double> upper;
};

/// Bars that stand on those before them.
struct ChartBars
{
    QString name;
    QVector<double> keys;
    QVector<double> values;
};

/// Circles whose areas are counts, with the count beside each.
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
    QString description; ///< what there is to see, for those who cannot
    QString keyLabel;
    QString valueLabel;
    QVector<ChartBand> bands = {};
    QVector<ChartBars> bars = {};
    QVector<ChartCurve> curves = {};
    QVector<ChartSpot> spots = {};
    QVector<ChartTick> valueTicks = {}; ///< in place of numbers on the axis of values
    QVector<double> valueRange = {};    ///< lower and upper; empty for that of the values
};

#endif
