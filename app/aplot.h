// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_APLOT_H
#define VELMORA_APP_APLOT_H

#include <QPen>
#include <QVector>

class QCPAxis;
class QCustomPlot;
class QTableWidget;

/// Names the unit of the chart helpers; holds no state.
class aplot
{
public:
    aplot();
};

/// Adds a frequency histogram to the plot, as a stepped line.
/// Bin k holds the values in [edges[k], edges[k+1]) of the sorted edges; values outside the
/// edges, and NaN, are not drawn. The vertical range becomes 0 to the highest count drawn,
/// or to 1 if that is 0. The horizontal range and the pen stay.
void histogram(QVector<double> data, QVector<double> edges, QCustomPlot* plot);

/// The histogram of the numbers in the table's current column.
/// Edge i is L + i * (W / nBins), the plot's visible range starting at L with width W, so
/// nBins - 1 bins are drawn and the last part of the range stays empty. Logs the numbers.
void histogram(QTableWidget* table, QCustomPlot* plot, int nBins);

/// The pen of curves and outlines of histograms.
QPen thickPen(const QColor& color);

/// nBins edges that divide the plot's visible horizontal range from its left border on:
/// edge i is L + i * W / nBins. Rounding sets them apart from the edges of a table's
/// histogram. Empty for nBins below 1.
QVector<double> visibleBinEdges(const QCustomPlot* plot, int nBins);

/// Sets the range of an axis to one that can be shown: a range without width (below 1e-12 of its
/// magnitude) is widened around its value by 5 % of the magnitude, around 0 by 0.5. One that is not
/// finite or beyond QCPRange's limits leaves the axis as it is.
void setAxisRange(QCPAxis* axis, double lower, double upper);

/// The same for the smallest and largest value. Values that are not finite or above 1e249
/// in magnitude, which a chart cannot show, are ignored; without any other the axis stays.
void setAxisRange(QCPAxis* axis, const QVector<double>& values);

/// Whether any finite value lies in the axis' visible range.
bool anyValueVisible(const QCPAxis* axis, const QVector<double>& values);

/// Gives the axis the range of the values that setAxisRange would take, with a margin of
/// 2 % on the left and of 2 % or a little more than a bin on the right: with nBins edges
/// over the visible range no value falls into the last bin, which is not drawn. Values that
/// are all equal get a small width around them. False, and no change, without such a value.
bool fitHistogramRange(QCPAxis* axis, const QVector<double>& values, int nBins);

#endif
