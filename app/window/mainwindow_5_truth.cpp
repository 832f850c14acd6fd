// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Page "5": simulation studies and their comparison with the true model. Its two imports
// are on page "-1".

#include "analysis/truth.h"
#include "app/aplot.h"
#include "app/charts/bandgraph.h"
#include "app/widgets/messagebox.h"
#include "app/widgets/progressloop.h"
#include "app/window/mainwindow.h"
#include "compat/qtversions.h"
#include "io/csv.h"
#include "report/curvegraph.h"
#include "ui_mainwindow.h"

#include <QFileDialog>
#include <QSignalBlocker>

#include <limits>

namespace {

const char simulationFilesTitle[] =
    "Select raw_results files for simulation models.  The number of files imported must be "
    "either one or the same number as number of simulations.";
const char simulationCountText[] =
    "The number of imported raw results files must be the same as number of simulations or one "
    "(if all the simulaitons were generated from the same model with the same parameters).";
const char trueModelTitle[] =
    "Select files with true model indicies (always start with 0!  i.e.,  0,1,2,3,...).";
const char trueModelFormatText[] =
    "The file imported does not follow the recognizable format.  Make sure that it is a csv file "
    "with either one row or column.";
const char headersText[] = "Some of the headers for the raw_results files for the simulation "
                           "models do not match with the estimation models.  Please double check.";
const char trueMedTitle[] = "Import file with true model and true MED.";
const char csvFilter[] = "*.csv";

constexpr int trueModelColumn = 0;
constexpr int theoreticalMedColumn = 1;

QColor bandColor(Qt::GlobalColor color)
{
    QColor band(color);
    band.setAlpha(150);
    return band;
}

} // namespace

void MainWindow::on__5_pb_importSimRawRes_clicked()
{
    const QStringList paths = QFileDialog::getOpenFileNames(this, simulationFilesTitle,
                                                            ui->__lb_directory->text(), csvFilter);
    simRawResults.clear();
    simRawResultsHeaders.clear();
    simulationSource = {};
    if (paths.size() == 1 || paths.size() == study().dataSetCount()) {
        readSimulationModels(paths);
    } else {
        showMessage(this, simulationCountText);
    }
    ui->_5_tw_trueModelTMED->setRowCount(simRawResults.size());
    changed(Change::Simulations);
}

/// Nothing stays if it is aborted: half of the simulations would fit no data set.
void MainWindow::readSimulationModels(const QStringList& paths)
{
    ProgressLoop progress(this, importLabel, abortImportText, paths.size(),
                          ProgressLoop::Construction::WhenNeeded);
    for (const QString& path : paths) {
        simulationSource.read.append(sourceFile(path));
        simRawResults.append(csvWithHeaderReadToDouble(path, &simulationSource.unread));
        simRawResultsHeaders.append(csvWithHeaderReadHeader(path, &simulationSource.unread));
        if (!progress.advance(simRawResults.size())) {
            simRawResults.clear();
            simRawResultsHeaders.clear();
            simulationSource = {};
            return;
        }
        simulationSource.files.append(path.section('/', -1));
    }
    simulationSource.fingerprint = rawResults.isEmpty() ? 0 : studyToKeep().fingerprint;
}

void MainWindow::on__5_pb_simTrueModel_clicked()
{
    const QString path =
        QFileDialog::getOpenFileName(this, trueModelTitle, ui->__lb_directory->text(), csvFilter);
    unreadTruth.clear();
    truthFile = sourceFile(path);
    const TrueModelNumbers read = trueModelNumbers(csvReadToDouble(path, &unreadTruth),
                                                   study().dataSetCount(), rawResults.size());
    trueModelIndices = read.numbers;
    if (!read.isValid) {
        changed(Change::Simulations);
        showMessage(this, trueModelFormatText);
        return;
    }
    QTableWidget* table = ui->_5_tw_trueModelTMED;
    {
        // One renewal below instead of one for every cell.
        const QSignalBlocker quiet(table);
        table->setRowCount(trueModelIndices.size());
        for (int row = 0; row < trueModelIndices.size(); ++row) {
            table->setItem(row, trueModelColumn,
                           new QTableWidgetItem(QString::number(trueModelIndices.at(row))));
        }
    }
    changed(Change::Simulations);
    // This is intended: shown after every import, whatever the headings are, so that the user
    // looks.
    showMessage(this, headersText);
}

void MainWindow::on__4_pb_compTruth_clicked()
{
    const bool byModels = !simRawResults.isEmpty();
    const bool hadMeds = ui->_5_tw_trueModelTMED->item(0, theoreticalMedColumn) != nullptr;
    trueMEDs.clear();
    TruthComparison& truth = shown.truth;
    truth = {};
    truth.levels = doseChoiceVector;
    truth.dataSetCount = byModels ? simRawResults.size() : study().dataSetCount();
    truth.chosen = shown.selection.made;
    truth.before = circumstances();
    const bool isComparable = byModels ? computeTheoreticalMeds() : readTrueMeds();
    truth.isFailed = !isComparable;
    truth.hadMeds = !isComparable && hadMeds;
    truth.dataSets = trueMEDs.size();
    truth.withoutMed = countMissing(trueMEDs);
    truth.made = truthProvenance(studyToKeep(), trueRows(), trueModelTexts(), doseChoice);
    if (isComparable || !byModels) {
        truth.comparison = compareWithTruth(doseChoice, trueMEDs);
    }
    if (!byModels && !doseChoice.isEmpty()) {
        showTheoreticalMeds(trueMEDs.size());
    }
    Table errors;
    for (const LevelComparison& level : qAsConst(truth.comparison)) {
        errors.append(QVector<double>{level.meanAbsoluteError});
    }
    csvDisplay(ui->_5_tw_Summary, summariseComparison(truth.comparison, truth.levels));
    csvDisplay(ui->_5_tw_aveUnderEstOverEst, errors);
    drawComparison();
    changed(Change::Calculated);
}

/// The first rows of the simulation models' results, by which true models are judged.
Table MainWindow::trueRows() const
{
    Table rows;
    for (const Table& table : simRawResults) {
        rows.append(table.value(0));
    }
    return rows;
}

/// The numbers of the true models as they stand in the table, null where a cell is missing.
QStringList MainWindow::trueModelTexts() const
{
    const QTableWidget* table = ui->_5_tw_trueModelTMED;
    QStringList numbers;
    for (int row = 0; row < table->rowCount(); ++row) {
        const QTableWidgetItem* item = table->item(row, trueModelColumn);
        numbers.append(item == nullptr ? QString() : item->text());
    }
    return numbers;
}

/// Asks for a file of true MEDs and rounds them up to candidate doses. A file that does not
/// fit the data sets leaves them empty, silently, and gives false.
bool MainWindow::readTrueMeds()
{
    const QString path =
        QFileDialog::getOpenFileName(this, trueMedTitle, ui->__lb_directory->text(), csvFilter);
    unreadTruth.clear();
    truthFile = sourceFile(path);
    const Table file = csvReadToDouble(path, &unreadTruth);
    if (rawResults.isEmpty() || file.isEmpty() || file.size() != study().dataSetCount()
        || file.first().size() <= theoreticalMedColumn) {
        return false;
    }
    {
        const QSignalBlocker quiet(ui->_5_tw_trueModelTMED);
        csvDisplay(ui->_5_tw_trueModelTMED, file);
    }
    for (const QVector<double>& row : file) {
        const double trueMed =
            row.value(theoreticalMedColumn, std::numeric_limits<double>::quiet_NaN());
        trueMEDs.append(roundedUpToDose(trueMed, possibleDoses));
    }
    return true;
}

/// Evaluates the true model of every simulated data set. False, silently, if the table
/// does not name the models.
bool MainWindow::computeTheoreticalMeds()
{
    truthComparison.clear();
    bringUpToDate(endPoints, possibleDoses);
    if (!readTrueModelTable() && !possibleDoses.isEmpty()) {
        return false;
    }
    ProgressLoop progress(this, "Calculating...", "Abort Calculation", simRawResults.size());
    const TheoreticalMeds found = theoreticalMeds(
        study(), trueRows(), trueModelIndices,
        [&progress](int done) { return progress.advance(done); },
        [&progress] { return progress.poll(); });
    truthComparison = found.endpoints;
    trueMEDs = found.meds;
    // After an abort nothing stays from an earlier run for the data sets that were not done.
    showTheoreticalMeds(simRawResults.size());
    return true;
}

/// Reads the true model numbers back from the table, where the user may have changed them.
/// Stops at the first that is missing or names no model, and gives false.
bool MainWindow::readTrueModelTable()
{
    trueModelIndices.clear();
    for (const QString& text : trueModelTexts()) {
        bool isNumber = false;
        const int number = wholeNumber(text, &isNumber);
        if (!isNumber) {
            return false;
        }
        trueModelIndices.append(number);
        if (number < 0 || number >= endPoints.size()) {
            return false;
        }
    }
    return true;
}

/// Shows the theoretical MEDs in so many rows, as far as the table has them; NaN where there
/// is none.
void MainWindow::showTheoreticalMeds(int rowCount)
{
    QTableWidget* table = ui->_5_tw_trueModelTMED;
    const QSignalBlocker quiet(table);
    for (int row = 0; row < qMin(rowCount, table->rowCount()); ++row) {
        const double dose = trueMEDs.value(row, std::numeric_limits<double>::quiet_NaN());
        table->setItem(row, theoreticalMedColumn,
                       new QTableWidgetItem(QString::number(dose, 'g', 6)));
    }
}

/// Draws, per probability level, the data sets whose estimate is above, at and below the
/// theoretical MED as stacked bands, and the nominal count as a line across them.
void MainWindow::drawComparison()
{
    const QVector<double> levels =
        shown.truth.levels.mid(0, qMin(shown.truth.comparison.size(), shown.truth.levels.size()));
    if (levels.isEmpty()) {
        return;
    }
    QVector<double> nominal;
    QVector<double> over;
    QVector<double> overOrEqual;
    QVector<double> all;
    for (int i = 0; i < levels.size(); ++i) {
        const LevelComparison& level = shown.truth.comparison.at(i);
        nominal.append(nominalCount(level, levels.at(i)));
        over.append(level.over);
        overOrEqual.append(level.over + level.equal);
        all.append(level.all());
    }
    QCustomPlot* plot = ui->_5_cp_truthVisualization;
    plot->clearGraphs();
    new CurveGraph(plot); // owned by the plot
    const auto addBand = [plot, &levels](const QVector<double>& counts, Qt::GlobalColor color,
                                         QCPGraph* below) {
        auto* band = new BandGraph(plot); // owned by the plot
        band->setData(levels, counts, true);
        band->setPen(QPen(Qt::white));
        band->setBrush(bandColor(color));
        band->setChannelFillGraph(below);
        return band;
    };
    QCPGraph* overBand = addBand(over, Qt::yellow, nullptr);
    QCPGraph* equalBand = addBand(overOrEqual, Qt::green, overBand);
    addBand(all, Qt::red, equalBand);
    QPen pen(Qt::black);
    pen.setWidth(2);
    plot->graph(0)->setPen(pen);
    showBandLegend(plot);
    plot->graph(0)->setData(levels, nominal, true);
    setAxisRange(plot->yAxis, 0, qMax(1.0, all.first()));
    setAxisRange(plot->xAxis, shown.truth.levels);
    plot->xAxis->setLabel("Probability level");
    plot->yAxis->setLabel("Data sets");
    plot->replot();
}
