// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_CHARTPAINTER_H
#define VELMORA_REPORT_CHARTPAINTER_H

#include "report/chart.h"

#include <QRect>

class QByteArray;
class QCPPainter;

/// The size of a chart in pixels of a screen, 96 per inch.
constexpr int chartWidth = 640;
constexpr int chartHeight = 400;

// Charts are drawn on white, each with a legend below it. They can be read without colour:
// curves differ by lines and symbols, bars by hatching, bands by lightness.

/// Draws a chart of that size at the painter's origin, as lines and letters if the painter's
/// device takes these.
void drawChart(const ReportChart& chart, QCPPainter* painter);

/// The chart as a PNG file, scaled by a whole number. Throws std::bad_alloc if there is not
/// enough memory.
QByteArray chartPng(const ReportChart& chart, int scale);

#endif
