// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/calculation.h"

#include "analysis/weights.h"

#include <algorithm>

namespace {

/// False if aborted.
bool evaluateAll(EndpointRun& run, const GoesOn& goesOn)
{
    for (int sample = 0; sample < run.sampleCount(); ++sample) {
        if (!run.evaluateNext(goesOn) || (goesOn && !goesOn())) {
            return false;
        }
    }
    return true;
}

/// The endpoints by which a data set is judged with model averaging, [model][sample][dose]; none if
/// aborted. A cached entry is not checked.
std::optional<QVector<Table>> averagedEndpoints(const Study& study, int dataSet,
                                                const Table& weights, EndpointCache* cache,
                                                const GoesOn& goesOn)
{
    if (weights.isEmpty()) {
        return QVector<Table>();
    }
    const int modelCount = study.endPoints.size();
    if (cache != nullptr) {
        if (auto kept = cache->averaged(dataSet, modelCount)) {
            return kept;
        }
    }
    EndpointRun run(study, dataSet, averagingPlan(weights, study.individualOfv, modelCount));
    if (!evaluateAll(run, goesOn)) {
        return std::nullopt;
    }
    if (cache != nullptr) {
        cache->keep(dataSet, run.endpoints(), endpointProvenance(study));
    }
    return run.endpoints();
}

/// The same for model selection: for the model that judges each sample, and with a cache for all
/// models, so that it serves other selections too.
std::optional<QVector<Table>> selectedEndpoints(const Study& study, int dataSet,
                                                const QVector<int>& selected, EndpointCache* cache,
                                                const GoesOn& goesOn)
{
    if (selected.isEmpty()) {
        return QVector<Table>();
    }
    const int modelCount = study.endPoints.size();
    if (cache != nullptr && cache->selected(dataSet, modelCount, selected)) {
        return cache->averaged(dataSet, modelCount);
    }
    EndpointRun run(study, dataSet,
                    cache == nullptr ? selectionPlan(selected, true)
                                     : completePlan(selected.size(), modelCount));
    if (!evaluateAll(run, goesOn)) {
        return std::nullopt;
    }
    if (cache == nullptr) {
        return spreadSelected(run.endpoints().value(0), selected, modelCount);
    }
    cache->keep(dataSet, run.endpoints(), endpointProvenance(study));
    return run.endpoints();
}

EndpointPlan planOf(const Study& study, const JudgingWeights& weights)
{
    return study.selecting
               ? selectionPlan(weights.selected, true)
               : averagingPlan(weights.relative, study.individualOfv, study.endPoints.size());
}

} // namespace

ProbabilityRun::ProbabilityRun(const Study& currentStudy, int dataSetNumber)
    : study(currentStudy)
    , dataSet(dataSetNumber)
    , weights(judgingWeights(study, dataSet))
    , run(study, dataSet, planOf(study, weights))
{
}

Evaluation ProbabilityRun::evaluation() const
{
    return keepEvaluation(study, dataSet, weights,
                          study.selecting ? spreadSelected(run.endpoints().value(0),
                                                           weights.selected, study.endPoints.size())
                                          : run.endpoints());
}

std::optional<QVector<double>> probabilityCurve(const Study& study, int dataSet,
                                                EndpointCache* cache, const GoesOn& goesOn,
                                                Evaluation* evaluation)
{
    if (study.doses.isEmpty()) {
        return QVector<double>();
    }
    const JudgingWeights weights = judgingWeights(study, dataSet);
    const auto endpoints = study.selecting
                               ? selectedEndpoints(study, dataSet, weights.selected, cache, goesOn)
                               : averagedEndpoints(study, dataSet, weights.relative, cache, goesOn);
    if (!endpoints) {
        return std::nullopt;
    }
    if (evaluation != nullptr) {
        *evaluation = keepEvaluation(study, dataSet, weights, *endpoints);
    }
    return study.selecting
               ? probabilityBySelection(pickSelected(*endpoints, weights.selected),
                                        study.doses.size(), study.target)
               : probabilityByAveraging(*endpoints, weights.relative, study.individualOfv,
                                        study.doses.size(), study.target);
}

qint64 randomNumberCount(const Study& study, int dataSet, bool ofAllModels)
{
    const auto mayDraw = [](endPoint definition) { return definition.mayDrawRandomNumbers(); };
    if (dataSet >= study.dataSetCount()
        || std::none_of(study.endPoints.begin(), study.endPoints.end(), mayDraw)) {
        return 0;
    }
    const EndpointPlan plan =
        study.selecting && ofAllModels
            ? completePlan(study.rawResults.first().at(dataSet).size(), study.endPoints.size())
            : planOf(study, judgingWeights(study, dataSet));
    return EndpointRun(study, dataSet, plan).randomNumberCount();
}
