// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/probability.h"

#include "model/randomng.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

/// Samples are evaluated ahead until this many numbers are made for them, or this many operations
/// take place: enough that a parallel section takes far longer than its threads need to wake up,
/// which on a busy machine is milliseconds, and a part of the half second after which the user may
/// want to abort.
constexpr qint64 preparedNumbers = 1 << 21;
constexpr qint64 preparedOperations = 1 << 24;
/// Samples evaluated ahead at the most, so that the user sees the work go on; more where the
/// rows of many can be evaluated together.
constexpr int preparedSamples = 64;
constexpr int preparedPlainSamples = 512;

/// Numbers that a piece of work makes: random ones, ETAs and results.
qint64 numbersOf(const SimulatedPopulation& population)
{
    const qint64 individuals = qint64(population.doses.size()) * population.individuals;
    return individuals * (population.sampler.numbersPerVector() + population.etaSlots.size() + 1);
}

/// Asks within the evaluation of a row only if it takes long.
GoesOnWithDoses within(const GoesOn& goesOn, qint64 operations)
{
    return goesOn && operations >= preparedOperations ? [&goesOn](int) { return goesOn(); }
                                                      : GoesOnWithDoses();
}

QVector<int> modelsWithWeight(const QVector<double>& weights, int modelCount)
{
    QVector<int> models;
    for (int model = 0; model < qMin(modelCount, weights.size()); ++model) {
        if (weights.at(model) > 0) {
            models.append(model);
        }
    }
    return models;
}

} // namespace

QVector<double> probabilityBySelection(const Table& endpoints, int doseCount,
                                       const TargetInterval& target)
{
    QVector<double> probability(doseCount, 0.0);
    double* sums = probability.data();
    const double step = 1.0 / endpoints.size() * 100;
    for (const QVector<double>& sample : endpoints) {
        addHits(sample.constData(), qMin(sample.size(), doseCount), target, step, sums);
    }
    return probability;
}

QVector<double> probabilityByAveraging(const QVector<Table>& endpoints, const Table& weights,
                                       bool individualWeights, int doseCount,
                                       const TargetInterval& target)
{
    QVector<double> probability(doseCount, 0.0);
    double* sums = probability.data();
    const int sampleCount = endpoints.isEmpty() ? 0 : endpoints.first().size();
    for (int sample = 0; sample < sampleCount; ++sample) {
        const int weightRow = individualWeights ? sample : 0;
        if (weightRow >= weights.size()) {
            break;
        }
        const QVector<double>& sampleWeights = weights.at(weightRow);
        const int modelCount = qMin(endpoints.size(), sampleWeights.size());
        for (int model = 0; model < modelCount; ++model) {
            const Table& samples = endpoints.at(model);
            const double weight = sampleWeights.at(model);
            if (!(weight > 0) || sample >= samples.size()) {
                continue;
            }
            const double step = weight / samples.size() * 100;
            const QVector<double>& values = samples.at(sample);
            addHits(values.constData(), qMin(values.size(), doseCount), target, step, sums);
        }
    }
    return probability;
}

EndpointPlan averagingPlan(const Table& weights, bool individualWeights, int modelCount)
{
    EndpointPlan plan;
    plan.modelCount = modelCount;
    if (!individualWeights && !weights.isEmpty()) {
        plan.models.fill(modelsWithWeight(weights.first(), modelCount), weights.size());
        return plan;
    }
    plan.models.reserve(weights.size());
    for (const QVector<double>& sampleWeights : weights) {
        const QVector<int> models = modelsWithWeight(sampleWeights, modelCount);
        // Usually all samples share one list.
        const bool isNew = plan.models.isEmpty() || models != plan.models.constLast();
        plan.models.append(isNew ? models : plan.models.constLast());
    }
    return plan;
}

EndpointPlan selectionPlan(const QVector<int>& selected, bool individualSelection)
{
    EndpointPlan plan;
    for (int sample = 0; sample < selected.size(); ++sample) {
        plan.models.append(QVector<int>{selected.at(individualSelection ? sample : 0)});
    }
    return plan;
}

EndpointPlan completePlan(int sampleCount, int modelCount)
{
    QVector<int> models(modelCount);
    std::iota(models.begin(), models.end(), 0);
    EndpointPlan plan;
    plan.modelCount = modelCount;
    plan.models.fill(models, sampleCount);
    return plan;
}

EndpointRun::EndpointRun(const Study& study, int dataSet, const EndpointPlan& endpointPlan)
    : endPoints(study.endPoints)
    , plan(endpointPlan)
    , values(qMax(1, plan.modelCount))
{
    for (endPoint& definition : endPoints) {
        // A row that takes long is evaluated by itself, so that it can be aborted.
        const qint64 operations = definition.evaluatesRows() ? definition.operationCount() : 0;
        operationsByRows.append(operations < preparedOperations ? operations : 0);
    }
    for (int model = 0; model < endPoints.size(); ++model) {
        samples.append(study.rawResults.value(model).value(dataSet));
    }
    for (Table& entry : values) {
        entry.reserve(sampleCount());
    }
}

EndpointRun::~EndpointRun()
{
    giveBack();
}

/// Forgets what was evaluated ahead, and gives its random numbers back.
void EndpointRun::giveBack()
{
    if (const std::optional<quint32> position = ahead.positions.value(ahead.asked)) {
        setRandomPosition(*position);
    }
    ahead = {};
}

bool EndpointRun::evaluateNext(const GoesOn& goesOn)
{
    if (ahead.asked == ahead.count && !prepare(goesOn)) {
        return false;
    }
    for (int entry = 0; entry < values.size(); ++entry) {
        values[entry].append(std::move(ahead.endpoints[entry][ahead.asked]));
    }
    ++ahead.asked;
    ++nextSample;
    return true;
}

qint64 EndpointRun::randomNumberCount()
{
    qint64 count = 0;
    for (int sample = 0; sample < sampleCount(); ++sample) {
        for (const int model : plan.models.at(sample)) {
            if (const QVector<double>* row = bootstrapRow(model, sample)) {
                count += endPoints[model].randomNumberCount(*row);
            }
        }
    }
    return count;
}

/// Evaluates the next samples: as many as make a parallel section worthwhile, and one where random
/// numbers drawn ahead could not be given back. False if aborted.
bool EndpointRun::prepare(const GoesOn& goesOn)
{
    ahead = {};
    ahead.endpoints.resize(values.size());
    const int byRows = samplesByRows();
    if (byRows > 0) {
        prepareRows(byRows);
        return true;
    }
    if (!prepareSamples(goesOn)) {
        giveBack();
        return false;
    }
    return true;
}

/// How many of the next samples need no model but those that are evaluated by rows.
int EndpointRun::samplesByRows() const
{
    const auto isByRows = [this](int model) { return operationsByRows.value(model, 1) > 0; };
    qint64 operations = 0;
    qint64 operationsOfSample = 0;
    const QVector<int>* known = nullptr; // samples with the same list are alike
    int count = 0;
    while (count < preparedPlainSamples && nextSample + count < sampleCount()
           && operations < preparedOperations) {
        const QVector<int>& models = plan.models.at(nextSample + count);
        if (known == nullptr || models.constData() != known->constData()) {
            if (!std::all_of(models.begin(), models.end(), isByRows)) {
                break;
            }
            operationsOfSample = 0;
            for (const int model : models) {
                operationsOfSample += operationsByRows.value(model, 0);
            }
            known = &models;
        }
        operations += operationsOfSample;
        ++count;
    }
    return count;
}

/// Evaluates so many samples, model by model.
void EndpointRun::prepareRows(int count)
{
    ahead.count = count;
    for (Table& entry : ahead.endpoints) {
        entry.resize(count);
    }
    QVector<const QVector<double>*> rows;
    QVector<int> places; // of the rows, among the samples ahead
    rows.reserve(count);
    places.reserve(count);
    for (int model = 0; model < endPoints.size(); ++model) {
        rows.resize(0);
        places.resize(0);
        for (int i = 0; i < count; ++i) {
            const QVector<double>* row = bootstrapRow(model, nextSample + i);
            if (row != nullptr && plan.models.at(nextSample + i).contains(model)) {
                rows.append(row);
                places.append(i);
            }
        }
        if (rows.isEmpty()) {
            continue;
        }
        Table evaluated = endPoints[model].evaluateRows(rows);
        QVector<double>* const entry = ahead.endpoints[entryOf(model)].data();
        QVector<double>* const ofRows = evaluated.data();
        for (int row = 0; row < evaluated.size(); ++row) {
            entry[places.at(row)] = std::move(ofRows[row]);
        }
    }
}

/// Evaluates samples one by one. False if aborted.
bool EndpointRun::prepareSamples(const GoesOn& goesOn)
{
    StartedWork started;
    qint64 numbers = 0;
    qint64 operations = 0;
    for (int sample = nextSample;
         sample < sampleCount() && numbers < preparedNumbers && operations < preparedOperations
         && ahead.count < preparedSamples;
         ++sample) {
        ahead.positions.append(randomPosition());
        for (Table& entry : ahead.endpoints) {
            entry.append(QVector<double>());
        }
        ++ahead.count;
        for (const int model : plan.models.at(sample)) {
            const QVector<double>* row = bootstrapRow(model, sample);
            if (row == nullptr) {
                continue;
            }
            endPoint& definition = endPoints[model];
            if (!startRow(definition, *row, {entryOf(model), ahead.count - 1}, started)) {
                auto evaluated =
                    definition.evaluateEndpoint(*row, within(goesOn, definition.operationCount()));
                if (!evaluated) {
                    return false;
                }
                ahead.endpoints[entryOf(model)].last() = *std::move(evaluated);
                // With ETAs it was too much to be one of several pieces of work.
                numbers += definition.highestEta > 0 ? preparedNumbers : 0;
            }
            operations += definition.operationCount();
            if (started.numbers >= preparedNumbers) {
                numbers += started.numbers;
                finish(started); // more models may follow, each with as much to hold
            }
        }
        if (!ahead.positions.last() || numbers + started.numbers >= preparedNumbers) {
            break;
        }
    }
    finish(started);
    return true;
}

/// Starts the evaluation of a row, whose endpoints have their place. False, with nothing drawn,
/// where there is nothing to simulate or too much for one piece of work.
bool EndpointRun::startRow(endPoint& definition, const QVector<double>& row,
                           const StartedWork::Place& place, StartedWork& started)
{
    auto container = definition.startEvaluation(row);
    if (!container) {
        return false;
    }
    started.numbers += numbersOf(container->population);
    started.containers.append(*std::move(container));
    started.places.append(place);
    return true;
}

/// Does the work and forgets it.
void EndpointRun::finish(StartedWork& started)
{
    evaluateContainers(started.containers);
    for (int i = 0; i < started.places.size(); ++i) {
        const auto [entry, sample] = started.places.at(i);
        ahead.endpoints[entry][sample] = started.containers.at(i).population.endpoints;
    }
    started = {};
}

/// nullptr where the model lacks the sample.
const QVector<double>* EndpointRun::bootstrapRow(int model, int sample) const
{
    const bool exists = model >= 0 && model < samples.size() && sample < samples.at(model).size();
    return exists ? &samples.at(model).at(sample) : nullptr;
}

bool holdsSelected(const QVector<Table>& endpoints, const QVector<int>& selected)
{
    for (int sample = 0; sample < selected.size(); ++sample) {
        const int model = selected.at(sample);
        if (model < 0) {
            continue;
        }
        if (model >= endpoints.size() || sample >= endpoints.at(model).size()
            || endpoints.at(model).at(sample).isEmpty()) {
            return false;
        }
    }
    return true;
}

Table pickSelected(const QVector<Table>& endpoints, const QVector<int>& selected)
{
    Table picked;
    picked.reserve(selected.size());
    for (int sample = 0; sample < selected.size(); ++sample) {
        const int model = selected.at(sample);
        const bool exists =
            model >= 0 && model < endpoints.size() && sample < endpoints.at(model).size();
        picked.append(exists ? endpoints.at(model).at(sample) : QVector<double>());
    }
    return picked;
}
