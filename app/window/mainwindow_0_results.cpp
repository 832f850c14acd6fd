// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Page "0": the imported bootstrap results.

#include "app/aplot.h"
#include "app/charts/histogramview.h"
#include "app/findings/findingsview.h"
#include "app/tables/columnwidths.h"
#include "app/window/mainwindow.h"
#include "io/csv.h"
#include "ui_mainwindow.h"

#include <QSignalBlocker>

namespace {

/// Bootstrap samples per histogram bin. This is intended: the division drops its rest.
constexpr int samplesPerBin = 5;

} // namespace

void MainWindow::refresh_0_tw_RawResults()
{
    const int model = ui->_0_sb_model->value();
    const int dataSet = qMax(0, ui->_0_sb_data->value());
    if (model < 0 || model >= rawResults.size() || model >= rawResultsHeaders.size()
        || dataSet >= rawResults.at(model).size()) {
        return;
    }
    const QStringList& header = rawResultsHeaders.at(model);
    QTableWidget* table = ui->_0_tw_RawResults;
    // Headings of a wider file shown before would stand over columns without a name.
    for (int column = header.size(); column < table->columnCount(); ++column) {
        delete table->takeHorizontalHeaderItem(column);
    }
    csvDisplay(table, rawResults.at(model).at(dataSet), header);
    fitColumns(table);
    findings->renew(table);
}

void MainWindow::refresh_0_cp_rawResHistoGram()
{
    const int model = ui->_0_sb_model->value();
    const int dataSet = qMax(0, ui->_0_sb_data->value());
    const int column = ui->_0_tw_RawResults->currentColumn();
    if (model < 0 || model >= rawResults.size() || dataSet >= rawResults.at(model).size()) {
        return;
    }
    const Table& samples = rawResults.at(model).at(dataSet);
    if (samples.isEmpty() || column < 0 || column >= samples.first().size()) {
        return;
    }
    QVector<double> values;
    for (const QVector<double>& sample : samples) {
        if (column < sample.size()) {
            values.append(sample.at(column));
        }
    }
    QCustomPlot* plot = ui->_0_cp_rawResHistoGram;
    const int binCount = samples.size() / samplesPerBin;
    resultsHistogram->chooseRange({model, dataSet, column}, values, values, binCount);
    resultsHistogram->draw([&] { histogram(values, visibleBinEdges(plot, binCount), plot); },
                           rawResultsHeaders.value(model).value(column).left(longestName));
}

void MainWindow::on__0_sb_model_valueChanged(int /*model*/)
{
    const int dataSetCount = rawResults.value(ui->_0_sb_model->value()).size();
    {
        // What follows serves a data set number that had to give way, too.
        const QSignalBlocker quiet(ui->_0_sb_data);
        ui->_0_sb_data->setRange(qMin(0, dataSetCount - 1), dataSetCount - 1);
    }
    changed(Change::ShownModel);
}

void MainWindow::on__0_sb_data_valueChanged(int /*dataSet*/)
{
    changed(Change::ShownDataSet);
}

void MainWindow::on__0_tw_RawResults_currentCellChanged(int /*currentRow*/, int /*currentColumn*/,
                                                        int /*previousRow*/, int /*previousColumn*/)
{
    refresh_0_cp_rawResHistoGram();
}

// The chart of page "4" serves press and wheel crosswise to this one; that is intended.

void MainWindow::mousePressDE()
{
    resultsHistogram->dragHorizontally();
}

void MainWindow::mouseWheelDE()
{
    resultsHistogram->zoomBothWays();
}
