// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_CHARTPAINTER_H
#define VELMORA_REPORT_CHARTPAINTER_H

#include "report/chart.h"

#include <QRect>

class QByteArray;
class QCPPainter;

/// The size of a chart in pixels of a screen, 96 of which are an inch.
constexpr int chartWidth = 640;
constexpr int chartHeight = 400;

// Charts are drawn on white, each with a legend below it. What they show can be told apart
// without colours: curves by lines and symbols, bars by hatching, bands by lightness.

/// Draws a chart into the rectangle of that size at the painter's origin, as lines and letters
/// where the painter's device takes these.
void drawChart(const ReportChart& chart, QCPPainter* painter);

/// The chart as a PNG file, so many times that size. Throws std::bad_alloc where memory does
/// not suffice.
QByteArray chartPng(const ReportChart& chart, int scale);

#endif
