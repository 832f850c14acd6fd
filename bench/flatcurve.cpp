// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/flatcurve.h"

#include "bench/inputs.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t modelCount = 4;
constexpr std::size_t doseCount = 11;
constexpr std::size_t rowLength = modelCount * doseCount;

} // namespace

FlatCurve::FlatCurve(const RawResults& rawResults)
    : inputs(rawResults)
    , doseAxis(doses.begin(), doses.end())
    , percent(doseCount)
{
}

/// The endpoint expressions of the four models.
inline void FlatCurve::evaluate(int sample, double* values) const
{
    const auto thetas = [this, sample](int model) {
        return inputs.at(model).constFirst().at(sample).constData() + ThetaColumn;
    };
    const double* linear = thetas(0);
    const double* emax = thetas(1);
    const double* sigmoid = thetas(2);
    const double* exponential = thetas(3);
    for (std::size_t dose = 0; dose < doseCount; ++dose) {
        const double amount = doseAxis[dose];
        const double effect = std::pow(amount, sigmoid[3]);
        values[dose] = linear[0] + linear[1] * amount / linear[2];
        values[dose + doseCount] = emax[0] + emax[1] * amount / (emax[2] + amount);
        values[dose + 2 * doseCount] =
            sigmoid[0] + sigmoid[1] * effect / (std::pow(sigmoid[2], sigmoid[3]) + effect);
        values[dose + 3 * doseCount] =
            exponential[0] + exponential[1] * (1 - std::exp(-amount / exponential[2]));
    }
}

void FlatCurve::compute(const Weights& weights)
{
    const int sampleCount = inputs.constFirst().constFirst().size();
    endpoints = std::vector<double>(std::size_t(sampleCount) * rowLength);
    Weights steps{};
    std::transform(weights.begin(), weights.end(), steps.begin(),
                   [sampleCount](double weight) { return weight / sampleCount * 100; });
    std::array<double, doseCount> sums{};
    double* values = endpoints.data();
    for (int sample = 0; sample < sampleCount; ++sample) {
        evaluate(sample, values);
        for (std::size_t model = 0; model < modelCount; ++model) {
            for (std::size_t dose = 0; dose < doseCount; ++dose) {
                const double value = values[model * doseCount + dose];
                const bool isInside = (value > target.lower) & (value <= target.upper);
                sums[dose] += isInside ? steps[model] : 0.0;
            }
        }
        values += rowLength;
    }
    std::copy(sums.begin(), sums.end(), percent.begin());
}

Curve FlatCurve::results() const
{
    Curve curve{QVector<Table>(int(modelCount)), QVector<double>(percent.begin(), percent.end())};
    for (std::size_t first = 0; first < endpoints.size(); first += doseCount) {
        const auto values = endpoints.begin() + std::ptrdiff_t(first);
        curve.endpoints[int(first / doseCount % modelCount)].append(
            QVector<double>(values, values + std::ptrdiff_t(doseCount)));
    }
    return curve;
}
