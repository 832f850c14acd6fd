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

/// Endpoints of the model that judges each sample, and with a cache of all models.
struct SelectedEndpoints
{
    Table judging;      ///< [sample][dose]
    QVector<Table> all; ///< [model][sample][dose]; empty without a cache
};

/// None if it is given up. The cache holds all models, so that it serves other selections too.
std::optional<SelectedEndpoints> selectedEndpoints(const Study& study, int dataSet,
                                                   const QVector<int>& selected,
                                                   EndpointCache* cache, const GoesOn& goesOn)
{
    if (selected.isEmpty()) {
        return SelectedEndpoints();
    }
    const int modelCount = study.endPoints.size();
    if (cache != nullptr) {
        if (auto kept = cache->selected(dataSet, modelCount, selected)) {
            return SelectedEndpoints{*kept, cache->averaged(dataSet, modelCount).value()};
        }
    }
    EndpointRun run(study, dataSet,
                    cache == nullptr ? selectionPlan(selected, true)
                                     : completePlan(selected.size(), modelCount));
    if (!evaluateAll(run, goesOn)) {
        return std::nullopt;
    }
    if (cache == nullptr) {
        return SelectedEndpoints{run.endpoints().value(0), {}};
    }
    cache->keep(dataSet, run.endpoints(), endpointProvenance(study));
    return SelectedEndpoints{pickSelected(run.endpoints(), selected), run.endpoints()};
}

EndpointPlan planOf(const Study& study, const JudgingWeights& weights)
{
    return study.selecting
               ? selectionPlan(weights.selected, true)
               : averagingPlan(weights.relative, study.individualOfv, study.endPoints.size());
}

/// The endpoints that a run has gathered, kept.
Evaluation keepRun(const Study& study, int dataSet, const JudgingWeights& weights,
                   const QVector<Table>& endpoints)
{
    return keepEvaluation(study, dataSet, weights,
                          study.selecting ? spreadSelected(endpoints.value(0), weights.selected,
                                                           study.endPoints.size())
                                          : endpoints);
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
    return keepRun(study, dataSet, weights, run.endpoints());
}

std::optional<QVector<double>> probabilityCurve(const Study& study, int dataSet,
                                                EndpointCache* cache, const GoesOn& goesOn,
                                                Evaluation* evaluation)
{
    if (study.doses.isEmpty()) {
        return QVector<double>();
    }
    const JudgingWeights weights = judgingWeights(study, dataSet);
    if (study.selecting) {
        const auto endpoints = selectedEndpoints(study, dataSet, weights.selected, cache, goesOn);
        if (!endpoints) {
            return std::nullopt;
        }
        if (evaluation != nullptr) {
            *evaluation = endpoints->all.isEmpty()
                              ? keepRun(study, dataSet, weights, {endpoints->judging})
                              : keepEvaluation(study, dataSet, weights, endpoints->all);
        }
        return probabilityBySelection(endpoints->judging, study.doses.size(), study.target);
    }
    const auto endpoints = averagedEndpoints(study, dataSet, weights.relative, cache, goesOn);
    if (!endpoints) {
        return std::nullopt;
    }
    if (evaluation != nullptr) {
        *evaluation = keepEvaluation(study, dataSet, weights, *endpoints);
    }
    return probabilityByAveraging(*endpoints, weights.relative, study.individualOfv,
                                  study.doses.size(), study.target);
}
