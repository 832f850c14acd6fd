// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/certainty/contributions.h"

#include <algorithm>
#include <limits>

namespace {

constexpr double dominating = 0.9;

void addParts(const Study& made, const Evaluation& evaluation, Table& parts)
{
    const Grid weights = appliedWeights(made, evaluation);
    for (int model = 0; model < evaluation.endpoints.size(); ++model) {
        for (int sample = 0; sample < evaluation.sampleCount; ++sample) {
            const double step = weights.row(sample)[model] / evaluation.sampleCount * 100;
            const double* endpoints = evaluation.endpoints.at(model).of(sample);
            if (!(step > 0) || endpoints == nullptr) {
                continue;
            }
            for (int dose = 0; dose < parts.size(); ++dose) {
                parts[dose][model] += made.target.contains(endpoints[dose]) ? step : 0.0;
            }
        }
    }
}

} // namespace

Contributions contributionsOf(const Study& made, const Evaluation& evaluation)
{
    const int modelCount = evaluation.endpoints.size();
    const int sampleCount = evaluation.sampleCount;
    Contributions found;
    found.parts = Table(made.doses.size(), QVector<double>(modelCount, 0.0));
    addParts(made, evaluation, found.parts);
    found.meanWeights.fill(0.0, modelCount);
    found.bestShares.fill(0.0, modelCount);
    const Table relative = relativeWeights(evaluation.weights.values, sampleCount, made.logScale);
    const QVector<int> best = selectedModels(evaluation.weights.values, sampleCount);
    int dominated = 0;
    for (int sample = 0; sample < sampleCount; ++sample) {
        const int row = made.individualOfv ? sample : 0;
        const int bestModel = best.at(row);
        if (bestModel >= 0 && bestModel < modelCount) {
            found.bestShares[bestModel] += 100.0 / sampleCount;
        }
        double sum = 0.0;
        double squares = 0.0;
        double greatest = 0.0;
        for (const double weight : relative.at(row)) {
            sum += weight;
            squares += weight * weight;
            greatest = qMax(greatest, weight);
        }
        if (!(sum > 0)) {
            continue; // NaN, too
        }
        ++found.weighedSamples;
        found.effectiveModels += 1 / squares;
        dominated += int(greatest > dominating);
        for (int model = 0; model < qMin(modelCount, relative.at(row).size()); ++model) {
            found.meanWeights[model] += relative.at(row).at(model);
        }
    }
    for (double& weight : found.meanWeights) {
        weight /= found.weighedSamples; // NaN without any
    }
    found.effectiveModels /= found.weighedSamples;
    found.dominatedShare = 100.0 * dominated / found.weighedSamples;
    return found;
}
