// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Findings on data, inputs and results: which check serves which widget. Nothing here changes the
// analysis, draws a random number or redraws a chart.

#include "analysis/certainty/certaintytables.h"
#include "analysis/checkup/definitioncheck.h"
#include "analysis/checkup/heading.h"
#include "analysis/checkup/inputcheck.h"
#include "analysis/checkup/modelfindings.h"
#include "analysis/checkup/randomcheck.h"
#include "analysis/checkup/studyfindings.h"
#include "app/findings/blankcelldelegate.h"
#include "app/findings/findingsview.h"
#include "app/widgets/boundedit.h"
#include "app/window/mainwindow.h"
#include "io/csv.h"
#include "ui_mainwindow.h"

#include <QThread>

#include <limits>
#include <numeric>

namespace {

/// A table looks through all of its items to set the tooltip of one.
constexpr int mostDescribed = 20'000;

/// Remarks on a table that shows only a part of its numbers.
QStringList shownPart(const QTableWidget* table)
{
    const QSize full = csvFullSize(table);
    return full.isValid()
               ? checkShown(full.height(), table->rowCount(), full.width(), table->columnCount())
               : QStringList();
}

} // namespace

/// Shows findings, now and whenever something changes, and follows what is current.
void MainWindow::connectFindings()
{
    findings = new FindingsView(this, ui->__mainToolBox, ui->statusBar);
    new BlankCellDelegate(ui->_1_tw_endPoints, checkEndpointGiven({}).value(0));
    findings->listInStatusBar([this] { return allFindings(); });
    watchInputs();
    watchResults();
    for (QTableWidget* table :
         {ui->_1_tw_etaDefinition, ui->_1_tw_rawResLabels, ui->_2_tw_relativeWeight}) {
        findings->follow(table);
    }
    findings->followFormulas(ui->_1_tw_endPoints);
    findings->followFormulas(ui->_2_tw_weightDefinition);

    for (QLineEdit* edit : {ui->_1_le_possibleDoses, ui->_3_le_lowerBound, ui->_3_le_upperBound}) {
        connect(edit, &QLineEdit::textChanged, this, [this, edit] { findings->renew(edit); });
    }
    connect(ui->_4_le_probabilities, &QLineEdit::textChanged, this, [this] {
        findings->renew(ui->_4_le_probabilities);
        changed(Change::Levels);
    });
    for (QComboBox* box : {ui->_3_cb_aveORselect, ui->_3_cb_indOFVone}) {
        connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this,
                [this] { changed(Change::Choices); });
    }
    connect(ui->_3_cb_dataNumber, qOverload<int>(&QSpinBox::valueChanged), this,
            [this] { changed(Change::Choices); });
    connect(ui->_4_cb_useCash, &QCheckBox::toggled, this, [this] { changed(Change::Cache); });
    connect(ui->_5_tw_trueModelTMED, &QTableWidget::cellChanged, this,
            [this] { changed(Change::Simulations); });
    connect(ui->__mainToolBox, &QToolBox::currentChanged, this,
            [this] { changed(Change::PageTurned); });
}

void MainWindow::watchInputs()
{
    findings->watch(ui->_1_le_possibleDoses,
                    [this] { return checkDoses(ui->_1_le_possibleDoses->text()); });
    findings->watch(ui->_4_le_probabilities,
                    [this] { return checkLevels(ui->_4_le_probabilities->text()); });
    findings->watch(ui->_3_le_lowerBound, [this] {
        return lowerBoundEdit->findings() + checkInterval(lowerBound, upperBound);
    });
    findings->watch(ui->_3_le_upperBound, [this] {
        return upperBoundEdit->findings() + checkInterval(lowerBound, upperBound);
    });
    findings->watch(ui->_1_sb_numSimulations, [this] {
        return checkIndividuals(ui->_1_sb_numSimulations->value(), QThread::idealThreadCount())
               + checkIndividualsAfterOpening(study(), source.individualsAreOlder);
    });
    findings->watch(ui->_4_cb_useCash, [this] {
        return ui->_4_cb_useCash->isChecked() && !doseChoiceCash.isEmpty()
                   ? cache.findings(studyToKeep())
                   : QStringList();
    });
    findings->watch(ui->_2_tw_weightDefinition, [this] { return checkAnyWeight(study()); });
    for (QWidget* selector : {ui->_0_sb_data, ui->_2_sb_dataNumber, ui->_3_cb_dataNumber}) {
        findings->watch(selector, [this] { return checkShownModel(study()); });
    }
    findings->watch(ui->_0_tw_RawResults, [this] { return shownPart(ui->_0_tw_RawResults); });
}

void MainWindow::watchResults()
{
    const auto ofCurve = [this] { return curveRemarks(results(), currentInputs()); };
    const auto ofDoses = [this] { return selectionRemarks(results(), currentInputs()); };
    const auto ofTruth = [this] { return truthRemarks(results(), currentInputs()); };
    const auto ofStudy = [this] {
        const Study now = study();
        return checkAnyWeight(now) + checkEndpointsGiven(now) + checkShownModel(now);
    };
    const auto ofSamples = [this] {
        const Study now = study();
        const int dataSet = qMax(0, ui->_3_cb_dataNumber->value());
        return usableWeights.ofDataSet(now, dataSet) + checkRandomNumbers(now, dataSet);
    };
    findings->watch(ui->_3_pb_calculatePoS, [=] { return ofCurve() + ofStudy() + ofSamples(); });
    findings->watch(ui->_4_pb_startCalculation, [=] {
        const Study now = study();
        return ofDoses() + unstableDoses(shown.selection) + ofStudy() + usableWeights.ofAll(now)
               + checkRandomNumbersOfAll(now);
    });
    findings->watch(ui->_4_pb_compTruth, [=] {
        const quint64 then = simulationSource.fingerprint;
        const bool isEarlier = then != 0 && then != studyToKeep().fingerprint;
        return checkReadToEnd(simulationSource.unread + unreadTruth) + ofTruth()
               + checkSimulationModels(simulationSource.files, isEarlier);
    });
    const auto ofSelection = [=] { return ofDoses() + shown.selection.notes; };
    findings->watch(ui->_3_cp_PoS, {}, [=] { return ofCurve() + shown.curve.notes; });
    findings->watch(ui->_4_cp_doseChoiceDistribution, {}, ofSelection);
    findings->watch(
        ui->_4_tw_doseChoice, [this] { return shownPart(ui->_4_tw_doseChoice); }, ofSelection);
    const auto ofComparison = [=] { return ofTruth() + missingMedNotes(shown.truth); };
    findings->watch(ui->_5_cp_truthVisualization, {}, ofComparison);
    findings->watch(
        ui->_5_tw_trueModelTMED, [this] { return shownPart(ui->_5_tw_trueModelTMED); },
        ofComparison);
    findings->watch(ui->_5_tw_Summary, {}, ofComparison);
    findings->watch(ui->_5_tw_aveUnderEstOverEst, {}, ofComparison);
    findings->watch(ui->_1_cp_typicalDRPlot, {},
                    [this] { return typicalCurveRemarks(results(), currentInputs()); });
    findings->watch(
        ui->_2_tw_relativeWeight, [this] { return shownPart(ui->_2_tw_relativeWeight); },
        [this] { return weightsRemarks(results(), currentInputs()); });
}

void MainWindow::renewFindings(View view, int row)
{
    switch (view) {
    case View::CheckUp:
        renewCheckUp();
        break;
    case View::ShownCheckUp:
        showCheckUp();
        break;
    case View::ColumnNames:
        nameColumns();
        break;
    case View::EndpointFinding:
        renewFormulaFindings(ui->_1_tw_endPoints, {row});
        break;
    case View::WeightFinding:
        renewFormulaFindings(ui->_2_tw_weightDefinition, {row});
        break;
    case View::WeightFindings:
        renewFormulaFindings(ui->_2_tw_weightDefinition, allModels());
        break;
    case View::FormulaFindings:
        renewFormulaFindings(ui->_1_tw_endPoints, allModels());
        renewFormulaFindings(ui->_2_tw_weightDefinition, allModels());
        break;
    case View::OmegaFindings:
        renewOmegaFindings();
        break;
    case View::Marks:
        renewMarks();
        break;
    case View::AllInputs:
        findings->renewAll();
        break;
    case View::CacheMark:
        findings->renew(ui->_4_cb_useCash);
        break;
    default:
        break;
    }
}

/// Renews the findings on buttons and results, and on inputs whose findings depend on others.
void MainWindow::renewMarks()
{
    findings->renew(QVector<QWidget*>{
        ui->_0_sb_data, ui->_2_sb_dataNumber, ui->_3_cb_dataNumber, ui->_1_sb_numSimulations,
        ui->_2_tw_weightDefinition, ui->_1_cp_typicalDRPlot, ui->_2_tw_relativeWeight,
        ui->_3_pb_calculatePoS, ui->_3_cp_PoS, ui->_3_le_lowerBound, ui->_3_le_upperBound,
        ui->_4_pb_startCalculation, ui->_4_tw_doseChoice, ui->_4_cp_doseChoiceDistribution,
        ui->_4_pb_compTruth, ui->_5_tw_trueModelTMED, ui->_5_cp_truthVisualization,
        ui->_5_tw_Summary, ui->_5_tw_aveUnderEstOverEst});
}

/// Checks the imported results, and shows the findings where models are named.
void MainWindow::renewCheckUp()
{
    const QStringList names = checkedNames(study());
    importCheckUp = checkUp(rawResults, headings, names, colNumOFV, colNumTHETA1, source.unread);
    addGap(importCheckUp, source.gap);
    QStringList summedUp;
    for (int model = 0; model < importCheckUp.models.size(); ++model) {
        for (const QString& finding : importCheckUp.models.at(model).findings) {
            summedUp.append(names.value(model) + ": " + finding);
        }
    }
    findings->setGeneral(importCheckUp.summary, summedUp);
    showCheckUp();
}

/// Shows the check-up on the model selector and on the names of the models.
void MainWindow::showCheckUp()
{
    ui->_0_sb_model->setToolTip(
        plainToolTip(importCheckUp.models.value(ui->_0_sb_model->value()).text));
    for (int model = 0; model < qMin(endPoints.size(), mostDescribed); ++model) {
        const ModelCheckUp found = importCheckUp.models.value(model);
        for (QTableWidgetItem* item : {ui->_1_tw_endPoints->verticalHeaderItem(model),
                                       ui->_2_tw_weightDefinition->verticalHeaderItem(model),
                                       ui->_2_tw_relativeWeight->horizontalHeaderItem(model)}) {
            if (item != nullptr) {
                item->setToolTip(plainToolTip(found.text));
                item->setData(Qt::BackgroundRole,
                              found.findings.isEmpty() ? QVariant() : headingBrush());
            }
        }
    }
}

QVector<int> MainWindow::allModels() const
{
    QVector<int> models(endPoints.size());
    std::iota(models.begin(), models.end(), 0);
    return models;
}

/// The findings on a model's expression in one of the two tables.
QStringList MainWindow::formulaFindings(const Study& now, const QTableWidget* table,
                                        int model) const
{
    return table == ui->_1_tw_endPoints
               ? texts.endpoints.finding(model, fileName(model)) + endpointFindings(now, model)
               : texts.weights.finding(model, fileName(model))
                     + weightFindings(now, model, texts.placedWeights.value(model));
}

/// Diagnoses expressions of models in one of the two tables.
void MainWindow::renewFormulaFindings(const QTableWidget* table, const QVector<int>& models)
{
    const Study now = study();
    for (const int model : models) {
        if (model < endPoints.size()) {
            if (QTableWidgetItem* item = table->item(model, 0)) {
                findings->show(item, formulaFindings(now, table, model));
            }
        }
    }
    findings->showStatus();
}

/// Checks the covariance matrix of the selected model.
void MainWindow::renewOmegaFindings()
{
    const int model = ui->_1_tw_endPoints->currentRow();
    if (model < 0 || model >= endPoints.size()) {
        return;
    }
    const Study now = study();
    const QStringList ofMatrix = omegaFindings(now, model);
    // Without data nothing lies beyond a row, and no matrix is used.
    const int width = rawResults.value(model).value(0).isEmpty() ? std::numeric_limits<int>::max()
                                                                 : widestRow(now, model);
    const QTableWidget* table = ui->_1_tw_etaDefinition;
    for (int row = 0; row < table->rowCount(); ++row) {
        for (int column = 0; column < table->columnCount(); ++column) {
            QTableWidgetItem* item = table->item(row, column);
            findings->show(item, checkOmegaElement(item->text(), width) + ofMatrix);
        }
    }
    findings->showStatus();
}

/// Names the data column under every heading of the results and every label of page "1",
/// where the pieces of the heading line may stand apart from their columns.
void MainWindow::nameColumns()
{
    const auto nameItems = [this](int model, int dataSet, const auto& itemOf) {
        const int count = qMin(rawResultsHeaders.value(model).size(), mostDescribed);
        const QStringList descriptions =
            describeColumns(count, headings.value(model).names,
                            rawResults.value(model).value(dataSet), colNumOFV, colNumTHETA1);
        for (int column = 0; column < count; ++column) {
            if (QTableWidgetItem* item = itemOf(column)) {
                item->setToolTip(plainToolTip(descriptions.at(column).left(longestName)));
            }
        }
    };
    nameItems(ui->_0_sb_model->value(), qMax(0, ui->_0_sb_data->value()),
              [this](int column) { return ui->_0_tw_RawResults->horizontalHeaderItem(column); });
    nameItems(ui->_1_tw_endPoints->currentRow(), 0,
              [this](int column) { return ui->_1_tw_rawResLabels->item(0, column); });
}

/// All current findings, a line each, beginning with the input that it concerns.
QStringList MainWindow::allFindings() const
{
    QStringList lines;
    const Study now = study();
    const int modelCount = checkedNames(now).size();
    for (int model = 0; model < modelCount; ++model) {
        const QString file = fileName(model);
        lines += modelFindings(
            now, importCheckUp, model,
            {ui->_1_tw_endPoints->item(model, 0) != nullptr, texts.placedWeights.value(model),
             texts.endpoints.finding(model, file), texts.weights.finding(model, file)});
    }
    return lines + findings->all();
}
