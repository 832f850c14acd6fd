// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Page "1": doses, endpoints and between-subject variability.

#include "analysis/checkup/inputcheck.h"
#include "analysis/numberlist.h"
#include "app/aplot.h"
#include "app/findings/findingsview.h"
#include "app/tables/columnwidths.h"
#include "app/widgets/progressloop.h"
#include "app/window/mainwindow.h"
#include "io/csv.h"
#include "model/binding.h"
#include "report/curvegraph.h"
#include "ui_mainwindow.h"

#include <QSignalBlocker>

#include <iterator>
#include <limits>
#include <optional>

namespace {

/// Beyond the names of any real file; a heading of millions would fill memory with cells.
constexpr int mostLabels = 200'000;

void setCellText(QTableWidget* table, int row, int column, const QString& text)
{
    if (QTableWidgetItem* item = table->item(row, column)) {
        item->setText(text);
    } else {
        table->setItem(row, column, new QTableWidgetItem(text));
    }
}

} // namespace

void MainWindow::on__1_le_possibleDoses_textChanged(const QString& text)
{
    possibleDoses = parseNumberList(text);
    changed(Change::Doses);
}

void MainWindow::on__1_tw_endPoints_cellChanged(int row, int /*column*/)
{
    readEndPointExpression(row);
}

void MainWindow::on__1_tw_endPoints_itemChanged(QTableWidgetItem* item)
{
    readEndPointExpression(item->row());
}

void MainWindow::readEndPointExpression(int row)
{
    const QTableWidgetItem* item = ui->_1_tw_endPoints->item(row, 0);
    if (item == nullptr || row >= endPoints.size()) {
        return;
    }
    endPoints[row].endPointParser.expression = item->text();
    endPoints[row].checkETA();
    changed(Change::Endpoint, row);
}

void MainWindow::on__1_tw_endPoints_currentCellChanged(int /*currentRow*/, int /*currentColumn*/,
                                                       int /*previousRow*/, int /*previousColumn*/)
{
    typedOmega.end();
    changed(Change::SelectedModel);
}

/// The definition of the model that is current in the endpoints table, nullptr if none.
endPoint* MainWindow::selectedEndPoint()
{
    const int row = ui->_1_tw_endPoints->currentRow();
    return row >= 0 && row < endPoints.size() ? &endPoints[row] : nullptr;
}

void MainWindow::refresh_1_tw_rawResLabels()
{
    const int model = ui->_1_tw_endPoints->currentRow();
    if (model < 0 || model >= rawResultsHeaders.size()) {
        return;
    }
    const QStringList names = rawResultsHeaders.at(model).mid(0, mostLabels);
    QTableWidget* table = ui->_1_tw_rawResLabels;
    table->setRowCount(1);
    table->setColumnCount(names.size());
    for (int column = 0; column < names.size(); ++column) {
        table->setItem(0, column, new QTableWidgetItem(names.at(column).left(longestName)));
    }
    fitColumnsToTexts(table);
}

/// Shows the selected model's number of ETAs and omega, and the widgets for them where the
/// model has any. Writes nothing back: the cells hold rounded numbers.
void MainWindow::refresh__1_tw_etaDefinition()
{
    endPoint* definition = selectedEndPoint();
    if (definition != nullptr) {
        definition->checkETA();
    }
    const bool hasEtas = definition != nullptr && definition->numEtas > 0;
    ui->_1_tw_etaDefinition->setVisible(hasEtas);
    ui->_1_lb_etaText->setVisible(hasEtas);
    ui->_1_cb_numEtas->setVisible(hasEtas);
    ui->_1_cb_iivEndPoint->setVisible(hasEtas);
    ui->_1_sb_numSimulations->setVisible(hasEtas);
    // Once more: an editor that was hidden has handed its text over to a handler.
    definition = selectedEndPoint();
    if (definition == nullptr) {
        return;
    }
    const QSignalBlocker quietNumber(ui->_1_cb_numEtas);
    ui->_1_cb_numEtas->setMinimum(definition->highestEta);
    ui->_1_cb_numEtas->setValue(definition->numEtas);

    QTableWidget* table = ui->_1_tw_etaDefinition;
    const QSignalBlocker quietTable(table);
    table->setRowCount(definition->numEtas);
    table->setColumnCount(definition->numEtas);
    for (int row = 0; row < definition->numEtas; ++row) {
        for (int column = 0; column < definition->numEtas; ++column) {
            setCellText(table, row, column, definition->omegaText(row, column, 6));
        }
    }
}

void MainWindow::on__1_tw_etaDefinition_cellChanged(int row, int column)
{
    endPoint* definition = selectedEndPoint();
    const QTableWidgetItem* item = ui->_1_tw_etaDefinition->item(row, column);
    if (definition == nullptr || item == nullptr || row >= definition->numEtas
        || column >= definition->numEtas) {
        return;
    }
    const QString typed = item->text();
    bool isNumber = false;
    const double value = typed.toDouble(&isNumber);
    if (isNumber) {
        definition->omega[row][column] = definition->omega[column][row] = value;
        definition->omegaColumns[row][column] = definition->omegaColumns[column][row] = -1;
    } else if (const std::optional<int> reference = omegaColumnReference(typed)) {
        definition->omegaColumns[row][column] = *reference;
        definition->omegaColumns[column][row] = *reference;
    }
    changed(Change::Omega);
    // Findings on a text that the cell did not take over, until something else changes.
    const QStringList found = checkOmegaElement(typed, std::numeric_limits<int>::max());
    if (!found.isEmpty()) {
        findings->show(ui->_1_tw_etaDefinition->item(row, column), found);
        findings->showStatus();
    }
}

void MainWindow::on__1_tw_etaDefinition_currentCellChanged(int /*currentRow*/,
                                                           int /*currentColumn*/,
                                                           int /*previousRow*/,
                                                           int /*previousColumn*/)
{
    changed(Change::OmegaCell);
}

void MainWindow::on__1_cb_numEtas_valueChanged(int count)
{
    if (endPoint* definition = selectedEndPoint()) {
        // Typing marks the text as modified; a step replaces it.
        if (ui->_1_cb_numEtas->findChild<QLineEdit*>()->isModified()) {
            typedOmega.resize(*definition, count);
        } else {
            typedOmega.end();
            definition->resizeOmega(count);
        }
        changed(Change::Omega);
    }
}

void MainWindow::on__1_cb_iivEndPoint_currentIndexChanged(int index)
{
    if (index < 0 || index >= int(std::size(populationSummaries))) {
        return;
    }
    for (endPoint& definition : endPoints) {
        definition.populationSummary = populationSummaries[index];
    }
    changed(Change::Population);
}

void MainWindow::on__1_sb_numSimulations_valueChanged(int count)
{
    for (endPoint& definition : endPoints) {
        definition.numSimulations = count;
    }
    source.individualsAreOlder = false;
    changed(Change::Population);
}

/// Draws the selected model's endpoint over the doses for the first row of its results.
void MainWindow::refresh_1_cp_typicalDRPlot()
{
    const int model = ui->_1_tw_endPoints->currentRow();
    const QVector<Table> dataSets = rawResults.value(model);
    if (selectedEndPoint() == nullptr || possibleDoses.size() < 2 || dataSets.isEmpty()
        || dataSets.first().isEmpty() || (isOpening && shown.isTypicalCurveGivenUp)) {
        return;
    }
    QCustomPlot* plot = ui->_1_cp_typicalDRPlot;
    const auto values = calculateTypicalCurve(model, dataSets.first().first());
    shown.isTypicalCurveGivenUp = !values;
    if (!values) {
        clearTypicalCurve();
        findings->renew(plot);
        return;
    }
    plot->clearGraphs();
    auto* graph = new CurveGraph(plot); // owned by the plot
    graph->setPen(thickPen(plotColor));
    graph->setData(possibleDoses, *values, true);
    setAxisRange(plot->xAxis, possibleDoses);
    setAxisRange(plot->yAxis, *values);
    plot->xAxis->setLabel(endPoints.at(model).endPointParser.variables.value(TimeSlot));
    plot->yAxis->setLabel("Endpoint");
    plot->replot();
    shown.typicalCurve = typicalCurveProvenance(studyToKeep(), model);
    findings->renew(plot);
}

/// The endpoint of a model over the doses. None if the user goes on with something else.
std::optional<QVector<double>> MainWindow::calculateTypicalCurve(int model,
                                                                 const QVector<double>& row)
{
    // Not a reference: events are processed meanwhile.
    endPoint definition = endPoints.at(model);
    definition.bringUpToDate(possibleDoses);
    ProgressLoop progress(this, "Calculating...", "Abort Calculation", possibleDoses.size(),
                          heldInput);
    auto values =
        definition.evaluateEndpoint(row, [&progress](int done) { return progress.advance(done); });
    endPoints[model] = definition; // bound to its columns now
    return values;
}

void MainWindow::clearTypicalCurve()
{
    ui->_1_cp_typicalDRPlot->clearGraphs();
    ui->_1_cp_typicalDRPlot->replot();
    shown.typicalCurve = {};
}
