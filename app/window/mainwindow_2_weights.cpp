// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Page "2": weight expressions, relative weights and model selection.

#include "analysis/weights.h"
#include "app/findings/findingsview.h"
#include "app/tables/columnwidths.h"
#include "app/window/mainwindow.h"
#include "io/csv.h"
#include "ui_mainwindow.h"

#include <QSignalBlocker>

void MainWindow::refresh_2_tw_weightDefinition()
{
    const int modelCount = qMin(rawResultsHeaders.size(), endPoints.size());
    QTableWidget* table = ui->_2_tw_weightDefinition;
    QVector<int> undefinedRows;
    for (int model = 0; model < modelCount; ++model) {
        if (table->item(model, 0) == nullptr) {
            undefinedRows.append(model);
        }
    }
    if (undefinedRows.isEmpty()) {
        return;
    }
    {
        // One refresh below instead of one per row.
        const QSignalBlocker quiet(table);
        table->setRowCount(qMax(table->rowCount(), modelCount));
        for (const int model : qAsConst(undefinedRows)) {
            endPoint& definition = endPoints[model];
            definition.weightParser.expression = defaultWeightExpression(definition.endPointParser);
            table->setItem(model, 0, new QTableWidgetItem(definition.weightParser.expression));
            texts.placed(model, definition.weightParser.expression);
        }
    }
    setWeightColumns(modelCount);
    changed(Change::DefaultWeights);
}

/// Makes a column for each model. What is shown goes where the columns change, as all cells
/// would be moved once for each row.
void MainWindow::setWeightColumns(int modelCount)
{
    QTableWidget* table = ui->_2_tw_relativeWeight;
    if (table->columnCount() != modelCount) {
        table->setRowCount(0);
        table->setColumnCount(modelCount);
    }
}

void MainWindow::refresh_2_tw_relativeWeight()
{
    const int dataSet = ui->_2_sb_dataNumber->value();
    QTableWidget* table = ui->_2_tw_relativeWeight;
    const Table weights = calculate_relativeWeight(dataSet);
    shown.weights =
        !weights.isEmpty() ? weightsProvenance(studyToKeep(), qMax(0, dataSet)) : Provenance();
    csvDisplay(table, weights);
    fitColumns(table);
    findings->renew(table);
    const QVector<int> selected = make_ModelSelection(dataSet);
    // One repaint below instead of an announcement per cell.
    const QSignalBlocker quiet(table->model());
    for (int sample = 0; sample < qMin(selected.size(), table->rowCount()); ++sample) {
        for (int model = 0; model < table->columnCount(); ++model) {
            if (QTableWidgetItem* item = table->item(sample, model)) {
                const bool isSelected = model == selected.at(sample);
                item->setBackground(isSelected ? Qt::red : Qt::white);
                item->setForeground(isSelected ? Qt::white : Qt::black);
                if (isSelected || !item->toolTip().isEmpty()) {
                    item->setToolTip(isSelected ? "Selected model of this bootstrap sample" : "");
                }
            }
        }
    }
    table->viewport()->update();
}

QVector<QVector<double>> MainWindow::calculate_relativeWeight(int dataSet)
{
    return relativeWeights(study(), qMax(0, dataSet));
}

QVector<int> MainWindow::make_ModelSelection(int dataSet)
{
    return selectedModels(study(), qMax(0, dataSet));
}

void MainWindow::on__2_tw_weightDefinition_cellChanged(int row, int /*column*/)
{
    const QTableWidgetItem* item = ui->_2_tw_weightDefinition->item(row, 0);
    if (item != nullptr && row < endPoints.size()) {
        endPoints[row].weightParser.expression = item->text();
    }
    changed(Change::Weight, row);
}

void MainWindow::on__2_cb_logScale_stateChanged(int state)
{
    // A box with two states is never in state 1, so every toggle shows the second text;
    // this is intended.
    ui->_2_tw_weightDefinition->horizontalHeaderItem(0)->setText(
        state == 1 ? "Weight Definition in log scale" : "Weight Definition");
    changed(Change::WeightScale);
}

void MainWindow::on__2_sb_dataNumber_valueChanged(int /*dataSet*/)
{
    changed(Change::WeightsDataSet);
}
