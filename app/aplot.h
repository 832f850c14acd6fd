// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_APLOT_H
#define VELMORA_APP_APLOT_H

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
/// Bin k holds the values in [edges[k], edges[k+1]); values outside the edges, and NaN,
/// are not drawn. The vertical range becomes 0 to the highest count drawn. The horizontal
/// range and the pen stay.
void histogram(QVector<double> data, QVector<double> edges, QCustomPlot* plot);

/// The histogram of the numbers in the table's current column.
/// The edges divide the plot's visible range into nBins parts from its left border, so
/// nBins - 1 bins are drawn.
void histogram(QTableWidget* table, QCustomPlot* plot, int nBins);

/// nBins edges that divide the plot's visible horizontal range from its left border on.
QVector<double> visibleBinEdges(const QCustomPlot* plot, int nBins);

/// Sets the range of an axis to what can be shown: a range without width is widened
/// around its value, one that is not finite leaves the axis as it is.
void setAxisRange(QCPAxis* axis, double lower, double upper);

/// The same for the smallest and largest finite value; without any the axis stays.
void setAxisRange(QCPAxis* axis, const QVector<double>& values);

/// Whether any finite value lies in the axis' visible range.
bool anyValueVisible(const QCPAxis* axis, const QVector<double>& values);

/// Gives the axis the values' finite range with a margin, so that with nBins edges over
/// the visible range no value falls into the last bin, which is not drawn. Values that
/// are all equal get a small width around them. False, and no change, without a finite
/// value.
bool fitHistogramRange(QCPAxis* axis, const QVector<double>& values, int nBins);

#endif
