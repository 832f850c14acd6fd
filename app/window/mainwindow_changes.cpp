// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// What results depend on, and what a change of it touches.

#include "analysis/numberlist.h"
#include "app/charts/histogramview.h"
#include "app/findings/findingsview.h"
#include "app/widgets/boundedit.h"
#include "app/widgets/messagebox.h"
#include "app/window/mainwindow.h"
#include "ui_mainwindow.h"

#include <iterator>
#include <map>

namespace {

const char notFoundText[] =
    "raw results file cannot be found in this folder, check the namr format definition.";

/// Names a heading, by a new item where there is none: for an item that changes, a table
/// looks through all that it has.
template <typename SetItem>
void nameHeading(QTableWidgetItem* item, const QString& name, SetItem setItem)
{
    if (item == nullptr) {
        setItem(new QTableWidgetItem(name));
    } else if (item->text() != name) {
        item->setText(name);
    }
}

/// What each change touches. It never calculates results again: it marks them.
const QVector<View>& viewsTouchedBy(Change change)
{
    using V = View;
    static const std::map<Change, QVector<View>> table{
        // clang-format off
        {Change::ResultsCleared,    {V::HistogramRanges, V::CheckUp, V::FormulaFindings, V::OmegaFindings, V::Marks}},
        {Change::ImportAborted,     {V::CheckUp, V::FormulaFindings, V::OmegaFindings, V::Marks}},
        {Change::Imported,          {V::Models, V::WeightTables, V::ResultsTable, V::ResultsHistogram, V::ColumnLabels, V::ColumnNames,
                                     V::Omega, V::CheckUp, V::FormulaFindings, V::OmegaFindings, V::DrawlessCurve, V::WeightsIfShown,
                                     V::Marks}},
        {Change::Opened,            {V::HistogramRanges, V::Models, V::ResultsTable, V::ResultsHistogram, V::ColumnLabels, V::ColumnNames,
                                     V::Omega, V::CheckUp, V::FormulaFindings, V::OmegaFindings}},
        {Change::OmegaRestored,     {V::Omega, V::OmegaFindings}},
        {Change::WeightsRestored,   {V::WeightTables, V::Weights}},
        {Change::NoWeightsRestored, {V::ModelNames}},
        {Change::DosesRestored,     {V::DoseHistogram}},
        {Change::ProjectLoaded,     {V::Omega, V::ModelNames, V::CheckUp, V::ColumnNames, V::FormulaFindings, V::OmegaFindings,
                                     V::AllInputs}},
        {Change::OfvColumn,         {V::CheckUp, V::FormulaFindings, V::ColumnNames, V::WeightsIfShown, V::Marks}},
        {Change::Theta1Column,      {V::CheckUp, V::FormulaFindings, V::ColumnNames, V::DrawlessCurve, V::Marks}},
        {Change::ShownModel,        {V::ResultsTable, V::ColumnNames, V::ResultsHistogram, V::ShownCheckUp, V::Marks}},
        {Change::ShownDataSet,      {V::ResultsTable, V::ColumnNames, V::ResultsHistogram}},
        {Change::SelectedModel,     {V::ColumnLabels, V::ColumnNames, V::TypicalCurve, V::Omega, V::OmegaFindings, V::Marks}},
        {Change::Doses,             {V::TypicalCurve, V::DoseSlider, V::Marks}},
        {Change::Endpoint,          {V::TypicalCurve, V::Omega, V::OmegaFindings, V::EndpointFinding, V::WeightFinding, V::Marks}},
        {Change::Omega,             {V::TypicalCurve, V::Omega, V::OmegaFindings, V::Marks}},
        {Change::OmegaCell,         {V::Omega, V::OmegaFindings}},
        {Change::Population,        {V::TypicalCurve, V::Marks}},
        {Change::DefaultWeights,    {V::ModelNames, V::Weights, V::FormulaFindings, V::Marks}},
        {Change::Weight,            {V::Weights, V::WeightFinding, V::Marks}},
        {Change::WeightScale,       {V::Weights, V::WeightFindings, V::Marks}},
        {Change::WeightsDataSet,    {V::Weights}},
        {Change::Interval,          {V::Marks}},
        {Change::Choices,           {V::WeightFindings, V::Marks}},
        {Change::Levels,            {V::Marks}},
        {Change::Simulations,       {V::Marks}},
        {Change::Calculated,        {V::Marks, V::CacheMark}},
        {Change::Cache,             {V::CacheMark}},
        {Change::PageTurned,        {V::CacheMark}},
        {Change::Palette,           {V::ShownCheckUp, V::AllInputs}},
        // clang-format on
    };
    return table.at(change);
}

} // namespace

/// All inputs as they are now. The fingerprint of the results is there if it was asked for.
Study MainWindow::study() const
{
    Study now;
    now.rawResults = rawResults;
    now.rawResultsHeaders = rawResultsHeaders;
    now.headings = headings;
    now.fingerprint = fingerprint;
    now.endPoints = endPoints;
    now.doses = possibleDoses;
    now.target = {lowerBound, upperBound};
    now.levels = parseNumberList(ui->_4_le_probabilities->text());
    now.logScale = ui->_2_cb_logScale->isChecked();
    now.selecting = ui->_3_cb_aveORselect->currentIndex() == 1;
    now.individualOfv = ui->_3_cb_indOFVone->currentIndex() == 1;
    now.colNumOFV = colNumOFV;
    now.colNumTHETA1 = colNumTHETA1;
    now.colNumThird = colNumThird;
    now.individuals = ui->_1_sb_numSimulations->value();
    now.populationSummary = populationSummaries[qBound(0, ui->_1_cb_iivEndPoint->currentIndex(),
                                                       int(std::size(populationSummaries)) - 1)];
    now.shownModel = ui->_0_sb_model->value();
    return now;
}

/// The same for a result that is kept: its fingerprint identifies the bootstrap results later.
Study MainWindow::studyToKeep() const
{
    if (fingerprint == 0) {
        fingerprint = fingerprintOf(rawResults);
    }
    return study();
}

/// What results would be made from now.
CurrentInputs MainWindow::currentInputs() const
{
    CurrentInputs now;
    // Where no result is shown, no fingerprint is needed.
    now.study = shown.isEmpty() ? study() : studyToKeep();
    now.weightsDataSet = qMax(0, ui->_2_sb_dataNumber->value());
    now.curveDataSet = qMax(0, ui->_3_cb_dataNumber->value());
    now.typicalModel = ui->_1_tw_endPoints->currentRow();
    if (shown.truth.made.exists()) {
        now.trueRows = trueRows();
        now.trueModels = trueModelTexts();
    }
    return now;
}

/// What the pages show, with the members that the window keeps on its own.
StudyResults MainWindow::results() const
{
    StudyResults now = shown;
    now.selection.doses = doseChoice;
    now.selection.levels = doseChoiceVector;
    return now;
}

/// What the bounds, as they were typed, mean for a result that is made now.
QStringList MainWindow::boundNotes() const
{
    return lowerBoundEdit->notesOfUse() + upperBoundEdit->notesOfUse();
}

/// The name that identifies a model across imports; empty for a number.
QString MainWindow::fileName(int model) const
{
    return source.namesModels && model < endPoints.size() ? endPoints.at(model).name : QString();
}

/// Reports what happened. row is the model concerned, if it is one.
void MainWindow::changed(Change change, int row)
{
    if (change == Change::ResultsCleared || change == Change::ImportAborted
        || change == Change::Imported || change == Change::Opened) {
        fingerprint = 0;
        usableWeights.forget();
    }
    if (change == Change::Endpoint) {
        texts.endpoints.typed(row, fileName(row));
    } else if (change == Change::Weight) {
        texts.weights.typed(row, fileName(row));
        texts.placed(row, {}); // by the user now
    }
    for (const View view : viewsTouchedBy(change)) {
        // Omega and findings are renewed at the end, not for every item of a project.
        if (!isOpening || view < View::Omega) {
            renewView(view, row);
        }
    }
}

/// Shows the message that there are no results, and turns to the import page.
void MainWindow::resultsNotFound()
{
    showMessage(this, notFoundText);
    ui->__mainToolBox->setCurrentIndex(0);
}

void MainWindow::renewView(View view, int row)
{
    switch (view) {
    case View::HistogramRanges:
        resultsHistogram->forget();
        doseHistogram->forget();
        break;
    case View::Models:
        showModels();
        break;
    case View::ModelNames:
        showModelNames();
        break;
    case View::WeightTables:
        ui->_2_tw_weightDefinition->setRowCount(endPoints.size());
        setWeightColumns(endPoints.size());
        showModelNames();
        break;
    case View::ResultsTable:
        refresh_0_tw_RawResults();
        break;
    case View::ResultsHistogram:
        refresh_0_cp_rawResHistoGram();
        break;
    case View::ColumnLabels:
        refresh_1_tw_rawResLabels();
        break;
    case View::TypicalCurve:
        refresh_1_cp_typicalDRPlot();
        break;
    case View::DrawlessCurve:
        renewTypicalDRPlot();
        break;
    case View::Omega:
        refresh__1_tw_etaDefinition();
        break;
    case View::Weights:
        refresh_2_tw_relativeWeight();
        break;
    case View::WeightsIfShown:
        if (shown.weights.exists()) {
            refresh_2_tw_relativeWeight();
        }
        break;
    case View::DoseSlider:
        if (!possibleDoses.isEmpty()) {
            ui->_3_sl_doseSlider->setMaximum(possibleDoses.size() - 1);
        }
        break;
    case View::DoseHistogram:
        refresh_4_tw_doseChoice();
        break;
    default:
        renewFindings(view, row);
    }
}

/// Sets the selectors and the rows and names of models up for the results as they are.
void MainWindow::showModels()
{
    const int modelCount = rawResults.size();
    const bool hasDataSets = !source.namesModels; // an import of files has one for each model
    for (QWidget* widget :
         QVector<QWidget*>{ui->_0_sb_data, ui->_2_sb_dataNumber, ui->_3_cb_dataNumber,
                           ui->_0_lb_dataNumber, ui->_2_lb_dataNumber, ui->_3_lb_dataNumber}) {
        widget->setVisible(hasDataSets);
    }
    ui->__mainToolBox->show();
    ui->_0_sb_model->setMaximum(modelCount - 1);
    ui->_1_tw_endPoints->setRowCount(modelCount);
    texts.resized(modelCount);
    // -1 for a model without data sets; the next import makes 0 the lowest number again.
    const int highest = rawResults.value(ui->_0_sb_model->value()).size() - 1;
    for (QSpinBox* selector : {ui->_0_sb_data, ui->_2_sb_dataNumber, ui->_3_cb_dataNumber}) {
        selector->setRange(qMin(0, highest), highest);
    }
    showModelNames();
}

void MainWindow::showModelNames()
{
    QStringList names;
    for (const endPoint& definition : qAsConst(endPoints)) {
        names.append(definition.name);
    }
    for (QTableWidget* table : {ui->_1_tw_endPoints, ui->_2_tw_weightDefinition}) {
        for (int model = 0; model < qMin(names.size(), table->rowCount()); ++model) {
            nameHeading(table->verticalHeaderItem(model), names.at(model),
                        [=](QTableWidgetItem* item) { table->setVerticalHeaderItem(model, item); });
        }
    }
    QTableWidget* weights = ui->_2_tw_relativeWeight;
    for (int model = 0; model < qMin(names.size(), weights->columnCount()); ++model) {
        nameHeading(weights->horizontalHeaderItem(model), names.at(model),
                    [=](QTableWidgetItem* item) { weights->setHorizontalHeaderItem(model, item); });
    }
    showCheckUp();
}

/// Renews the curve after a change on another page, where no random numbers may be drawn: with ETAs
/// the chart is cleared, as the curve is no longer right.
void MainWindow::renewTypicalDRPlot()
{
    const endPoint* definition = selectedEndPoint();
    if (definition != nullptr && definition->highestEta > 0) {
        clearTypicalCurve();
    } else {
        refresh_1_cp_typicalDRPlot();
    }
}
