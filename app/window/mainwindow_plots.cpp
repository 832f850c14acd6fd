// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Mouse interaction and looks of the charts.

#include "app/charts/histogramview.h"
#include "app/window/mainwindow.h"
#include "ui_mainwindow.h"

/// Makes the two histograms draggable and zoomable.
void MainWindow::connectPlots()
{
    QCustomPlot* results = ui->_0_cp_rawResHistoGram;
    QCustomPlot* doses = ui->_4_cp_doseChoiceDistribution;
    const HistogramView::Look look{curvePen(), QBrush(plotColorLight)};
    resultsHistogram = new HistogramView(results, look, [this] { refresh_0_cp_rawResHistoGram(); });
    doseHistogram = new HistogramView(doses, look, [this] { refresh_4_tw_doseChoice(); });
    connect(results, &QCustomPlot::mousePress, this, &MainWindow::mousePressDE);
    connect(results, &QCustomPlot::mouseWheel, this, &MainWindow::mouseWheelDE);
    connect(doses, &QCustomPlot::mousePress, this, &MainWindow::mousePress_4_cp_doseDist);
    connect(doses, &QCustomPlot::mouseWheel, this, &MainWindow::mouseWheel_4_cp_doseDist);
}

// For the two charts press and wheel are served crosswise; this is intended.

void MainWindow::mousePressDE()
{
    resultsHistogram->dragHorizontally();
}

void MainWindow::mouseWheelDE()
{
    resultsHistogram->zoomBothWays();
}

void MainWindow::mousePress_4_cp_doseDist()
{
    doseHistogram->zoomBothWays();
}

void MainWindow::mouseWheel_4_cp_doseDist()
{
    doseHistogram->dragHorizontally();
}

QPen MainWindow::curvePen() const
{
    QPen pen(plotColor);
    pen.setWidth(2);
    return pen;
}
