// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/calculation.h"

#include "analysis/weights.h"

namespace {

/// False if it is given up.
bool evaluateAll(EndpointRun& run, const GoesOn& goesOn)
{
    for (int sample = 0; sample < run.sampleCount(); ++sample) {
        if (!run.evaluateNext(goesOn) || (goesOn && !goesOn())) {
            return false;
        }
    }
    return true;
}

/// The endpoints by which a data set is judged with model averaging, [model][sample][dose];
/// none if it is given up. A cached entry is trusted as it is.
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

/// The endpoints of the model that judges each sample, [sample][dose]; none if it is given
/// up. The cache holds all models, so that it serves other selections too.
std::optional<Table> selectedEndpoints(const Study& study, int dataSet, EndpointCache* cache,
                                       const GoesOn& goesOn)
{
    const QVector<int> selected = judgingModels(study, dataSet);
    if (selected.isEmpty()) {
        return Table();
    }
    const int modelCount = study.endPoints.size();
    if (cache != nullptr) {
        if (auto kept = cache->selected(dataSet, modelCount, selected)) {
            return kept;
        }
    }
    EndpointRun run(study, dataSet,
                    cache == nullptr ? selectionPlan(selected, true)
                                     : completePlan(selected.size(), modelCount));
    if (!evaluateAll(run, goesOn)) {
        return std::nullopt;
    }
    if (cache == nullptr) {
        return run.endpoints().value(0);
    }
    cache->keep(dataSet, run.endpoints(), endpointProvenance(study));
    return pickSelected(run.endpoints(), selected);
}

EndpointPlan planOf(const Study& study, int dataSet, const Table& weights)
{
    return study.selecting ? selectionPlan(judgingModels(study, dataSet), true)
                           : averagingPlan(weights, study.individualOfv, study.endPoints.size());
}

} // namespace

ProbabilityRun::ProbabilityRun(const Study& currentStudy, int dataSet)
    : weights(currentStudy.selecting ? Table() : ::relativeWeights(currentStudy, dataSet))
    , run(currentStudy, dataSet, planOf(currentStudy, dataSet, weights))
{
}

std::optional<QVector<double>> probabilityCurve(const Study& study, int dataSet,
                                                EndpointCache* cache, const GoesOn& goesOn)
{
    if (study.doses.isEmpty()) {
        return QVector<double>();
    }
    if (study.selecting) {
        const auto endpoints = selectedEndpoints(study, dataSet, cache, goesOn);
        return endpoints ? std::optional<QVector<double>>(
                   probabilityBySelection(*endpoints, study.doses.size(), study.target))
                         : std::nullopt;
    }
    const Table weights = relativeWeights(study, dataSet);
    const auto endpoints = averagedEndpoints(study, dataSet, weights, cache, goesOn);
    return endpoints ? std::optional<QVector<double>>(probabilityByAveraging(
               *endpoints, weights, study.individualOfv, study.doses.size(), study.target))
                     : std::nullopt;
}
