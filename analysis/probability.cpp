// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/probability.h"

#include "model/randomng.h"

#include <numeric>
#include <utility>

namespace {

/// Samples are evaluated ahead until this many numbers are held for them (16 MB), or this
/// many operations take place: enough that a parallel section takes far longer than its
/// threads need to wake up, which on a busy machine is milliseconds, and a part of the half
/// second after which the user may want to give up.
constexpr qint64 preparedNumbers = 1 << 21;
constexpr qint64 preparedOperations = 1 << 24;
/// Samples evaluated ahead at the most, so that the user sees the work go on; more where the
/// rows of many can be evaluated together.
constexpr int preparedSamples = 64;
constexpr int preparedPlainSamples = 512;

/// Numbers that a piece of work holds while it is evaluated: random ones, ETAs and results.
qint64 heldNumbers(const SimulatedPopulation& population)
{
    const qint64 individuals = qint64(population.doses.size()) * population.individuals;
    return population.uniforms.size() + individuals * (population.etaSlots.size() + 1);
}

/// Asks within the evaluation of a row only if it takes long.
GoesOnWithDoses within(const GoesOn& goesOn, qint64 operations)
{
    return goesOn && operations >= preparedOperations ? [&goesOn](int) { return goesOn(); }
                                                      : GoesOnWithDoses();
}

} // namespace

QVector<double> probabilityBySelection(const Table& endpoints, int doseCount,
                                       const TargetInterval& target)
{
    QVector<double> probability(doseCount, 0.0);
    double* sums = probability.data();
    const double step = 1.0 / endpoints.size() * 100;
    for (const QVector<double>& sample : endpoints) {
        const int doses = qMin(sample.size(), doseCount);
        for (int dose = 0; dose < doses; ++dose) {
            if (target.contains(sample.at(dose))) {
                sums[dose] += step;
            }
        }
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
            const int doses = qMin(values.size(), doseCount);
            for (int dose = 0; dose < doses; ++dose) {
                if (target.contains(values.at(dose))) {
                    sums[dose] += step;
                }
            }
        }
    }
    return probability;
}

EndpointPlan averagingPlan(const Table& weights, bool individualWeights, int modelCount)
{
    EndpointPlan plan;
    plan.modelCount = modelCount;
    for (int sample = 0; sample < weights.size(); ++sample) {
        const QVector<double>& sampleWeights = weights.at(individualWeights ? sample : 0);
        QVector<int> models;
        for (int model = 0; model < qMin(modelCount, sampleWeights.size()); ++model) {
            if (sampleWeights.at(model) > 0) {
                models.append(model);
            }
        }
        plan.models.append(models);
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

EndpointRun::EndpointRun(const Study& study, int dataSetNumber, const EndpointPlan& endpointPlan)
    : endPoints(study.endPoints)
    , rawResults(study.rawResults)
    , dataSet(dataSetNumber)
    , plan(endpointPlan)
    , values(qMax(1, plan.modelCount))
{
}

EndpointRun::~EndpointRun()
{
    giveBack();
}

/// Forgets what was evaluated ahead, and gives its random numbers back.
void EndpointRun::giveBack()
{
    if (!prepared.isEmpty() && prepared.head().randomPosition) {
        setRandomPosition(*prepared.head().randomPosition);
    }
    prepared.clear();
}

bool EndpointRun::evaluateNext(const GoesOn& goesOn)
{
    if (prepared.isEmpty() && !prepare(goesOn)) {
        return false;
    }
    const Prepared sample = prepared.dequeue();
    if (plan.modelCount == 0) {
        values.first().append(sample.endpoints.value(0));
    } else {
        for (Table& samples : values) {
            samples.append(QVector<double>());
        }
        const QVector<int>& models = plan.models.at(nextSample);
        for (int i = 0; i < models.size(); ++i) {
            values[models.at(i)].last() = sample.endpoints.at(i);
        }
    }
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

/// Evaluates the next samples: as many as make a parallel section worthwhile, and one where
/// random numbers drawn ahead could not be given back. False if it is given up.
bool EndpointRun::prepare(const GoesOn& goesOn)
{
    StartedWork started;
    qint64 numbers = 0;
    qint64 operations = 0;
    int mostSamples = preparedPlainSamples;
    for (int sample = nextSample;
         sample < sampleCount() && numbers < preparedNumbers && operations < preparedOperations
         && prepared.size() < mostSamples;
         ++sample) {
        const QVector<int>& models = plan.models.at(sample);
        prepared.enqueue({randomPosition(), Table(models.size())});
        for (int i = 0; i < models.size(); ++i) {
            const int model = models.at(i);
            const QVector<double>* row = bootstrapRow(model, sample);
            if (row == nullptr) {
                continue;
            }
            endPoint& definition = endPoints[model];
            if (!startRow(*row, {prepared.size() - 1, i, model}, started)) {
                auto evaluated =
                    definition.evaluateEndpoint(*row, within(goesOn, definition.operationCount()));
                if (!evaluated) {
                    giveBack();
                    return false;
                }
                prepared.last().endpoints[i] = *std::move(evaluated);
                // With ETAs it was too much to be one of several pieces of work.
                numbers += definition.highestEta > 0 ? preparedNumbers : 0;
            }
            mostSamples = definition.evaluatesRows() ? mostSamples : preparedSamples;
            operations += definition.operationCount();
            if (started.numbers >= preparedNumbers) {
                numbers += started.numbers;
                finish(started); // more models may follow, each with as much to hold
            }
        }
        if (!prepared.last().randomPosition || numbers + started.numbers >= preparedNumbers) {
            break;
        }
    }
    finish(started);
    return true;
}

/// Starts the evaluation of a row, whose endpoints have their place. False, with nothing drawn,
/// where it is too much for one piece of work or its expression is malformed.
bool EndpointRun::startRow(const QVector<double>& row, const StartedWork::Place& place,
                           StartedWork& started)
{
    endPoint& definition = endPoints[place.model];
    if (definition.evaluatesRows()) {
        if (definition.operationCount() >= preparedOperations) {
            return false;
        }
        StartedWork::Rows& ofModel = started.ofModels[place.model];
        ofModel.rows.append(&row);
        ofModel.places.append(place);
        started.numbers += definition.doses.size();
        return true;
    }
    auto container = definition.startEvaluation(row);
    if (!container) {
        return false;
    }
    started.numbers += heldNumbers(container->population);
    started.containers.append(*std::move(container));
    started.places.append(place);
    return true;
}

/// Does the work and forgets it.
void EndpointRun::finish(StartedWork& started)
{
    evaluateContainers(started.containers);
    for (int i = 0; i < started.places.size(); ++i) {
        const auto [sample, plannedModel, model] = started.places.at(i);
        prepared[sample].endpoints[plannedModel] =
            endPoints.at(model).finishEvaluation(started.containers.at(i));
    }
    for (const auto& [model, ofModel] : started.ofModels) {
        Table evaluated = endPoints[model].evaluateRows(ofModel.rows);
        for (int row = 0; row < evaluated.size(); ++row) {
            const StartedWork::Place& place = ofModel.places.at(row);
            prepared[place.prepared].endpoints[place.plannedModel] = std::move(evaluated[row]);
        }
    }
    started = {};
}

/// nullptr where the model lacks the sample.
const QVector<double>* EndpointRun::bootstrapRow(int model, int sample) const
{
    const bool exists = model >= 0 && model < endPoints.size() && model < rawResults.size()
                        && dataSet < rawResults.at(model).size()
                        && sample < rawResults.at(model).at(dataSet).size();
    return exists ? &rawResults.at(model).at(dataSet).at(sample) : nullptr;
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
