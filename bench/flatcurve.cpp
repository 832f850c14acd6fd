// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/flatcurve.h"

#include "bench/inputs.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t modelCount = 4;
constexpr std::size_t thetaCount = 4;
constexpr std::size_t doseCount = 11;
constexpr std::size_t rowLength = modelCount * doseCount;

} // namespace

FlatCurve::FlatCurve(const RawResults& rawResults)
    : doseAxis(doses.begin(), doses.end())
    , percent(doseCount)
{
    const int sampleCount = rawResults.constFirst().constFirst().size();
    for (int sample = 0; sample < sampleCount; ++sample) {
        for (const QVector<Table>& model : rawResults) {
            const double* row = model.constFirst().at(sample).constData() + ThetaColumn;
            thetaRows.insert(thetaRows.end(), row, row + thetaCount);
        }
    }
    endpoints.resize(std::size_t(sampleCount) * rowLength);
}

/// What does not depend on the dose is computed once.
inline void FlatCurve::evaluate(const double* thetas, double* values) const
{
    const double* linear = thetas;
    const double* emax = linear + thetaCount;
    const double* sigmoid = emax + thetaCount;
    const double* exponential = sigmoid + thetaCount;
    const double halfEffect = std::pow(sigmoid[2], sigmoid[3]);
    for (std::size_t dose = 0; dose < doseCount; ++dose) {
        const double amount = doseAxis[dose];
        const double effect = std::pow(amount, sigmoid[3]);
        values[dose] = linear[0] + linear[1] * amount / linear[2];
        values[dose + doseCount] = emax[0] + emax[1] * amount / (emax[2] + amount);
        values[dose + 2 * doseCount] = sigmoid[0] + sigmoid[1] * effect / (halfEffect + effect);
        values[dose + 3 * doseCount] =
            exponential[0] + exponential[1] * (1 - std::exp(-amount / exponential[2]));
    }
}

void FlatCurve::compute(const Weights& weights)
{
    const std::size_t sampleCount = endpoints.size() / rowLength;
    Weights steps{};
    std::transform(weights.begin(), weights.end(), steps.begin(),
                   [sampleCount](double weight) { return weight / double(sampleCount) * 100; });
    std::array<double, doseCount> sums{};
    const double* thetas = thetaRows.data();
    double* values = endpoints.data();
    for (std::size_t sample = 0; sample < sampleCount; ++sample) {
        evaluate(thetas, values);
        for (std::size_t model = 0; model < modelCount; ++model) {
            for (std::size_t dose = 0; dose < doseCount; ++dose) {
                const double value = values[model * doseCount + dose];
                const bool isInside = (value > target.lower) & (value < target.upper);
                sums[dose] += isInside ? steps[model] : 0.0;
            }
        }
        thetas += modelCount * thetaCount;
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
