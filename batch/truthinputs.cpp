// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/truthinputs.h"

#include "analysis/truth.h"
#include "batch/datasource.h"
#include "batch/error.h"
#include "io/csv.h"

#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr int medColumn = 1;

void demandReadToEnd(const QStringList& unread)
{
    if (!unread.isEmpty()) {
        fail(QString("%1 cannot be read to its end.").arg(unread.first()));
    }
}

TruthInputs readTrueMeds(const QString& path, int dataSets, const QVector<double>& doses)
{
    demandFile(path, "--true-meds");
    QStringList unread;
    const Table table = csvReadToDouble(path, &unread);
    demandReadToEnd(unread);
    if (table.size() != dataSets || table.value(0).size() <= medColumn) {
        fail(QString("--true-meds: %1 must have a row with the true model and the true MED for "
                     "each of the %2 data sets.")
                 .arg(path)
                 .arg(dataSets));
    }
    TruthInputs truth;
    truth.byMeds = true;
    truth.file = sourceFile(path);
    for (const QVector<double>& row : table) {
        truth.models.append(row.value(0, notANumber));
        truth.meds.append(roundedUpToDose(row.value(medColumn, notANumber), doses));
    }
    return truth;
}

TruthInputs readTrueModels(const QStringList& paths, const QString& numbersPath, int dataSets,
                           int modelCount)
{
    if (paths.size() != 1 && paths.size() != dataSets) {
        rejectUsage(QString("--true-models names %1 files; it takes 1, or one for each of the %2 "
                            "data sets.")
                        .arg(paths.size())
                        .arg(dataSets));
    }
    TruthInputs truth;
    truth.byModels = true;
    QStringList unread;
    for (const QString& path : paths) {
        demandFile(path, "--true-models");
        truth.simulationFiles.append(sourceFile(path));
        truth.rows.append(csvWithHeaderReadToDouble(path, &unread).value(0));
    }
    demandFile(numbersPath, "--true-model-numbers");
    truth.file = sourceFile(numbersPath);
    const TrueModelNumbers read =
        trueModelNumbers(csvReadToDouble(numbersPath, &unread), dataSets, modelCount);
    demandReadToEnd(unread);
    if (!read.isValid) {
        fail(QString("--true-model-numbers: %1 must have one row or one column with the number of "
                     "a model, 0 to %2, for each of the %3 data sets.")
                 .arg(numbersPath)
                 .arg(modelCount - 1)
                 .arg(dataSets));
    }
    truth.modelNumbers = read.numbers;
    return truth;
}

} // namespace

QStringList TruthInputs::modelTexts() const
{
    QStringList texts;
    for (const int number : modelNumbers) {
        texts.append(QString::number(number));
    }
    return texts;
}

TruthInputs readTruth(const BatchSettings& settings, int dataSets, int modelCount,
                      const QVector<double>& doses)
{
    const bool byModels = settings.has("true-models");
    if (settings.has("true-meds") && byModels) {
        rejectUsage("Give either --true-meds or --true-models, not both.");
    }
    if (byModels != settings.has("true-model-numbers")) {
        rejectUsage("--true-models and --true-model-numbers belong together: give both.");
    }
    if (settings.has("true-meds")) {
        return readTrueMeds(settings.textOf("true-meds"), dataSets, doses);
    }
    return byModels ? readTrueModels(settings.files("true-models"),
                                     settings.textOf("true-model-numbers"), dataSets, modelCount)
                    : TruthInputs();
}
