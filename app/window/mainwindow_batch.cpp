// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// The command that repeats the analysis without a window.

#include "analysis/numberlist.h"
#include "app/window/mainwindow.h"
#include "batch/commandtext.h"
#include "batch/draws.h"
#include "batch/inputs.h"
#include "compat/qtversions.h"
#include "io/csv.h"
#include "ui_mainwindow.h"

#include <QJsonArray>
#include <QLocale>

namespace {

const char defaultFileNames[] = "raw_results_estimation_model0_data*.csv";

QJsonArray pathsOf(const QVector<SourceFile>& files)
{
    QJsonArray paths;
    for (const SourceFile& file : files) {
        paths.append(file.path);
    }
    return paths;
}

/// Names the data. Returns what the command cannot express.
QStringList addSource(BatchSettings& settings, const ResultsSource& source)
{
    if (source.read.isEmpty()) {
        return {"No results are imported."};
    }
    if (source.files.isEmpty()) {
        settings.set("project", source.place);
    } else if (source.namesModels) {
        QVector<SourceFile> files;
        for (const QVector<SourceFile>& ofModel : source.read) {
            files += ofModel.mid(0, 1);
        }
        settings.set("models", pathsOf(files));
    } else {
        settings.set("folder", source.place);
        if (source.files.first() != defaultFileNames) {
            return {"velmora-batch looks for other file names than those of the folder."};
        }
    }
    return {};
}

/// The text where it says the same numbers, else the numbers without loss.
QString numbersText(const QString& text, const QVector<double>& numbers)
{
    if (parseNumberList(text) == numbers) {
        return text;
    }
    QStringList parts;
    for (const double number : numbers) {
        parts.append(significantDigits(number, QLocale::FloatingPointShortest));
    }
    return parts.join(',');
}

} // namespace

/// Names the truth that the doses were compared with. Gives what the command cannot say.
QStringList MainWindow::addTruth(BatchSettings& settings) const
{
    const TruthComparison& truth = shown.truth;
    if (!truth.made.exists() || truth.isFailed) {
        return {};
    }
    if (simulationSource.read.isEmpty()) {
        settings.set("true-meds", truthFile.path);
        return {};
    }
    settings.set("true-models", pathsOf(simulationSource.read));
    settings.set("true-model-numbers", truthFile.path);
    if (truth.before.randomPosition) {
        settings.set("truth-position", int(*truth.before.randomPosition));
    }
    const QVector<int> ofFile = trueModelNumbers(csvReadToDouble(truthFile.path),
                                                 truth.made.trueModels.size(), endPoints.size())
                                    .numbers;
    QStringList numbers;
    for (const int number : ofFile) {
        numbers.append(QString::number(number));
    }
    return numbers == truth.made.trueModels
               ? QStringList()
               : QStringList("The numbers of the true models in the table are not those of the "
                             "file.");
}

/// The shell command that repeats what the pages show, below remarks on what may differ.
QString MainWindow::batchCommand() const
{
    const DoseSelection& selection = shown.selection;
    const ProbabilityCurve& curve = shown.curve;
    const bool ofDoses = selection.made.exists() && !selection.isFromProject;
    const bool ofCurve = !ofDoses && curve.made.exists();
    const Study now = study();
    const Study& made = ofDoses ? selection.made.inputs : ofCurve ? curve.made.inputs : now;
    const Circumstances before = ofDoses   ? selection.before
                                 : ofCurve ? curve.before
                                           : circumstances();
    BatchSettings settings = studySettings(
        made, numbersText(ui->_1_le_possibleDoses->text(), made.doses),
        numbersText(ui->_4_le_probabilities->text(), ofDoses ? doseChoiceVector : now.levels));
    QStringList remarks = addSource(settings, source) + addTruth(settings);
    settings.set("processors", before.processors);
    if (before.randomPosition) {
        settings.set("random-position", int(*before.randomPosition));
    }
    settings.set("cache", ofDoses && selection.usedCache);
    if (drawsNumbers(made)) {
        if (ofDoses && selection.tookFromCache) {
            remarks.append(
                "Endpoints were taken from the cache; the command draws its own random numbers.");
        }
        if (selection.isFromProject) {
            remarks.append("The doses shown come from the project; the command draws its own "
                           "random numbers.");
        }
        if (ofCurve && curve.made.dataSet > 0) {
            remarks.append(QString("The curve shown is that of data set %1; the command first "
                                   "draws the random numbers of the data sets before it.")
                               .arg(curve.made.dataSet));
        }
    }
    QString text;
    for (const QString& remark : qAsConst(remarks)) {
        text += "# " + remark + '\n';
    }
    return text + commandText(settings);
}
