// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Export of tables, charts and the summary of the analysis.

#include "analysis/certainty/certaintytables.h"
#include "analysis/summary.h"
#include "analysis/weights.h"
#include "app/charts/chartexport.h"
#include "app/charts/histogramview.h"
#include "app/tables/tableexport.h"
#include "app/widgets/memory.h"
#include "app/window/mainwindow.h"
#include "ui_mainwindow.h"

#include <QAction>

#include <limits>

/// Gives every table and chart of results its context menu.
void MainWindow::addExports()
{
    auto* summary = new QAction("Copy analysis summary", this);
    summary->setObjectName("actionCopySummary");
    connect(summary, &QAction::triggered, this,
            [this] { whileMemoryLasts(this, [this] { copyText(analysisSummary()); }); });
    auto* command = new QAction("Copy batch command", this);
    command->setObjectName("actionCopyBatchCommand");
    connect(command, &QAction::triggered, this,
            [this] { whileMemoryLasts(this, [this] { copyText(batchCommand()); }); });
    auto* report = new QAction("Save report...", this);
    report->setObjectName("actionSaveReport");
    connect(report, &QAction::triggered, this,
            [this] { whileMemoryLasts(this, [this] { saveReport(); }); });
    auto* allFound = new QAction("Copy all findings", this);
    allFound->setObjectName("actionCopyFindings");
    connect(allFound, &QAction::triggered, this,
            [this] { whileMemoryLasts(this, [this] { copyText(allFindings().join('\n')); }); });
    addTableExports({summary, command, report, allFound});
    addChartExports({summary, command, report, allFound});
}

void MainWindow::addTableExports(const QList<QAction*>& shared)
{
    addTableExport(
        ui->_0_tw_RawResults, "bootstrap_results",
        [this] {
            return rawResults.value(ui->_0_sb_model->value())
                .value(qMax(0, ui->_0_sb_data->value()));
        },
        shared);
    addTableExport(
        ui->_2_tw_relativeWeight, "relative_weights",
        [this] { return relativeWeights(study(), qMax(0, ui->_2_sb_dataNumber->value())); },
        shared);
    addCertaintyEntries(
        addTableExport(
            ui->_4_tw_doseChoice, "dose_selection", [this] { return doseChoice; }, shared),
        false);
    addTableExport(
        ui->_5_tw_trueModelTMED, "theoretical_meds",
        [this] {
            Table numbers; // behind the model numbers, which have no more digits than shown
            for (const double dose : qAsConst(trueMEDs)) {
                numbers.append(QVector<double>{std::numeric_limits<double>::quiet_NaN(), dose});
            }
            return numbers;
        },
        shared);
    addTableExport(
        ui->_5_tw_Summary, "comparison_summary",
        [this] { return summariseComparison(shown.truth.comparison, shown.truth.levels); }, shared);
    addTableExport(
        ui->_5_tw_aveUnderEstOverEst, "comparison_errors",
        [this] {
            Table numbers;
            for (const LevelComparison& level : qAsConst(shown.truth.comparison)) {
                numbers.append(QVector<double>{level.meanAbsoluteError});
            }
            return numbers;
        },
        shared);
}

void MainWindow::addChartExports(const QList<QAction*>& shared)
{
    using Remarks = QStringList (*)(const StudyResults&, const CurrentInputs&);
    const auto add = [this, &shared](QCustomPlot* plot, ChartExportSettings settings,
                                     Remarks remarks) {
        if (remarks != nullptr) {
            settings.remarks = [this, remarks] { return remarks(results(), currentInputs()); };
        }
        return new ChartExport(plot, settings, shared);
    };
    const auto fitResults = [this] { resultsHistogram->showAll(); };
    const auto fitDoses = [this] { doseHistogram->showAll(); };
    const ChartReading histogram{ChartKind::Histogram, {}, {}};
    // The axis of the typical curve names the time variable.
    const ChartReading typicalCurve{ChartKind::Curve, "Dose", {}};
    const ChartReading probability{ChartKind::Curve, {}, " %"};
    const ChartReading counts{ChartKind::Bands, "Level", {}};
    add(ui->_0_cp_rawResHistoGram, {histogram, "bootstrap_histogram", fitResults, {}, {}}, nullptr);
    add(ui->_1_cp_typicalDRPlot, {typicalCurve, "typical_endpoint", {}, {}, {}},
        typicalCurveRemarks);
    const auto noteError = [this](double dose) { return errorText(shown.curve, dose); };
    addCertaintyEntries(
        add(ui->_3_cp_PoS, {probability, "probability", {}, {}, noteError}, curveRemarks), true);
    addCertaintyEntries(add(ui->_4_cp_doseChoiceDistribution,
                            {histogram, "dose_distribution", fitDoses, {}, {}}, selectionRemarks),
                        false);
    const ChartNote ofLevel = [this](double level) { return nominalNote(shown.truth, level); };
    add(ui->_5_cp_truthVisualization, {counts, "comparison_counts", {}, {}, ofLevel}, truthRemarks);
}

StudySource MainWindow::studySource() const
{
    return {"Velmora " VELMORA_VERSION, qVersion(), source.place, source.files};
}

/// The analysis as it stands.
QString MainWindow::analysisSummary() const
{
    const int dataSet = shown.weights.exists() ? qMax(0, ui->_2_sb_dataNumber->value()) : -1;
    return summaryText(currentInputs(), results(), dataSet, studySource(), allFindings());
}
