// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Page "3": probability of achieving the target value.

#include "analysis/probability.h"
#include "app/aplot.h"
#include "app/widgets/boundedit.h"
#include "app/widgets/progressloop.h"
#include "app/widgets/redrawthrottle.h"
#include "app/window/mainwindow.h"
#include "ui_mainwindow.h"

#include <QCryptographicHash>
#include <QDataStream>

#include <algorithm>

namespace {

/// Of the growing curve: drawn about 30 times a second at most.
constexpr RedrawThrottle::Pause curvePause{20, 33'000'000};

/// False if the user aborts.
bool evaluateAll(EndpointRun& run, ProgressLoop* progress)
{
    for (int sample = 0; sample < run.sampleCount(); ++sample) {
        run.evaluateNext();
        if (progress != nullptr && !progress->poll()) {
            return false;
        }
    }
    return true;
}

/// Whether the endpoints of a data set, [model][sample][dose], hold every model's.
bool isComplete(const QVector<Table>& endpoints)
{
    return std::none_of(endpoints.begin(), endpoints.end(),
                        [](const Table& samples) { return samples.contains(QVector<double>()); });
}

} // namespace

bool MainWindow::isSelecting() const
{
    return ui->_3_cb_aveORselect->currentIndex() == 1;
}

bool MainWindow::usesIndividualOfv() const
{
    return ui->_3_cb_indOFVone->currentIndex() == 1;
}

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
    bringEndPointsUpToDate();
    QCustomPlot* plot = ui->_3_cp_PoS;
    setAxisRange(plot->xAxis, possibleDoses);
    plot->xAxis->setLabel(doseName());
    setAxisRange(plot->yAxis, 0, 100);
    plot->yAxis->setLabel("Probability");

    const bool selecting = isSelecting();
    const QVector<int> selected = selecting ? make_ModelSelection(dataSet) : QVector<int>();
    const Table weights = selecting ? Table() : calculate_relativeWeight(dataSet);
    EndpointRun run(study(), dataSet,
                    selecting ? selectionPlan(selected, usesIndividualOfv())
                              : averagingPlan(weights, usesIndividualOfv(), endPoints.size()));
    const int sampleCount = run.sampleCount();
    ProgressLoop progress(this, "Calculating probability of success.", "Abort Calculation",
                          sampleCount);
    plot->clearGraphs();
    QCPGraph* graph = plot->addGraph();
    graph->setPen(curvePen());
    curveVersion = resultsVersion;
    graph->setName(QString("data set %1, %2").arg(dataSet).arg(choicesText()));

    const auto showState = [&](int sample) {
        progress.setLabel(
            QString("Calculating probability of success using bootstrap samples 0-%1.")
                .arg(sample));
        const QVector<double> probability =
            selecting ? calculate_PoS_aux_modelSelect(run.endpoints())
                      : calculate_PoS_aux_modelAve(run.endpoints(), weights);
        graph->setData(possibleDoses, probability, true);
        plot->replot();
    };
    RedrawThrottle throttle(curvePause);
    throttle.startPaused();
    bool goesOn = true;
    for (int sample = 0; goesOn && sample < sampleCount; ++sample) {
        run.evaluateNext();
        const bool isLast = sample + 1 == sampleCount;
        if (isLast || throttle.isDue()) {
            throttle.run([&] { showState(sample); });
        }
        goesOn = progress.advance(sample);
        if (!goesOn) {
            showState(sample);
            graph->setName(graph->name()
                           + QString(", samples 0-%1 of %2 only").arg(sample).arg(sampleCount));
        }
    }
    if (sampleCount == 0) {
        showState(0);
    }
}

QVector<double> MainWindow::calculate_PoS(int dataSet, ProgressLoop* progress)
{
    dataSet = qMax(0, dataSet);
    if (possibleDoses.isEmpty()) {
        return {};
    }
    bringEndPointsUpToDate();
    const bool selecting = isSelecting();
    const Table weights = selecting ? Table() : calculate_relativeWeight(dataSet);
    const std::optional<QVector<Table>> endpoints =
        selecting ? selectedEndpoints(dataSet, progress)
                  : averagedEndpoints(dataSet, weights, progress);
    if (!endpoints) {
        return {};
    }
    return selecting ? calculate_PoS_aux_modelSelect(*endpoints)
                     : calculate_PoS_aux_modelAve(*endpoints, weights);
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
    return probabilityByAveraging(endpoints, weights, usesIndividualOfv(), possibleDoses.size(),
                                  {lowerBound, upperBound});
}

/// The cache of a data set, emptied if it was made for another number of models; nullptr
/// while the cache is switched off.
QVector<Table>* MainWindow::cacheEntry(int dataSet)
{
    if (!ui->_4_cb_useCash->isChecked()) {
        return nullptr;
    }
    if (dataSet >= doseChoiceCash.size()) {
        doseChoiceCash.resize(dataSet + 1);
    }
    QVector<Table>& entry = doseChoiceCash[dataSet];
    if (entry.size() != endPoints.size()) {
        entry.clear();
    }
    return &entry;
}

void MainWindow::keepInCache(int dataSet, const QVector<Table>& endpoints)
{
    doseChoiceCash[dataSet] = endpoints;
    cacheOrigins.resize(qMax(cacheOrigins.size(), dataSet + 1));
    cacheOrigins[dataSet] = cacheOrigin();
}

/// What endpoints computed now depend on.
MainWindow::CacheOrigin MainWindow::cacheOrigin() const
{
    QCryptographicHash endpoints(QCryptographicHash::Sha1);
    QCryptographicHash weights(QCryptographicHash::Sha1);
    const auto add = [](QCryptographicHash& hash, const auto&... values) {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        (stream << ... << values);
        hash.addData(bytes);
    };
    add(endpoints, resultsVersion, possibleDoses);
    add(weights, ui->_2_cb_logScale->isChecked(), usesIndividualOfv());
    for (const endPoint& definition : endPoints) {
        add(endpoints, definition.endPointParser.expression, definition.colNumTHETA1);
        if (definition.highestEta > 0) {
            add(endpoints, definition.omega, definition.omegaColumns, definition.populationSummary,
                definition.numSimulations);
        }
        add(weights, definition.weightParser.expression, definition.colNumOFV);
    }
    return {endpoints.result(), weights.result()};
}

/// The model selected for each sample of a data set.
QVector<int> MainWindow::selectionOf(int dataSet)
{
    QVector<int> selected = make_ModelSelection(dataSet);
    if (!selected.isEmpty() && !usesIndividualOfv()) {
        selected.fill(selected.first());
    }
    return selected;
}

/// Whether the cache would be used although it was made from something else. Averaging
/// takes the models that had a weight then; selection computes anew where it lacks one.
QStringList MainWindow::cacheFindings()
{
    const CacheOrigin now = cacheOrigin();
    const int dataSetCount = qMin(doseChoiceCash.size(), rawResults.value(0).size());
    int misfits = 0;
    for (int dataSet = 0; ui->_4_cb_useCash->isChecked() && dataSet < dataSetCount; ++dataSet) {
        const QVector<Table>& entry = doseChoiceCash.at(dataSet);
        const CacheOrigin origin = cacheOrigins.value(dataSet);
        const bool isWhole = isComplete(entry);
        const bool fits = origin.endpoints == now.endpoints
                          && (isWhole || isSelecting() || origin.weights == now.weights);
        if (fits || entry.isEmpty() || entry.size() != endPoints.size()) {
            continue;
        }
        const bool isUsed = isWhole || !isSelecting() || holdsSelected(entry, selectionOf(dataSet));
        misfits += isUsed ? 1 : 0;
    }
    if (misfits == 0) {
        return {};
    }
    return {QString("The cache of %1 of %2 data sets was made with other data, doses, endpoints or "
                    "weights and will be used all the same: press \"Clear Cash\".")
                .arg(misfits)
                .arg(dataSetCount)};
}

/// The endpoints by which a data set is judged with model averaging, [model][sample][dose];
/// none if the user aborts. A cached entry is trusted as it is.
std::optional<QVector<Table>> MainWindow::averagedEndpoints(int dataSet, const Table& weights,
                                                            ProgressLoop* progress)
{
    if (weights.isEmpty()) {
        return QVector<Table>();
    }
    QVector<Table>* cached = cacheEntry(dataSet);
    if (cached != nullptr && !cached->isEmpty()) {
        return *cached;
    }
    EndpointRun run(study(), dataSet,
                    averagingPlan(weights, usesIndividualOfv(), endPoints.size()));
    if (!evaluateAll(run, progress)) {
        return std::nullopt;
    }
    if (cached != nullptr) {
        keepInCache(dataSet, run.endpoints());
    }
    return run.endpoints();
}

/// The same with model selection: one entry, of the model selected for each sample. The
/// cache holds all models, so that it serves other selections too.
std::optional<QVector<Table>> MainWindow::selectedEndpoints(int dataSet, ProgressLoop* progress)
{
    const QVector<int> selected = selectionOf(dataSet);
    if (selected.isEmpty()) {
        return QVector<Table>();
    }
    QVector<Table>* cached = cacheEntry(dataSet);
    if (cached != nullptr && !cached->isEmpty() && holdsSelected(*cached, selected)) {
        return QVector<Table>{pickSelected(*cached, selected)};
    }
    EndpointRun run(study(), dataSet,
                    cached == nullptr ? selectionPlan(selected, true)
                                      : completePlan(selected.size(), endPoints.size()));
    if (!evaluateAll(run, progress)) {
        return std::nullopt;
    }
    if (cached == nullptr) {
        return run.endpoints();
    }
    keepInCache(dataSet, run.endpoints());
    return QVector<Table>{pickSelected(run.endpoints(), selected)};
}

/// The dose as model 0's endpoint expression calls it.
QString MainWindow::doseName()
{
    return endPoints.isEmpty() ? QString()
                               : endPoints.first().endPointParser.extract_variables().at(DoseSlot);
}

void MainWindow::on__3_le_lowerBound_editingFinished()
{
    lowerBound = lowerBoundEdit->takeTyped();
}

void MainWindow::on__3_le_upperBound_editingFinished()
{
    upperBound = upperBoundEdit->takeTyped();
}

void MainWindow::on__3_sl_doseSlider_valueChanged(int value)
{
    if (value >= 0 && value < possibleDoses.size()) {
        ui->_3_lb_indpVar->setText("Dose (Independent Variable) = "
                                   + QString::number(possibleDoses.at(value), 'g', 6));
    }
}
