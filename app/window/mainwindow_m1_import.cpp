// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Page "-1": import of raw_results files.

#include "app/widgets/messagebox.h"
#include "app/widgets/progressloop.h"
#include "app/window/mainwindow.h"
#include "compat/qtversions.h"
#include "io/csv.h"
#include "ui_mainwindow.h"

#include <QFile>
#include <QFileDialog>

namespace {

const char noFileText[] = "raw results file cannot be found";
const char headerMismatchText[] = "Headers of the raw_results files do not match.";
const char importFailedText[] = "raw_results file import failed.";

/// The piece of the file's name between "raw_results_" and ".csv".
QString modelNameOf(const QString& path)
{
    const QString fileName = path.split('/').last();
    return fileName.split("raw_results_").last().split(".csv").first();
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

/// Imports one model per file; at least one file. What was read is kept if it is aborted.
void MainWindow::importFiles(QStringList paths)
{
    paths.sort(Qt::CaseSensitive);
    ui->__lb_directory->setText(paths.first().section('/', 0, -2));
    clearResults(ui->__lb_directory->text());
    setModelCount(paths.size());
    QStringList names;
    for (const QString& path : qAsConst(paths)) {
        names.append(modelNameOf(path));
        source.files.append(path.section('/', -1));
    }
    {
        ProgressLoop progress(this, importLabel, abortImportText, paths.size(),
                              ProgressLoop::Construction::WhenNeeded);
        bool goesOn = true;
        for (int model = 0; goesOn && model < paths.size(); ++model) {
            readHeading(model, paths.at(model));
            readDataSet(model, paths.at(model));
            goesOn = progress.advance(model + 1);
        }
        if (!goesOn) {
            changed(Change::ImportAborted);
            return;
        }
    }
    source.namesModels = true;
    defineImported(names);
}

void MainWindow::on___pb_import_clicked()
{
    clearResults({}); // even if the dialog is cancelled
    const QString directory = QFileDialog::getExistingDirectory(
        this, "Select the directory where PsN bootstrap raw_results files are.", QString(),
        QFileDialog::ShowDirsOnly);
    importFolder(directory);
}

/// Imports every model and data set whose file's name fits the template.
void MainWindow::importFolder(const QString& directory)
{
    clearResults(directory);
    ui->__lb_directory->setText(directory);

    int modelCount = 0;
    while (QFile::exists(rawResultsFileName(directory, modelCount, 0))) {
        ++modelCount;
    }
    if (modelCount == 0) {
        resultsNotFound();
        return;
    }
    setModelCount(modelCount);
    for (int model = 0; model < modelCount; ++model) {
        source.files.append(fileNameTemplate(model, "*"));
    }
    {
        ProgressLoop progress(this, importLabel, abortImportText, modelCount);
        readFirstModel(directory, progress);
        const int dataSetCount = rawResults.first().size();
        bool goesOn = progress.advance(1);
        for (int model = 1; goesOn && model < modelCount; ++model) {
            readFurtherModel(directory, model, dataSetCount, progress);
            goesOn = progress.advance(model + 1);
        }
        if (!goesOn) {
            changed(Change::ImportAborted);
            return;
        }
    }
    defineImported(numberedModelNames(modelCount));
}

/// Makes room for other results, which come from a place.
void MainWindow::clearResults(const QString& place)
{
    rawResults.clear();
    rawResultsHeaders.clear();
    headings.clear();
    source = {};
    source.place = place;
    changed(Change::ResultsCleared);
}

void MainWindow::setModelCount(int count)
{
    rawResults.resize(count);
    source.unread.resize(count);
    source.read.resize(count);
}

void MainWindow::readDataSet(int model, const QString& path)
{
    source.read[model].append(sourceFile(path));
    rawResults[model].append(csvWithHeaderReadToDouble(path, &source.unread[model]));
}

/// Gives the imported models their definitions.
void MainWindow::defineImported(const QStringList& modelNames)
{
    Study imported = study();
    defineModels(imported, modelNames);
    endPoints = imported.endPoints;
    changed(Change::Imported);
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

/// Reads the heading of a further model. One that repeats the heading before shares its memory.
void MainWindow::readHeading(int model, const QString& path)
{
    const QStringList pieces = csvWithHeaderReadHeader(path, &source.unread[model]);
    const bool isRepeated = !headings.isEmpty() && pieces == rawResultsHeaders.constLast();
    rawResultsHeaders.append(isRepeated ? rawResultsHeaders.constLast() : pieces);
    headings.append(isRepeated ? headings.constLast() : headingOf(pieces));
}

/// Reads the data sets of model 0, whose number is that of every model.
void MainWindow::readFirstModel(const QString& directory, ProgressLoop& progress)
{
    readHeading(0, rawResultsFileName(directory, 0, 0));
    for (int dataSet = 0;; ++dataSet) {
        const QString path = rawResultsFileName(directory, 0, dataSet);
        if (!QFile::exists(path)) {
            const QString names = fileNameTemplate(0, "*");
            const int star = names.lastIndexOf("*" + ui->_m1_le_dataNumberSuffix->text());
            source.gap = gapAt(dataSet, directory, names.left(star), names.mid(star + 1));
            return;
        }
        // This is intended: compared under the default name, whatever the template says.
        const QString defaultPath =
            directory + "/raw_results_estimation_model0_data" + QString::number(dataSet) + ".csv";
        const bool isRead = dataSet == 0 && path == defaultPath;
        if (!isRead
            && csvWithHeaderReadHeader(defaultPath, &source.unread.first())
                   != rawResultsHeaders.first()) {
            showMessage(this, headerMismatchText);
            return;
        }
        readDataSet(0, path);
        if (!progress.poll()) {
            return;
        }
    }
}

void MainWindow::readFurtherModel(const QString& directory, int model, int dataSetCount,
                                  ProgressLoop& progress)
{
    readHeading(model, rawResultsFileName(directory, model, 0));
    for (int dataSet = 0; dataSet < dataSetCount; ++dataSet) {
        const QString path = rawResultsFileName(directory, model, dataSet);
        if (QFile::exists(path)) {
            readDataSet(model, path);
        } else if (dataSet == 0) {
            showMessage(this, importFailedText);
            return;
        } else {
            // A model estimated on fewer data sets repeats its last one.
            rawResults[model].append(rawResults.at(model).last());
            source.read[model].append(SourceFile());
        }
        if (!progress.poll()) {
            return;
        }
    }
}

void MainWindow::on__m1_le_colNumOFV_textEdited(const QString& text)
{
    readColumnNumber(ui->_m1_le_colNumOFV, text, colNumOFV, &endPoint::colNumOFV);
    changed(Change::OfvColumn);
}

void MainWindow::on__m1_le_colNumTHETA1_textEdited(const QString& text)
{
    readColumnNumber(ui->_m1_le_colNumTHETA1, text, colNumTHETA1, &endPoint::colNumTHETA1);
    changed(Change::Theta1Column);
}

/// Takes the typed column number over everywhere, or puts the last valid one back: selected
/// where the field was emptied.
void MainWindow::readColumnNumber(QLineEdit* edit, const QString& text, int& column,
                                  int endPoint::*endPointColumn)
{
    bool isNumber = false;
    const int number = wholeNumber(text, &isNumber);
    if (!isNumber) {
        edit->setText(QString::number(column));
        if (text.isEmpty()) {
            edit->selectAll(); // what is typed next is to replace it, as in an empty field
        }
        return;
    }
    column = number;
    for (endPoint& definition : endPoints) {
        definition.*endPointColumn = number;
    }
}
