// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/rangerun.h"

#include "analysis/calculation.h"
#include "analysis/certainty/endpointcsv.h"
#include "analysis/checkup/studycheck.h"
#include "analysis/dosesearch.h"
#include "analysis/truth.h"
#include "batch/error.h"
#include "batch/hashes.h"
#include "batch/interrupt.h"
#include "batch/modeltexts.h"
#include "batch/plan.h"
#include "model/randomng.h"

#include <cmath>
#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

bool goesOn()
{
    return !isInterrupted();
}

/// The files with lines for each data set.
class RangeTables
{
public:
    RangeTables(OutputFolder& output, const RunInputs& inputs)
        : probability(
            output.addTable(ResultFile::probability, {"data_set", "dose", "probability", "error"}))
        , doses(output.addTable(ResultFile::doses, QStringList("data_set") + levelNames(inputs)))
        , weights(output.addTable(ResultFile::weights,
                                  QStringList{"data_set", "sample"} + inputs.source.modelNames()))
        , endpoints(inputs.writesEndpoints ? &output.addFile(ResultFile::endpoints) : nullptr)
    {
        if (endpoints != nullptr) {
            writeEndpointHeading(endpoints->device());
        }
    }

    void add(const RunInputs& inputs, int dataSet, const DataSetResult& result,
             const Evaluation& evaluation)
    {
        const QByteArray name = QByteArray::number(dataSet);
        for (int dose = 0; dose < result.probability.size(); ++dose) {
            probability.addRow({name, csvNumber(inputs.study.doses.at(dose)),
                                csvNumber(result.probability.at(dose)),
                                csvNumber(result.errors.value(dose, notANumber))});
        }
        QByteArrayList row{name};
        for (const double med : result.meds) {
            row.append(csvNumber(med));
        }
        doses.addRow(row);
        addWeights(inputs.study, dataSet, evaluation);
        if (endpoints != nullptr && evaluation.exists()) {
            writeEndpoints(endpoints->device(),
                           {dataSet, inputs.study, result.probability, evaluation, {}}, goesOn);
            endpoints->check();
        }
    }

private:
    static QStringList levelNames(const RunInputs& inputs)
    {
        QStringList names;
        for (const double level : inputs.study.levels) {
            names.append(exactText(level));
        }
        return names;
    }

    /// Adds the relative weights that page "2" shows, whatever the method.
    void addWeights(const Study& study, int dataSet, const Evaluation& evaluation)
    {
        const Table relative =
            evaluation.exists()
                ? relativeWeights(evaluation.weights.values, evaluation.sampleCount, study.logScale)
                : relativeWeights(study, dataSet);
        for (int sample = 0; sample < relative.size(); ++sample) {
            QByteArrayList row{QByteArray::number(dataSet), QByteArray::number(sample)};
            for (const double weight : relative.at(sample)) {
                row.append(csvNumber(weight));
            }
            weights.addRow(row);
        }
    }

    TableFile& probability;
    TableFile& doses;
    TableFile& weights;
    TableFile* endpoints;
};

/// Calculates a data set. Its tables must be loaded.
DataSetResult calculate(const RunInputs& inputs, int dataSet, Evaluation& evaluation)
{
    const Study& study = inputs.study;
    EndpointCache::Entries entries;
    EndpointCache cache(entries);
    cache.resize(inputs.usesCache ? dataSet + 1 : 0);
    const auto probability =
        probabilityCurve(study, dataSet, inputs.usesCache ? &cache : nullptr, goesOn, &evaluation);
    endIfInterrupted();
    DataSetResult result;
    result.probability = *probability;
    result.meds = minimumEffectiveDoses(result.probability, study.levels, study.doses);
    if (evaluation.exists()) {
        const Grid hits = hitWeights(study, evaluation, appliedWeights(study, evaluation));
        result.errors = monteCarloErrors(hits, evaluation.sampleCount);
        const auto stability =
            doseStability(hits, evaluation.sampleCount, result.probability, study.levels, goesOn);
        endIfInterrupted();
        result.stability = *stability;
        if (!inputs.reports.isEmpty()) {
            result.otherMeds = medsOfAllMethods(study, evaluation);
        }
    }
    result.draws = double(drawsOf(inputs, dataSet));
    result.findings = checkUsableWeights(study, dataSet, evaluation.weights.values);
    return result;
}

void addTruth(const RunInputs& inputs, RangeResults& results, OutputFolder& output)
{
    const TruthInputs& truth = inputs.truth;
    const int end = qMin(results.range.end, truth.count());
    const int first = qMin(results.range.first, end);
    if (truth.byMeds) {
        results.theoreticalMeds = truth.meds.mid(first, end - first);
    } else {
        results.theoreticalMeds =
            theoreticalMeds(
                inputs.study, truth.rows.mid(first, end - first),
                truth.modelNumbers.mid(first, end - first), [](int) { return goesOn(); }, goesOn)
                .meds;
        endIfInterrupted();
    }
    TableFile& table =
        output.addTable(ResultFile::meds, {"data_set", "true_model", "theoretical_med"});
    for (int dataSet = first; dataSet < end; ++dataSet) {
        table.addRow({QByteArray::number(dataSet),
                      truth.byMeds ? csvNumber(truth.models.at(dataSet))
                                   : QByteArray::number(truth.modelNumbers.value(dataSet)),
                      csvNumber(results.theoreticalMeds.at(dataSet - first))});
    }
}

} // namespace

RangeResults::RangeResults(const RunInputs& inputs)
    : checkUp(inputs.study.headings, inputs.source.modelNames(), inputs.study.colNumOFV,
              inputs.study.colNumTHETA1)
{
}

QStringList RangeResults::findings() const
{
    QStringList lines;
    for (const DataSetResult& result : dataSets) {
        lines += result.findings; // each names its data set
    }
    return lines;
}

RangeResults runRange(RunInputs& inputs, const DataSetRange& range, OutputFolder& output,
                      const Draws& draws, const Progress& progress)
{
    RangeResults results(inputs);
    results.range = range;
    if (inputs.source.isProject()) {
        results.files.append(hashedFile("project", inputs.source.files(0).first()));
    }
    RangeTables tables(output, inputs);
    if (range.first > 0) {
        inputs.source.load(inputs.study, range.first - 1);
        results.checkUp.follow(tablesOf(inputs.study.rawResults, range.first - 1));
        inputs.source.release(inputs.study, range.first - 1);
    }
    setRandomPosition(positionBefore(inputs, draws, range.first));
    for (int dataSet = range.first; dataSet < range.end; ++dataSet) {
        FileHashes hashes(inputs.source, dataSet);
        inputs.source.load(inputs.study, dataSet);
        results.checkUp.add(dataSet, tablesOf(inputs.study.rawResults, dataSet));
        Evaluation evaluation;
        results.dataSets.append(calculate(inputs, dataSet, evaluation));
        tables.add(inputs, dataSet, results.dataSets.constLast(), evaluation);
        if (dataSet == 0) {
            results.first = evaluation;
        }
        inputs.source.release(inputs.study, dataSet);
        results.files += hashes.result();
        endIfInterrupted();
        progress(dataSet + 1 - range.first);
    }
    if (inputs.truth.exists()) {
        const bool isParted = range.first > 0 || range.end < inputs.source.dataSetCount();
        if (inputs.truth.byModels && (isParted || inputs.truthPosition != 0)) {
            setRandomPosition(positionBeforeTruth(inputs, draws, range.first));
        }
        addTruth(inputs, results, output);
    }
    results.positionAfter = randomPosition().value_or(0);
    return results;
}

void repeatFirstDataSet(RunInputs& inputs, RangeResults& results)
{
    FileHashes hashes(inputs.source, 0);
    inputs.source.load(inputs.study, 0);
    demandSameFiles(hashes.result(), results.files, "the shards");
    setRandomPosition(inputs.randomPosition);
    Evaluation evaluation;
    const DataSetResult repeated = calculate(inputs, 0, evaluation);
    if (repeated.probability != results.dataSets.first().probability) {
        results.dataSets.first().findings.append(
            "Data set 0 was calculated again for the report and has other probabilities: its "
            "files have changed, or this machine calculates differently.");
    }
    results.first = evaluation;
}
