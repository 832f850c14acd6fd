// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_CHARTS_HISTOGRAMVIEW_H
#define VELMORA_APP_CHARTS_HISTOGRAMVIEW_H

#include <QBrush>
#include <QObject>
#include <QPen>
#include <QVector>

#include <functional>
#include <optional>

class QCustomPlot;

/// The values that a histogram shows; numbers that do not distinguish them are 0.
struct HistogramSource
{
    int model = 0;
    int dataSet = 0;
    int column = 0;
    bool operator==(const HistogramSource& other) const;
};

/// A chart of a histogram that the mouse drags and zooms, and the rule by which it chooses its
/// visible range. Owned by the chart.
///
/// The bins divide the visible range, so every change of that range draws the histogram again; a
/// double click shows all values again. The owner of the values draws: it chooses the range for
/// them with chooseRange() and then calls draw().
class HistogramView : public QObject
{
public:
    /// The appearance of a histogram.
    struct Look
    {
        QPen outline;
        QBrush area;
    };

    /// redraw draws the current values, if there are any.
    HistogramView(QCustomPlot* chart, const Look& histogramLook,
                  const std::function<void()>& redraw);

    /// Dragging moves the range horizontally only. Redraws.
    void dragHorizontally();

    /// The wheel zooms both ways. Redraws.
    void zoomBothWays();

    /// Forgets what was shown, so that the range is fitted to the next values.
    void forget();

    /// Fits the range to the current values and draws them.
    void showAll();

    /// Newly computed values count as newly chosen: those chosen next are to be seen.
    void expectNewValues();

    /// Chooses the visible range for values that are about to be drawn with so many bins: that
    /// of fitValues the first time, and when none of the values of a new source can be seen.
    void chooseRange(const HistogramSource& source, const QVector<double>& values,
                     const QVector<double>& fitValues, int binCount);

    /// Replaces what the chart shows by the graph that addHistogram adds to it.
    void draw(const std::function<void()>& addHistogram, const QString& valueName);

private:
    QCustomPlot* plot;
    Look look;
    std::function<void()> drawAnew;
    std::optional<HistogramSource> shown; ///< none until the first drawing, and once forgotten
    bool isRenewed = false;               ///< whether the source has other values than those shown
};

#endif
