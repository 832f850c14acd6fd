// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Page "2": weight expressions, relative weights and model selection.

#include "analysis/weights.h"
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
        }
    }
    setWeightColumns(modelCount);
    showModelNames();
    refresh_2_tw_relativeWeight();
    renewFormulaFindings();
}

/// Makes a column for each model. Of weights that are shown one row stays as a sign, until
/// they are renewed: a change of columns moves all cells once per row.
void MainWindow::setWeightColumns(int modelCount)
{
    QTableWidget* table = ui->_2_tw_relativeWeight;
    if (table->columnCount() != modelCount) {
        table->setRowCount(qMin(1, table->rowCount()));
        table->setColumnCount(modelCount);
    }
}

void MainWindow::refresh_2_tw_relativeWeight()
{
    const int dataSet = ui->_2_sb_dataNumber->value();
    QTableWidget* table = ui->_2_tw_relativeWeight;
    csvDisplay(table, calculate_relativeWeight(dataSet));
    showFullSize(table);
    fitColumns(table);
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

/// Renews the weights after a change on another page, if they have been shown before.
void MainWindow::renewRelativeWeights()
{
    if (ui->_2_tw_relativeWeight->rowCount() > 0) {
        refresh_2_tw_relativeWeight();
    }
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
    refresh_2_tw_relativeWeight();
    renewFormulaFindings(ui->_2_tw_weightDefinition, row);
}

void MainWindow::on__2_cb_logScale_stateChanged(int state)
{
    // A box with two states is never in state 1, so every toggle shows the second text;
    // this is intended.
    ui->_2_tw_weightDefinition->horizontalHeaderItem(0)->setText(
        state == 1 ? "Weight Definition in log scale" : "Weight Definition");
    refresh_2_tw_relativeWeight();
}

void MainWindow::on__2_sb_dataNumber_valueChanged(int /*dataSet*/)
{
    refresh_2_tw_relativeWeight();
}
