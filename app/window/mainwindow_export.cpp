// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// What leaves the window: tables, charts and the summary of the analysis.

#include "analysis/summary.h"
#include "app/charts/chartexport.h"
#include "app/charts/histogramview.h"
#include "app/tables/tableexport.h"
#include "app/window/mainwindow.h"
#include "ui_mainwindow.h"

#include <QAction>

#include <limits>

namespace {

/// The omega matrix as page "1" shows it, with all digits.
QVector<QStringList> omegaTexts(const endPoint& definition)
{
    QVector<QStringList> rows;
    for (int row = 0; row < definition.numEtas; ++row) {
        QStringList texts;
        for (int column = 0; column < definition.numEtas; ++column) {
            const int reference = definition.omegaColumns.at(row).at(column);
            texts.append(reference >= 0 ? "COL" + QString::number(qint64(reference) + 1)
                                        : QString::number(definition.omega.at(row).at(column), 'g',
                                                          std::numeric_limits<double>::digits10));
        }
        rows.append(texts);
    }
    return rows;
}

} // namespace

/// Gives every table and chart of results its context menu.
void MainWindow::addExports()
{
    auto* summary = new QAction("Copy analysis summary", this);
    summary->setObjectName("actionCopySummary");
    connect(summary, &QAction::triggered, this,
            [this] { copyText(summaryText(analysisSummary())); });
    addTableExports(summary);
    addChartExports(summary);
}

void MainWindow::addTableExports(QAction* summary)
{
    addTableExport(
        ui->_0_tw_RawResults, "bootstrap_results",
        [this] {
            return rawResults.value(ui->_0_sb_model->value())
                .value(qMax(0, ui->_0_sb_data->value()));
        },
        summary);
    addTableExport(
        ui->_2_tw_relativeWeight, "relative_weights",
        [this] { return calculate_relativeWeight(ui->_2_sb_dataNumber->value()); }, summary);
    addTableExport(
        ui->_4_tw_doseChoice, "dose_selection", [this] { return doseChoice; }, summary);
    addTableExport(
        ui->_5_tw_trueModelTMED, "theoretical_meds",
        [this] {
            Table numbers; // behind the model numbers, which have no more digits than shown
            for (const double dose : qAsConst(trueMEDs)) {
                numbers.append(QVector<double>{std::numeric_limits<double>::quiet_NaN(), dose});
            }
            return numbers;
        },
        summary);
    addTableExport(
        ui->_5_tw_Summary, "comparison_summary",
        [this] { return summariseComparison(comparison, comparedLevels); }, summary);
    addTableExport(
        ui->_5_tw_aveUnderEstOverEst, "comparison_errors",
        [this] {
            Table numbers;
            for (const LevelComparison& level : qAsConst(comparison)) {
                numbers.append(QVector<double>{level.meanAbsoluteError});
            }
            return numbers;
        },
        summary);
}

void MainWindow::addChartExports(QAction* summary)
{
    const auto add = [summary](QCustomPlot* plot, const ChartExportSettings& settings) {
        new ChartExport(plot, settings, summary);
    };
    add(ui->_0_cp_rawResHistoGram, {{ChartKind::Histogram, {}, {}}, "bootstrap_histogram", [this] {
                                        resultsHistogram->showAll();
                                    }});
    // Its axis names the time variable.
    add(ui->_1_cp_typicalDRPlot, {{ChartKind::Curve, "Dose", {}}, "typical_endpoint", {}});
    add(ui->_3_cp_PoS, {{ChartKind::Curve, {}, " %"}, "probability", {}});
    add(ui->_4_cp_doseChoiceDistribution, {{ChartKind::Histogram, {}, {}},
                                           "dose_distribution",
                                           [this] { doseHistogram->showAll(); }});
    add(ui->_5_cp_truthVisualization, {{ChartKind::Bands, "Level", {}}, "comparison_counts", {}});
}

/// The analysis as it stands; results that no page shows are left out.
AnalysisSummary MainWindow::analysisSummary()
{
    AnalysisSummary summary;
    summary.program = "Velmora " VELMORA_VERSION;
    summary.qtVersion = qVersion();
    summary.directory = resultsPlace;
    summary.colNumOFV = colNumOFV;
    summary.colNumTHETA1 = colNumTHETA1;
    for (int model = 0; model < endPoints.size(); ++model) {
        const endPoint& definition = endPoints.at(model);
        ModelSummary described{definition.name,
                               sourceFiles.value(model),
                               {},
                               definition.endPointParser.expression,
                               definition.weightParser.expression,
                               omegaTexts(definition)};
        for (const Table& dataSet : rawResults.value(model)) {
            described.sampleCounts.append(dataSet.size());
        }
        summary.models.append(described);
    }
    summary.doses = possibleDoses;
    summary.populationSummary = ui->_1_cb_iivEndPoint->currentText();
    summary.individuals = ui->_1_sb_numSimulations->value();
    summary.target = {lowerBound, upperBound};
    summary.logScale = ui->_2_cb_logScale->isChecked();
    summary.method = ui->_3_cb_aveORselect->currentText();
    summary.ofvUse = ui->_3_cb_indOFVone->currentText();
    summary.levels = doseChoiceVector;
    addResults(summary);
    return summary;
}

/// The choices of page "3", which a result that is calculated now depends on.
QString MainWindow::choicesText() const
{
    return QString("%1, %2, %3 < endpoint <= %4")
        .arg(ui->_3_cb_aveORselect->currentText(), ui->_3_cb_indOFVone->currentText(),
             QString::number(lowerBound, 'g', std::numeric_limits<double>::digits10),
             QString::number(upperBound, 'g', std::numeric_limits<double>::digits10));
}

void MainWindow::addResults(AnalysisSummary& summary)
{
    const auto since = [this](int version) {
        return version == resultsVersion ? QString() : QString(", of results imported before");
    };
    if (ui->_2_tw_relativeWeight->rowCount() > 0) {
        summary.weightsDataSet = qMax(0, ui->_2_sb_dataNumber->value());
        summary.relativeWeights = calculate_relativeWeight(summary.weightsDataSet);
        summary.selectedModels = make_ModelSelection(summary.weightsDataSet);
    }
    if (ui->_3_cp_PoS->graphCount() > 0) {
        const QCPGraph* curve = ui->_3_cp_PoS->graph(0);
        summary.probabilityName = curve->name() + since(curveVersion);
        for (const QCPGraphData& point : *curve->data()) {
            summary.probabilityDoses.append(point.key);
            summary.probability.append(point.value);
        }
    }
    summary.doseChoice = doseChoice;
    summary.doseChoiceOrigin = doseChoiceOrigin + since(doseChoiceVersion);
    if (!trueMEDs.isEmpty() && comparisonVersion == resultsVersion) {
        summary.comparison = comparison;
        summary.comparedLevels = comparedLevels;
    }
}
