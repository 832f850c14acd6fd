// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Page "3": probability of achieving the target value.

#include "analysis/calculation.h"
#include "app/aplot.h"
#include "app/widgets/boundedit.h"
#include "app/widgets/progressloop.h"
#include "app/widgets/redrawthrottle.h"
#include "app/window/mainwindow.h"
#include "report/curvegraph.h"
#include "ui_mainwindow.h"

namespace {

/// The growing curve is drawn about 30 times a second at most.
constexpr RedrawThrottle::Pause curvePause{20, 33'000'000};

void setUpAxes(QCustomPlot* plot, const QVector<double>& doses, const QString& doseLabel)
{
    setAxisRange(plot->xAxis, doses);
    plot->xAxis->setLabel(doseLabel);
    setAxisRange(plot->yAxis, 0, 100);
    plot->yAxis->setLabel("Probability");
}

/// Adds the Monte Carlo errors, and the evaluation itself where memory allows it next to the bytes
/// that are kept elsewhere.
void addCertainty(ProbabilityCurve& curve, const Study& study, const Evaluation& evaluation,
                  qint64 bytesElsewhere)
{
    if (evaluation.exists()) {
        curve.errors = monteCarloErrors(study, evaluation);
    }
    curve.evaluation = keptBeside(evaluation, bytesElsewhere);
}

} // namespace

void MainWindow::on__3_pb_calculatePoS_clicked()
{
    refresh_3_cp_PoS();
}

/// Computes the curve of the chosen data set sample by sample and shows how it settles.
void MainWindow::refresh_3_cp_PoS()
{
    if (endPoints.isEmpty()) {
        return;
    }
    const int dataSet = qMax(0, ui->_3_cb_dataNumber->value());
    bringUpToDate(endPoints, possibleDoses);
    const Study now = studyToKeep();
    QCustomPlot* plot = ui->_3_cp_PoS;
    setUpAxes(plot, possibleDoses, doseName(endPoints));

    ProbabilityRun run(now, dataSet);
    const int sampleCount = run.sampleCount();
    ProgressLoop progress(this, "Calculating probability of success.", "Abort Calculation",
                          sampleCount);
    plot->clearGraphs();
    auto* graph = new CurveGraph(plot); // owned by the plot
    graph->setPen(thickPen(plotColor));
    ProbabilityCurve& curve = shown.curve;
    curve = {possibleDoses,
             {},
             0,
             sampleCount,
             boundNotes() + usableWeights.ofDataSet(now, dataSet),
             probabilityProvenance(now, dataSet)};
    curve.before = circumstances();

    const auto showState = [&](int sample) {
        progress.setLabel(
            QString("Calculating probability of success using bootstrap samples 0-%1.")
                .arg(sample));
        curve.probability =
            now.selecting ? calculate_PoS_aux_modelSelect(run.endpoints())
                          : calculate_PoS_aux_modelAve(run.endpoints(), run.relativeWeights());
        curve.samples = qMin(sample + 1, sampleCount);
        graph->setData(possibleDoses, curve.probability, true);
        plot->replot();
    };
    RedrawThrottle throttle(curvePause);
    throttle.startPaused();
    bool goesOn = true;
    for (int sample = 0; goesOn && sample < sampleCount; ++sample) {
        if (!run.evaluateNext([&progress] { return progress.poll(); })) {
            sample > 0 ? showState(sample - 1) : plot->replot(); // no curve of no sample
            break;
        }
        const bool isLast = sample + 1 == sampleCount;
        if (isLast || throttle.isDue()) {
            throttle.run([&] { showState(sample); });
        }
        goesOn = progress.advance(sample);
        if (!goesOn) {
            showState(sample);
        }
    }
    if (sampleCount == 0) {
        showState(0);
    }
    addCertainty(curve, now, run.evaluation(), keptBytes(shown.selection));
    changed(Change::Calculated);
}

QVector<double> MainWindow::calculate_PoS(int dataSet, ProgressLoop* progress,
                                          Evaluation* evaluation)
{
    bringUpToDate(endPoints, possibleDoses);
    EndpointCache* used = ui->_4_cb_useCash->isChecked() ? &cache : nullptr;
    return probabilityCurve(
               studyToKeep(), qMax(0, dataSet), used,
               [progress] { return progress == nullptr || progress->poll(); }, evaluation)
        .value_or(QVector<double>());
}

QVector<double>
MainWindow::calculate_PoS_aux_modelSelect(QVector<QVector<QVector<double>>> endpoints)
{
    return probabilityBySelection(endpoints.value(0), possibleDoses.size(),
                                  {lowerBound, upperBound});
}

QVector<double> MainWindow::calculate_PoS_aux_modelAve(QVector<QVector<QVector<double>>> endpoints,
                                                       QVector<QVector<double>> weights)
{
    return probabilityByAveraging(endpoints, weights, ui->_3_cb_indOFVone->currentIndex() == 1,
                                  possibleDoses.size(), {lowerBound, upperBound});
}

void MainWindow::on__3_le_lowerBound_editingFinished()
{
    lowerBound = lowerBoundEdit->takeTyped();
    changed(Change::Interval);
}

void MainWindow::on__3_le_upperBound_editingFinished()
{
    upperBound = upperBoundEdit->takeTyped();
    changed(Change::Interval);
}

void MainWindow::on__3_sl_doseSlider_valueChanged(int value)
{
    if (value >= 0 && value < possibleDoses.size()) {
        ui->_3_lb_indpVar->setText("Dose (Independent Variable) = "
                                   + QString::number(possibleDoses.at(value), 'g', 6));
    }
}
