// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Page "4": minimum effective doses of all data sets.

#include "analysis/dosesearch.h"
#include "analysis/numberlist.h"
#include "app/aplot.h"
#include "app/charts/histogramview.h"
#include "app/tables/columnwidths.h"
#include "app/widgets/progressloop.h"
#include "app/window/mainwindow.h"
#include "io/csv.h"
#include "ui_mainwindow.h"

#include <cmath>

namespace {

/// Data sets per histogram bin, rounded up.
constexpr double dataSetsPerBin = 10.0;

QString widestText(const QVector<double>& doses)
{
    QString widest = "nan";
    for (const double dose : doses) {
        const QString text = QString::number(dose, 'g', 6);
        if (text.size() > widest.size()) {
            widest = text;
        }
    }
    return widest;
}

} // namespace

void MainWindow::on__4_pb_startCalculation_clicked()
{
    if (rawResults.isEmpty()) {
        return;
    }
    const int dataSetCount = rawResults.first().size();
    QTableWidget* table = ui->_4_tw_doseChoice;
    {
        ProgressLoop progress(this, "Calculating...", "Abort Calculation", dataSetCount);
        doseChoice.clear();
        doseChoiceLabels.clear();
        doseChoiceVector = parseNumberList(ui->_4_le_probabilities->text());
        for (const double level : qAsConst(doseChoiceVector)) {
            doseChoiceLabels.append(QString::number(level, 'g', 6));
        }
        shown.selection = {{},
                           {},
                           dataSetCount,
                           false,
                           boundNotes() + usableWeights.ofAll(study()),
                           doseProvenance(studyToKeep())};
        shown.selection.before = circumstances();
        if (ui->_4_cb_useCash->isChecked()) {
            shown.selection.usedCache = true;
            shown.selection.tookFromCache = cache.holdsAny();
            cache.resize(dataSetCount);
        }
        bool goesOn = true;
        qint64 bytes = shown.curve.evaluation.bytes();
        for (int dataSet = 0; goesOn && dataSet < dataSetCount; ++dataSet) {
            Evaluation evaluation;
            const QVector<double> probability = calculate_PoS(dataSet, &progress, &evaluation);
            if (progress.isGivenUp()) {
                break;
            }
            shown.selection.probability.append(probability);
            shown.selection.evaluations.append(keptBeside(evaluation, bytes));
            bytes += shown.selection.evaluations.last().bytes();
            doseChoice.append(find_dose(probability));
            if (dataSet == 0) {
                csvDisplay(table, doseChoice, doseChoiceLabels);
            } else {
                csvDisplayAppend(table, doseChoice.last());
            }
            goesOn = progress.advance(dataSet + 1);
        }
    }
    if (doseChoice.isEmpty()) {
        table->setRowCount(0);
    }
    fitColumns(table, widestText(possibleDoses));
    // Newly computed doses count as newly selected: they are to be seen.
    doseHistogram->expectNewValues();
    refresh_4_tw_doseChoice();
    changed(Change::Calculated);
    if (doseChoice.size() == dataSetCount) {
        resampleDoses();
    }
}

QVector<double> MainWindow::find_dose(QVector<double> pos, QVector<double> targets)
{
    return minimumEffectiveDoses(pos, targets, possibleDoses);
}

int MainWindow::find_dose(QVector<double> pos, double target)
{
    return minimumEffectiveDoseIndex(pos, target);
}

QVector<double> MainWindow::find_dose(QVector<double> pos)
{
    return find_dose(pos, doseChoiceVector);
}

/// Draws the distribution over the data sets of the level that is current in the table.
void MainWindow::refresh_4_tw_doseChoice()
{
    QTableWidget* table = ui->_4_tw_doseChoice;
    const int level = table->currentColumn();
    QVector<double> chosenDoses;
    for (const QVector<double>& doses : qAsConst(doseChoice)) {
        if (level >= 0 && level < doses.size()) {
            chosenDoses.append(doses.at(level));
        }
    }
    const int binCount = static_cast<int>(std::ceil(table->rowCount() / dataSetsPerBin));
    if (!chosenDoses.isEmpty()) {
        doseHistogram->chooseRange({0, 0, level}, chosenDoses, possibleDoses, binCount);
    }
    QCustomPlot* plot = ui->_4_cp_doseChoiceDistribution;
    doseHistogram->draw([&] { histogram(table, plot, binCount); }, doseName(endPoints));
}

void MainWindow::on__4_tw_doseChoice_currentCellChanged(int /*currentRow*/, int /*currentColumn*/,
                                                        int /*previousRow*/, int /*previousColumn*/)
{
    refresh_4_tw_doseChoice();
}

void MainWindow::on__4_pb_clearCash_clicked()
{
    cache.clear();
    changed(Change::Cache);
}

// Press and wheel are served crosswise to the chart of page "0"; this is intended.

void MainWindow::mousePress_4_cp_doseDist()
{
    doseHistogram->zoomBothWays();
}

void MainWindow::mouseWheel_4_cp_doseDist()
{
    doseHistogram->dragHorizontally();
}
