// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Menu "File": saving and restoring the analysis.

#include "analysis/projectstudy.h"
#include "app/widgets/boundedit.h"
#include "app/widgets/memory.h"
#include "app/window/mainwindow.h"
#include "io/csv.h"
#include "io/projectfile.h"
#include "io/safefile.h"
#include "ui_mainwindow.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QSignalBlocker>

#include <algorithm>

namespace {

/// The texts of column 0, empty where a cell has no item.
QStringList firstColumn(const QTableWidget* table, int rowCount)
{
    QStringList texts;
    for (int row = 0; row < rowCount; ++row) {
        const QTableWidgetItem* item = table->item(row, 0);
        texts.append(item == nullptr ? QString("") : item->text());
    }
    return texts;
}

/// Whether the path names something that is neither a file nor a folder, such as a pipe, which
/// would let the window wait.
bool isDevice(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() && !info.isFile() && !info.isDir();
}

void chooseItem(QComboBox* box, int index)
{
    if (index >= 0 && index < box->count()) {
        box->setCurrentIndex(index);
    }
}

} // namespace

void MainWindow::saveModels()
{
    whileMemoryLasts(this, [this] {
        const QString path = QFileDialog::getSaveFileName(this, "Save...", "", "");
        if (!path.isEmpty()) {
            saveProject(path);
        }
    });
}

void MainWindow::saveProject(const QString& path)
{
    // Unbuffered, so that a full disk is noticed by the write that it concerns.
    SafeFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)
        || !writeProject(projectItems(), &file) || !file.commit()) {
        showFileError(file.errorString());
    }
}

void MainWindow::showFileError(const QString& error)
{
    QMessageBox::information(this, tr("Unable to open file"), error);
}

ProjectItems MainWindow::projectItems() const
{
    const int definedRows = qMin(ui->_1_tw_endPoints->rowCount(), endPoints.size());
    const int weightRows = qMin(ui->_2_tw_weightDefinition->rowCount(), endPoints.size());
    ProjectItems items;
    items.rawResults = rawResults;
    items.rawResultsHeaders = rawResultsHeaders;
    items.possibleDoses = ui->_1_le_possibleDoses->text();
    items.endPointExpressions = firstColumn(ui->_1_tw_endPoints, definedRows);
    for (int model = 0; model < definedRows; ++model) {
        items.omegas.append(endPoints.at(model).omega);
        items.omegaColumns.append(endPoints.at(model).omegaColumns);
    }
    items.populationSummary = ui->_1_cb_iivEndPoint->currentIndex();
    items.weightExpressions = firstColumn(ui->_2_tw_weightDefinition, weightRows);
    items.logScale = ui->_2_cb_logScale->isChecked();
    items.averageOrSelection = ui->_3_cb_aveORselect->currentIndex();
    items.oneOrIndividualOfv = ui->_3_cb_indOFVone->currentIndex();
    items.lowerBound = ui->_3_le_lowerBound->text();
    items.upperBound = ui->_3_le_upperBound->text();
    items.doseChoice = doseChoice;
    items.doseChoiceLabels = doseChoiceLabels;
    items.doseChoiceVector = doseChoiceVector;
    items.doseChoiceCash = doseChoiceCash;
    return items;
}

void MainWindow::loadModels()
{
    const QString path = QFileDialog::getOpenFileName(this, "Open...", "", "");
    if (!path.isEmpty()) {
        openProject(path);
    }
}

void MainWindow::openProject(const QString& path)
{
    ui->__lb_directory->setText(path);
    if (isDevice(path)) {
        showFileError("Not a regular file");
        return;
    }
    QFile file(path);
    const DecodedProject project =
        file.open(QIODevice::ReadOnly) ? readProject(file) : DecodedProject();
    if (file.error() != QFileDevice::NoError) {
        showFileError(file.errorString());
        return;
    }
    if (project.completeItems == 0 && !project.endsInsideItem) {
        return; // nothing in the file, nothing changes
    }
    // The items are applied in the order of the file, through the handlers of the widgets.
    isOpening = true;
    shown.isTypicalCurveGivenUp = false;
    loadResults(project);
    const Study restored =
        appliedProject({study(), lowerBoundEdit->bound(), upperBoundEdit->bound()}, project).study;
    loadEndPoints(project, restored);
    loadWeights(project);
    loadTarget(project);
    loadDoseChoice(project);
    isOpening = false;
    keepOrigins(project);
    changed(Change::ProjectLoaded);
}

/// Items 1 and 2, which are emptied before they are read.
void MainWindow::loadResults(const DecodedProject& project)
{
    source = {};
    source.place = ui->__lb_directory->text();
    source.read = {{sourceFile(source.place)}};
    rawResults = project.items.rawResults;
    if (project.completeItems >= 2 || project.endsInsideItem) {
        rawResultsHeaders = project.items.rawResultsHeaders;
        headings = headingsOf(rawResultsHeaders);
    }
    if (rawResults.isEmpty()) {
        changed(Change::ResultsCleared);
        resultsNotFound();
        return;
    }
    Study defined = study();
    defineModels(defined, numberedModelNames(rawResults.size()));
    endPoints = defined.endPoints;
    changed(Change::Opened);
}

/// Items 3 to 7, each as far as the file holds it.
void MainWindow::loadEndPoints(const DecodedProject& project, const Study& restored)
{
    const ProjectItems& items = project.items;
    if (project.completeItems >= 3) {
        ui->_1_le_possibleDoses->setText(items.possibleDoses);
    }
    const int rowCount = std::min({ui->_1_tw_endPoints->rowCount(),
                                   int(items.endPointExpressions.size()), int(endPoints.size())});
    for (int row = 0; row < rowCount; ++row) {
        // Nothing is simulated while the definition is incomplete.
        endPoints[row].numSimulations = 0;
        ui->_1_tw_endPoints->setItem(row, 0,
                                     new QTableWidgetItem(items.endPointExpressions.at(row)));
        // A reference taken before would dangle: the handlers keep copies of endPoints, so that
        // it is moved when it is next written.
        endPoint& definition = endPoints[row];
        definition.checkETA();
        if (project.completeItems >= 6) {
            const endPoint& from = restored.endPoints.at(row);
            definition.omega = from.omega;
            definition.omegaColumns = from.omegaColumns;
            definition.numEtas = from.numEtas;
        }
        definition.numSimulations = ui->_1_sb_numSimulations->value();
        changed(Change::OmegaRestored, row);
    }
    if (project.completeItems >= 7) {
        const QSignalBlocker quiet(ui->_1_cb_iivEndPoint);
        chooseItem(ui->_1_cb_iivEndPoint, items.populationSummary);
        // Also where the combo box shows it already.
        for (endPoint& definition : endPoints) {
            definition.populationSummary = restored.populationSummary;
        }
        changed(Change::Population);
    }
}

/// Items 8 and 9.
void MainWindow::loadWeights(const DecodedProject& project)
{
    if (project.completeItems >= 8) {
        const QStringList& expressions = project.items.weightExpressions;
        QTableWidget* table = ui->_2_tw_weightDefinition;
        {
            // One refresh below instead of one per row.
            const QSignalBlocker quiet(table);
            table->setRowCount(endPoints.size());
            for (int row = 0; row < qMin(table->rowCount(), expressions.size()); ++row) {
                table->setItem(row, 0, new QTableWidgetItem(expressions.at(row)));
                endPoints[row].weightParser.expression = expressions.at(row);
            }
        }
        changed(expressions.isEmpty() ? Change::NoWeightsRestored : Change::WeightsRestored);
    }
    if (project.completeItems >= 9) {
        ui->_2_cb_logScale->setChecked(project.items.logScale);
    }
}

/// Items 10 to 13.
void MainWindow::loadTarget(const DecodedProject& project)
{
    const ProjectItems& items = project.items;
    if (project.completeItems >= 10) {
        chooseItem(ui->_3_cb_aveORselect, items.averageOrSelection);
    }
    if (project.completeItems >= 11) {
        chooseItem(ui->_3_cb_indOFVone, items.oneOrIndividualOfv);
    }
    if (project.completeItems >= 12) {
        lowerBound = lowerBoundEdit->restore(items.lowerBound);
    }
    if (project.completeItems >= 13) {
        upperBound = upperBoundEdit->restore(items.upperBound);
    }
}

/// Items 14 to 17.
void MainWindow::loadDoseChoice(const DecodedProject& project)
{
    const ProjectItems& items = project.items;
    if (project.completeItems >= 14) {
        doseChoice = items.doseChoice;
    }
    if (project.completeItems >= 15) {
        doseChoiceLabels = items.doseChoiceLabels;
        csvDisplay(ui->_4_tw_doseChoice, doseChoice, doseChoiceLabels);
        ui->_4_le_probabilities->setText(doseChoiceLabels.join(","));
        changed(Change::DosesRestored);
    }
    if (project.completeItems >= 16) {
        doseChoiceVector = items.doseChoiceVector;
    }
}

/// What the doses and the cache were made from is not in the file, and taken to be what was
/// saved with them. Texts were typed for models whose names are not in the file, either.
void MainWindow::keepOrigins(const DecodedProject& project)
{
    texts = {};
    source.individualsAreOlder = true;
    if (project.completeItems >= 14) {
        shown.selection = {{}, {}, int(doseChoice.size()), true, {}, {}};
        if (!doseChoice.isEmpty()) {
            shown.selection.made = doseProvenance(studyToKeep());
        }
    }
    if (project.completeItems >= 17) {
        cache.restore(project.items.doseChoiceCash, endpointProvenance(studyToKeep()));
    }
}
