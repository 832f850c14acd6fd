// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/certainty/averagedendpoint.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct Weighed
{
    double endpoint;
    double weight;
};

bool ascending(const Weighed& a, const Weighed& b)
{
    return a.endpoint < b.endpoint;
}

/// The distribution of endpoints, which ascend.
EndpointDistribution distributionOf(const QVector<Weighed>& values, double wholeWeight)
{
    EndpointDistribution found;
    found.quantiles.fill(notANumber, endpointQuantileCount);
    double weight = 0.0;
    double sum = 0.0;
    for (const Weighed& value : values) {
        weight += value.weight;
        sum += value.weight * value.endpoint;
    }
    found.mean = values.isEmpty() ? notANumber : sum / weight;
    // Weights are rounded: a share that is reached except for rounding counts as reached.
    constexpr double rounding = 1 - 1e-12;
    const double excluded = weight < wholeWeight * rounding ? 1 - weight / wholeWeight : 0.0;
    found.excluded = wholeWeight > 0 ? 100.0 * excluded : notANumber;
    double reached = 0.0;
    int quantile = 0;
    for (const Weighed& value : values) {
        reached += value.weight;
        while (quantile < endpointQuantileCount
               && reached >= endpointQuantiles[quantile] * weight * rounding) {
            found.quantiles[quantile++] = value.endpoint;
        }
    }
    return found;
}

/// Endpoints of a model at a dose that are finite and have a weight, ascending.
QVector<Weighed> weighedEndpoints(const Evaluation& evaluation, const Grid& weights, int model,
                                  int dose)
{
    QVector<Weighed> values;
    for (int sample = 0; sample < evaluation.sampleCount; ++sample) {
        const double weight = weights.row(sample)[model];
        const double* endpoints = evaluation.endpoints.at(model).of(sample);
        if (weight > 0 && endpoints != nullptr && std::isfinite(endpoints[dose])) {
            values.append({endpoints[dose], weight});
        }
    }
    std::sort(values.begin(), values.end(), ascending);
    return values;
}

/// The sum of the weights of each model.
QVector<double> wholeWeights(const Evaluation& evaluation, const Grid& weights)
{
    QVector<double> sums(evaluation.endpoints.size(), 0.0);
    for (int sample = 0; sample < evaluation.sampleCount; ++sample) {
        for (int model = 0; model < sums.size(); ++model) {
            sums[model] += weights.row(sample)[model];
        }
    }
    return sums;
}

} // namespace

AveragedEndpoint averagedEndpoint(const Study& made, const Evaluation& evaluation)
{
    const Grid weights = appliedWeights(made, evaluation);
    const int modelCount = evaluation.endpoints.size();
    const QVector<double> ofModels = wholeWeights(evaluation, weights);
    AveragedEndpoint found;
    found.byModel.resize(modelCount);
    for (int dose = 0; dose < made.doses.size(); ++dose) {
        QVector<Weighed> all;
        for (int model = 0; model < modelCount; ++model) {
            const QVector<Weighed> values = weighedEndpoints(evaluation, weights, model, dose);
            const int before = all.size();
            all += values;
            std::inplace_merge(all.begin(), all.begin() + before, all.end(), ascending);
            found.byModel[model].append(distributionOf(values, ofModels.at(model)));
        }
        found.all.append(distributionOf(all, evaluation.sampleCount));
    }
    return found;
}
