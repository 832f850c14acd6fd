// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Page "-1": import of raw_results files.

#include "app/charts/histogramview.h"
#include "app/widgets/droptarget.h"
#include "app/widgets/messagebox.h"
#include "app/widgets/progressloop.h"
#include "app/window/mainwindow.h"
#include "io/csv.h"
#include "ui_mainwindow.h"

#include <QFile>
#include <QFileDialog>

namespace {

const char noFileText[] = "raw results file cannot be found";
const char notFoundText[] =
    "raw results file cannot be found in this folder, check the namr format definition.";
const char headerMismatchText[] = "Headers of the raw_results files do not match.";
const char importFailedText[] = "raw_results file import failed.";

/// The piece of the file's name between "raw_results_" and ".csv".
QString modelNameOf(const QString& path)
{
    const QString fileName = path.split('/').last();
    return fileName.split("raw_results_").last().split(".csv").first();
}

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

} // namespace

void MainWindow::on___pb_importFbF_clicked()
{
    const QStringList paths =
        QFileDialog::getOpenFileNames(this, "Select PsN bootstrap raw_results files.");
    if (paths.isEmpty()) {
        showMessage(this, noFileText);
        ui->__mainToolBox->setCurrentIndex(0);
        return;
    }
    importFiles(paths);
}

/// Imports one model per file; at least one file.
void MainWindow::importFiles(QStringList paths)
{
    paths.sort(Qt::CaseSensitive);
    ui->__lb_directory->setText(paths.first().section('/', 0, -2));
    resultsPlace = ui->__lb_directory->text();

    clearResults();
    rawResults.resize(paths.size());
    QStringList names;
    for (int model = 0; model < paths.size(); ++model) {
        const QString& path = paths.at(model);
        rawResultsHeaders.append(csvWithHeaderReadHeader(path));
        rawResults[model].append(csvWithHeaderReadToDouble(path));
        names.append(modelNameOf(path));
        sourceFiles.append(path.section('/', -1));
    }
    showDataSetSelectors(false);
    showImport(names);
}

void MainWindow::on___pb_import_clicked()
{
    clearResults(); // even if the dialog is cancelled
    const QString directory = QFileDialog::getExistingDirectory(
        this, "Select the directory where PsN bootstrap raw_results files are.", QString(),
        QFileDialog::ShowDirsOnly);
    importFolder(directory);
}

/// Imports every model and data set whose file's name fits the template.
void MainWindow::importFolder(const QString& directory)
{
    clearResults();
    ui->__lb_directory->setText(directory);
    resultsPlace = directory;

    int modelCount = 0;
    while (QFile::exists(rawResultsFileName(directory, modelCount, 0))) {
        ++modelCount;
    }
    if (modelCount == 0) {
        showNotFound();
        return;
    }
    rawResults.resize(modelCount);
    for (int model = 0; model < modelCount; ++model) {
        sourceFiles.append(fileNameTemplate(model, "*"));
    }
    {
        ProgressLoop progress(this, "Importing Simulation Data...", "Abort Import", modelCount);
        readFirstModel(directory, progress);
        const int dataSetCount = rawResults.first().size();
        bool goesOn = progress.advance(1);
        for (int model = 1; goesOn && model < modelCount; ++model) {
            readFurtherModel(directory, model, dataSetCount, progress);
            goesOn = progress.advance(model + 1);
        }
        if (!goesOn) {
            renewResultFindings();
            return;
        }
    }
    showDataSetSelectors(true);
    showImport(numberedModelNames(modelCount));
}

void MainWindow::showNotFound()
{
    showMessage(this, notFoundText);
    ui->__mainToolBox->setCurrentIndex(0);
}

/// Makes room for other results, whose histograms choose their ranges anew.
void MainWindow::clearResults()
{
    rawResults.clear();
    rawResultsHeaders.clear();
    ++resultsVersion;
    sourceFiles.clear();
    resultsHistogram->forget();
    doseHistogram->forget();
    renewResultFindings();
}

QString MainWindow::rawResultsFileName(const QString& directory, int model, int dataSet) const
{
    return directory + '/' + fileNameTemplate(model, QString::number(dataSet));
}

QString MainWindow::fileNameTemplate(int model, const QString& dataSet) const
{
    return "raw_results_" + ui->_m1_le_modelNumPrefex->text() + QString::number(model)
           + ui->_m1_le_dataNumberPrefex->text() + dataSet + ui->_m1_le_dataNumberSuffix->text();
}

/// Lets files that are dropped on the page be imported as though chosen by its buttons, and
/// a project be opened.
void MainWindow::acceptDrops()
{
    new DropTarget(ui->page_6, [this](DroppedKind kind, const QStringList& paths) {
        switch (kind) {
        case DroppedKind::ResultFiles:
            importFiles(paths);
            break;
        case DroppedKind::Folder:
            importFolder(paths.first());
            break;
        case DroppedKind::Project:
            openProject(paths.first());
            break;
        case DroppedKind::Unknown:
            break;
        }
    });
}

/// Reads the data sets of model 0, whose number is that of every model.
void MainWindow::readFirstModel(const QString& directory, ProgressLoop& progress)
{
    rawResultsHeaders.append(csvWithHeaderReadHeader(rawResultsFileName(directory, 0, 0)));
    for (int dataSet = 0;; ++dataSet) {
        const QString path = rawResultsFileName(directory, 0, dataSet);
        if (!QFile::exists(path)) {
            return;
        }
        // Compared under the default name by intent, whatever the template says.
        const QString defaultPath =
            directory + "/raw_results_estimation_model0_data" + QString::number(dataSet) + ".csv";
        if (csvWithHeaderReadHeader(defaultPath) != rawResultsHeaders.first()) {
            showMessage(this, headerMismatchText);
            return;
        }
        rawResults.first().append(csvWithHeaderReadToDouble(path));
        if (!progress.poll()) {
            return;
        }
    }
}

void MainWindow::readFurtherModel(const QString& directory, int model, int dataSetCount,
                                  ProgressLoop& progress)
{
    rawResultsHeaders.append(csvWithHeaderReadHeader(rawResultsFileName(directory, model, 0)));
    for (int dataSet = 0; dataSet < dataSetCount; ++dataSet) {
        const QString path = rawResultsFileName(directory, model, dataSet);
        if (QFile::exists(path)) {
            rawResults[model].append(csvWithHeaderReadToDouble(path));
        } else if (dataSet == 0) {
            showMessage(this, importFailedText);
            return;
        } else {
            // A model estimated on fewer data sets repeats its last one.
            rawResults[model].append(rawResults.at(model).last());
        }
        if (!progress.poll()) {
            return;
        }
    }
}

QStringList MainWindow::numberedModelNames(int count)
{
    QStringList names;
    for (int model = 0; model < count; ++model) {
        names.append(QString("model %1").arg(model));
    }
    return names;
}

/// Sets all pages up for newly imported data.
void MainWindow::showImport(const QStringList& modelNames)
{
    ui->_2_tw_weightDefinition->setRowCount(modelNames.size());
    setWeightColumns(modelNames.size());
    showModels(modelNames);
    renewTypicalDRPlot();
    renewRelativeWeights();
}

/// Sets the model selectors, the definitions and page "0" up for the results as they are.
void MainWindow::showModels(const QStringList& modelNames)
{
    const int modelCount = rawResults.size();
    resizeEndPoints(modelNames);
    ui->__mainToolBox->show();
    ui->_0_sb_model->setMaximum(modelCount - 1);
    ui->_1_tw_endPoints->setRowCount(modelCount);
    setDataSetMaximum(rawResults.value(ui->_0_sb_model->value()).size() - 1);
    showModelNames();
    refresh_0_tw_RawResults();
    refresh_0_cp_rawResHistoGram();
    refresh_1_tw_rawResLabels();
    refresh__1_tw_etaDefinition();
    renewResultFindings();
}

void MainWindow::showDataSetSelectors(bool visible)
{
    for (QWidget* widget :
         {static_cast<QWidget*>(ui->_0_sb_data), static_cast<QWidget*>(ui->_2_sb_dataNumber),
          static_cast<QWidget*>(ui->_3_cb_dataNumber), static_cast<QWidget*>(ui->_0_lb_dataNumber),
          static_cast<QWidget*>(ui->_2_lb_dataNumber),
          static_cast<QWidget*>(ui->_3_lb_dataNumber)}) {
        widget->setVisible(visible);
    }
}

/// -1 for a model without data sets; the next import makes 0 the lowest number again.
void MainWindow::setDataSetMaximum(int maximum)
{
    for (QSpinBox* selector : {ui->_0_sb_data, ui->_2_sb_dataNumber, ui->_3_cb_dataNumber}) {
        selector->setRange(qMin(0, maximum), maximum);
    }
}

/// Gives every model a definition, named and with the current column settings. Expressions
/// stay; new definitions take the choices that page "1" shows.
void MainWindow::resizeEndPoints(const QStringList& modelNames)
{
    const int definedBefore = endPoints.size();
    endPoints.resize(modelNames.size());
    for (int model = 0; model < endPoints.size(); ++model) {
        endPoint& definition = endPoints[model];
        definition.name = modelNames.at(model);
        definition.colNumOFV = colNumOFV;
        definition.colNumTHETA1 = colNumTHETA1;
        definition.colNumThird = colNumThird;
        if (model >= definedBefore) {
            definition.numSimulations = ui->_1_sb_numSimulations->value();
            definition.populationSummary = shownPopulationSummary();
        }
    }
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

void MainWindow::on__m1_le_colNumOFV_textEdited(const QString& text)
{
    readColumnNumber(ui->_m1_le_colNumOFV, text, colNumOFV, &endPoint::colNumOFV);
    renewRelativeWeights();
}

void MainWindow::on__m1_le_colNumTHETA1_textEdited(const QString& text)
{
    readColumnNumber(ui->_m1_le_colNumTHETA1, text, colNumTHETA1, &endPoint::colNumTHETA1);
    renewTypicalDRPlot();
}

/// Takes the typed column number over everywhere, or puts the last valid one back.
void MainWindow::readColumnNumber(QLineEdit* edit, const QString& text, int& column,
                                  int endPoint::*endPointColumn)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber, 10);
    if (!isNumber) {
        edit->setText(QString::number(column));
        return;
    }
    column = number;
    for (endPoint& definition : endPoints) {
        definition.*endPointColumn = number;
    }
    renewCheckUp();
    renewFormulaFindings();
    nameColumns();
}
