// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Mouse interaction and looks of the charts.

#include "app/aplot.h"
#include "app/window/mainwindow.h"
#include "ui_mainwindow.h"

#include <QSignalBlocker>

bool MainWindow::HistogramSource::operator==(const HistogramSource& other) const
{
    return model == other.model && dataSet == other.dataSet && column == other.column;
}

/// Makes the two histograms draggable and zoomable. Their bins divide the visible range, so
/// every change of that range draws them anew; a double click shows all values again.
void MainWindow::connectPlots()
{
    QCustomPlot* results = ui->_0_cp_rawResHistoGram;
    QCustomPlot* doses = ui->_4_cp_doseChoiceDistribution;
    for (QCustomPlot* plot : {results, doses}) {
        plot->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom | QCP::iSelectAxes);
    }
    connect(results, &QCustomPlot::mousePress, this, &MainWindow::mousePressDE);
    connect(results, &QCustomPlot::mouseWheel, this, &MainWindow::mouseWheelDE);
    connect(doses, &QCustomPlot::mousePress, this, &MainWindow::mousePress_4_cp_doseDist);
    connect(doses, &QCustomPlot::mouseWheel, this, &MainWindow::mouseWheel_4_cp_doseDist);

    const auto rangeChanged = qOverload<const QCPRange&>(&QCPAxis::rangeChanged);
    connect(results->xAxis, rangeChanged, this, &MainWindow::refresh_0_cp_rawResHistoGram);
    connect(doses->xAxis, rangeChanged, this, &MainWindow::refresh_4_tw_doseChoice);
    connect(results, &QCustomPlot::mouseDoubleClick, this, [this] {
        rawResultsSource = {};
        refresh_0_cp_rawResHistoGram();
    });
    connect(doses, &QCustomPlot::mouseDoubleClick, this, [this] {
        doseChoiceSource = {};
        refresh_4_tw_doseChoice();
    });
}

// For the two charts press and wheel are served crosswise; this is intended.

void MainWindow::mousePressDE()
{
    ui->_0_cp_rawResHistoGram->axisRect(0)->setRangeDrag(Qt::Horizontal);
    refresh_0_cp_rawResHistoGram();
}

void MainWindow::mouseWheelDE()
{
    ui->_0_cp_rawResHistoGram->axisRect(0)->setRangeZoom(Qt::Horizontal | Qt::Vertical);
    refresh_0_cp_rawResHistoGram();
}

void MainWindow::mousePress_4_cp_doseDist()
{
    ui->_4_cp_doseChoiceDistribution->axisRect(0)->setRangeZoom(Qt::Horizontal | Qt::Vertical);
    refresh_4_tw_doseChoice();
}

void MainWindow::mouseWheel_4_cp_doseDist()
{
    ui->_4_cp_doseChoiceDistribution->axisRect(0)->setRangeDrag(Qt::Horizontal);
    refresh_4_tw_doseChoice();
}

/// Chooses the visible range for the values that a histogram is about to show: that of
/// fitValues the first time, and when none of the values of a new source can be seen.
void MainWindow::showHistogramValues(QCustomPlot* plot, const HistogramSource& source,
                                     HistogramSource& shown, const QVector<double>& values,
                                     const QVector<double>& fitValues, int binCount)
{
    const bool isFirst = shown == HistogramSource();
    const bool isNew = !(shown == source);
    bool isShown = true;
    if (isFirst || (isNew && !anyValueVisible(plot->xAxis, values))) {
        const QSignalBlocker quiet(plot->xAxis);
        isShown = fitHistogramRange(plot->xAxis, fitValues, binCount);
    }
    if (isShown) {
        shown = source;
    }
}

void MainWindow::styleHistogram(QCustomPlot* plot)
{
    QCPGraph* graph = plot->graph(0);
    graph->setPen(curvePen());
    graph->setBrush(QBrush(plotColorLight));
    graph->setChannelFillGraph(nullptr);
}

QPen MainWindow::curvePen() const
{
    QPen pen(plotColor);
    pen.setWidth(2);
    return pen;
}
