// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/finish.h"

#include "analysis/certainty/certaintytables.h"
#include "analysis/certainty/endpointcsv.h"
#include "analysis/checkup/inputcheck.h"
#include "analysis/checkup/randomcheck.h"
#include "analysis/checkup/studyfindings.h"
#include "analysis/truth.h"
#include "batch/error.h"
#include "batch/interrupt.h"
#include "report/formats.h"

#include <algorithm>
#include <iterator>

namespace {

bool goesOn()
{
    return !isInterrupted();
}

Table medsOf(const QVector<DataSetResult>& dataSets)
{
    Table meds;
    for (const DataSetResult& result : dataSets) {
        meds.append(result.meds);
    }
    return meds;
}

DoseSelection selectionOf(const RunInputs& inputs, const RangeResults& results)
{
    DoseSelection selection;
    selection.doses = medsOf(results.dataSets);
    selection.levels = inputs.study.levels;
    selection.dataSetCount = results.dataSets.size();
    selection.notes =
        checkLowerBoundUsed(inputs.lower.text, inputs.lower.placed, lowerSubstitute.value)
        + checkUpperBoundUsed(inputs.upper.text, inputs.upper.placed, upperSubstitute.value);
    selection.made = doseProvenance(inputs.study);
    selection.evaluations.resize(results.dataSets.size());
    for (const DataSetResult& result : results.dataSets) {
        selection.probability.append(result.probability);
        selection.stability.append(result.stability);
        selection.otherMeds.append(result.otherMeds);
    }
    if (!selection.evaluations.isEmpty()) {
        selection.evaluations.first() = results.first;
    }
    for (int dataSet = 1; dataSet < selection.evaluations.size(); ++dataSet) {
        selection.evaluations[dataSet].missing = "only the endpoints of data set 0 are kept";
    }
    selection.before = {inputs.randomPosition, inputs.processors};
    return selection;
}

TruthComparison truthOf(const RunInputs& inputs, const RangeResults& results, const Table& meds)
{
    TruthComparison truth;
    if (!inputs.truth.exists()) {
        return truth;
    }
    truth.comparison = compareWithTruth(meds, results.theoreticalMeds);
    truth.levels = inputs.study.levels;
    truth.dataSets = results.theoreticalMeds.size();
    truth.dataSetCount = truth.dataSets;
    truth.withoutMed = countMissing(results.theoreticalMeds);
    truth.made = truthProvenance(inputs.study, inputs.truth.rows, inputs.truth.modelTexts(), meds);
    truth.chosen = doseProvenance(inputs.study);
    return truth;
}

/// The number of random numbers that each data set drew.
QVector<double> drawsOf(const RangeResults& results)
{
    QVector<double> draws;
    for (const DataSetResult& result : results.dataSets) {
        draws.append(result.draws);
    }
    return draws;
}

void writeComparison(const TruthComparison& truth, OutputFolder& output)
{
    TableFile& table = output.addTable(ResultFile::comparison, {"level", "nominal", "over", "equal",
                                                                "under", "mean_absolute_error"});
    for (int level = 0; level < qMin(truth.comparison.size(), truth.levels.size()); ++level) {
        const LevelComparison& counts = truth.comparison.at(level);
        table.addRow({csvNumber(truth.levels.at(level)),
                      csvNumber(nominalCount(counts, truth.levels.at(level))),
                      QByteArray::number(counts.over), QByteArray::number(counts.equal),
                      QByteArray::number(counts.under), csvNumber(counts.meanAbsoluteError)});
    }
}

void writeReports(const RunInputs& inputs, const ReportInputs& report, OutputFolder& output)
{
    const auto document = reportDocument(report, goesOn);
    endIfInterrupted();
    for (const QString& suffix : inputs.reports) {
        const auto content =
            writtenReport(*document, suffix, [](double /*done*/) { return goesOn(); });
        endIfInterrupted();
        output.addFile("report." + suffix).addLines(*content);
    }
}

} // namespace

QStringList writeStudyFiles(const RunInputs& inputs, const RangeResults& results,
                            const QStringList& runFindings, OutputFolder& output)
{
    ReportInputs report;
    report.now.study = inputs.study;
    report.now.trueRows = inputs.truth.rows;
    report.now.trueModels = inputs.truth.modelTexts();
    report.results.selection = selectionOf(inputs, results);
    report.results.truth = truthOf(inputs, results, report.results.selection.doses);
    if (inputs.truth.exists()) {
        writeComparison(report.results.truth, output);
    }
    ImportCheckUp checked = results.checkUp.result();
    addGap(checked, inputs.source.gap());
    QStringList findings =
        runFindings
        + studyFindings(inputs.study, checked,
                        {inputs.doses, inputs.levels, inputs.lower, inputs.upper})
        + results.findings() + unstableDoses(report.results.selection)
        + checkRandomNumbers(drawsOf(results)) + missingMedNotes(report.results.truth);
    output.addFile(ResultFile::findings)
        .addLines(findings.isEmpty() ? QByteArray() : findings.join('\n').toUtf8() + '\n');
    if (!inputs.reports.isEmpty()) {
        report.source = {
            {programName(), qVersion(), inputs.source.place(), inputs.source.fileNames()},
            results.files,
            checked,
            findings,
            QDateTime::currentDateTime()};
        writeReports(inputs, report, output);
    }
    return findings;
}

void saveProject(RunInputs& inputs, const QVector<DataSetResult>& dataSets, const QString& path)
{
    Study& study = inputs.study;
    for (int dataSet = 0; dataSet < inputs.source.dataSetCount(); ++dataSet) {
        inputs.source.load(study, dataSet);
        endIfInterrupted();
    }
    ProjectItems items;
    items.rawResults = study.rawResults;
    items.rawResultsHeaders = study.rawResultsHeaders;
    items.possibleDoses = inputs.doses;
    for (const endPoint& definition : qAsConst(study.endPoints)) {
        items.endPointExpressions.append(definition.endPointParser.expression);
        items.omegas.append(definition.omega);
        items.omegaColumns.append(definition.omegaColumns);
        items.weightExpressions.append(definition.weightParser.expression);
    }
    const auto summary = std::find(std::begin(populationSummaries), std::end(populationSummaries),
                                   study.populationSummary);
    items.populationSummary = qint32(summary - std::begin(populationSummaries));
    items.logScale = study.logScale;
    items.averageOrSelection = study.selecting ? 1 : 0;
    items.oneOrIndividualOfv = study.individualOfv ? 1 : 0;
    items.lowerBound = inputs.lower.text;
    items.upperBound = inputs.upper.text;
    items.doseChoice = medsOf(dataSets);
    for (const double level : qAsConst(study.levels)) {
        items.doseChoiceLabels.append(QString::number(level, 'g', 6));
    }
    items.doseChoiceVector = study.levels;
    SafeFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || !writeProject(items, &file)
        || !file.commit()) {
        fail(QString("--save-project: %1 cannot be written: %2.").arg(path, file.errorString()));
    }
}
