// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/certainty/othermethods.h"

#include "analysis/dosesearch.h"

namespace {

JudgingWeights weightsOf(const Study& study, const Evaluation& evaluation)
{
    JudgingWeights weights;
    weights.values = evaluation.weights.values;
    if (!study.selecting) {
        weights.relative = relativeWeights(weights.values, evaluation.sampleCount, study.logScale);
        return weights;
    }
    weights.selected = selectedModels(weights.values, evaluation.sampleCount);
    if (!study.individualOfv) {
        weights.selected.fill(weights.selected.value(0, -1));
    }
    return weights;
}

} // namespace

std::optional<MethodResult> resultByMethod(const Study& made, const Evaluation& evaluation,
                                           const Method& method)
{
    MethodResult found{made, evaluation, QVector<double>(made.doses.size(), 0.0), {}};
    found.made.selecting = method.selecting;
    found.made.individualOfv = method.individualOfv;
    found.evaluation.weights = weightsOf(found.made, evaluation);
    const Grid weights = appliedWeights(found.made, found.evaluation);
    // In the order of probabilityByAveraging and probabilityBySelection.
    for (int sample = 0; sample < evaluation.sampleCount; ++sample) {
        for (int model = 0; model < evaluation.endpoints.size(); ++model) {
            const double weight = weights.row(sample)[model];
            if (!(weight > 0)) {
                continue;
            }
            const double* endpoints = evaluation.endpoints.at(model).of(sample);
            if (endpoints == nullptr) {
                return std::nullopt;
            }
            const double step = weight / evaluation.sampleCount * 100;
            for (int dose = 0; dose < made.doses.size(); ++dose) {
                if (made.target.contains(endpoints[dose])) {
                    found.probability[dose] += step;
                }
            }
        }
    }
    found.meds = minimumEffectiveDoses(found.probability, made.levels, made.doses);
    return found;
}

MethodMeds medsOfAllMethods(const Study& made, const Evaluation& evaluation)
{
    MethodMeds meds;
    for (const Method& method : allMethods) {
        const auto found =
            evaluation.exists() ? resultByMethod(made, evaluation, method) : std::nullopt;
        meds.append(found ? std::make_optional(found->meds) : std::nullopt);
    }
    return meds;
}
