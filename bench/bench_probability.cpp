// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/analysis/probability.h"
#include "bench/comparison.h"
#include "bench/inputs.h"
#include "bench/subjects.h"

#include <QThread>

#include <cmath>
#include <cstdint>
#include <memory>

// qrand() is the generator that the hand-written loop has to share.
QT_WARNING_DISABLE_DEPRECATED

namespace {

constexpr int sampleCount = 1000;
constexpr int simulationCount = 100;
const QVector<double> doses{0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100};
const QVector<double> modelWeights{0.4, 0.3, 0.2, 0.1};
constexpr TargetInterval target{0.6, 1.2};

const char* const etaExpressions[] = {
    "THETA1+ETA1+(THETA2+ETA2)*DOSE/THETA3",
    "THETA1+ETA1+(THETA2+ETA2)*DOSE/(THETA3+DOSE)",
    "THETA1+ETA1+(THETA2+ETA2)*DOSE^THETA4/(THETA3^THETA4+DOSE^THETA4)",
    "THETA1+ETA1+(THETA2+ETA2)*(1-exp((0-DOSE)/THETA3))",
};

const char* const typicalExpressions[] = {
    "THETA1+THETA2*DOSE/THETA3",
    "THETA1+THETA2*DOSE/(THETA3+DOSE)",
    "THETA1+THETA2*DOSE^THETA4/(THETA3^THETA4+DOSE^THETA4)",
    "THETA1+THETA2*(1-exp((0-DOSE)/THETA3))",
};

struct Curve
{
    QVector<Table> endpoints; ///< [model][sample][dose]
    QVector<double> probability;
};

bool sameCurve(const Curve& first, const Curve& second)
{
    return std::equal(first.endpoints.begin(), first.endpoints.end(), second.endpoints.begin(),
                      second.endpoints.end(),
                      [](const Table& a, const Table& b) { return sameBits(a, b); })
           && sameBits(first.probability, second.probability);
}

// The models by hand: what does not depend on the ETAs is computed once per dose.

struct LinearOrEmax
{
    double intercept, slope, dose, denominator;
    double operator()(double eta1, double eta2) const
    {
        return intercept + eta1 + (slope + eta2) * dose / denominator;
    }
};

LinearOrEmax linear(const double* theta, double dose)
{
    return {theta[0], theta[1], dose, theta[2]};
}

LinearOrEmax emax(const double* theta, double dose)
{
    return {theta[0], theta[1], dose, theta[2] + dose};
}

LinearOrEmax sigmoidEmax(const double* theta, double dose)
{
    const double effect = std::pow(dose, theta[3]);
    return {theta[0], theta[1], effect, std::pow(theta[2], theta[3]) + effect};
}

struct Exponential
{
    double intercept, slope, rise;
    double operator()(double eta1, double eta2) const
    {
        return intercept + eta1 + (slope + eta2) * rise;
    }
};

Exponential exponential(const double* theta, double dose)
{
    return {theta[0], theta[1], 1 - std::exp(-dose / theta[2])};
}

double uniform()
{
    return qrand() / 2147483647.0;
}

double standardNormal()
{
    const double first = uniform();
    const double second = uniform();
    return std::sqrt(-2.0 * std::log(first)) * std::cos(6.283185307179586 * second);
}

template <typename Model>
QVector<double> simulatePlain(const QVector<double>& row, Model (*modelAt)(const double*, double))
{
    // As many individuals as the processors get in even shares; the mean counts all.
    const int processors = qMax(1, QThread::idealThreadCount());
    const int individuals = simulationCount / processors * processors;
    const double* omega = row.constData() + OmegaColumn;
    const double factor11 = std::sqrt(omega[0]);
    const double factor21 = omega[1] / factor11;
    const double factor22 = std::sqrt(omega[2] - factor21 * factor21);
    QVector<double> endpoints;
    endpoints.reserve(doses.size());
    for (const double dose : doses) {
        const Model model = modelAt(row.constData() + ThetaColumn, dose);
        double sum = 0.0;
        for (int individual = 0; individual < individuals; ++individual) {
            const double first = standardNormal();
            const double second = standardNormal();
            sum += model(factor11 * first, factor21 * first + factor22 * second);
        }
        endpoints.append(sum / simulationCount);
    }
    return endpoints;
}

template <typename Model>
QVector<double> evaluatePlain(const QVector<double>& row, Model (*modelAt)(const double*, double))
{
    QVector<double> endpoints;
    endpoints.reserve(doses.size());
    for (const double dose : doses) {
        endpoints.append(modelAt(row.constData() + ThetaColumn, dose)(0.0, 0.0));
    }
    return endpoints;
}

class ProbabilityInputs
{
public:
    explicit ProbabilityInputs(bool withEtas);

    Curve plain() const;
    Curve product();

private:
    template <typename Model>
    QVector<double> plainEndpoints(const QVector<double>& row,
                                   Model (*modelAt)(const double*, double)) const
    {
        return usesEtas ? simulatePlain(row, modelAt) : evaluatePlain(row, modelAt);
    }

    bool usesEtas;
    QVector<endPoint> endPoints;
    RawResults rawResults; ///< one data set
};

ProbabilityInputs::ProbabilityInputs(bool withEtas)
    : usesEtas(withEtas)
{
    InputNumbers numbers;
    for (const char* expression : withEtas ? etaExpressions : typicalExpressions) {
        endPoint definition;
        definition.endPointParser.expression = expression;
        definition.numSimulations = simulationCount;
        definition.bringUpToDate(doses);
        definition.resizeOmega(withEtas ? 2 : 0);
        if (withEtas) {
            definition.omegaColumns = {{OmegaColumn, OmegaColumn + 1},
                                       {OmegaColumn + 1, OmegaColumn + 2}};
        }
        endPoints.append(definition);
        rawResults.append({bootstrapTable(numbers, sampleCount)});
    }
}

Curve ProbabilityInputs::plain() const
{
    qsrand(1);
    Curve curve{QVector<Table>(modelWeights.size()), QVector<double>(doses.size(), 0.0)};
    for (int sample = 0; sample < sampleCount; ++sample) {
        const auto row = [this, sample](int model) -> const QVector<double>& {
            return rawResults.at(model).at(0).at(sample);
        };
        curve.endpoints[0].append(plainEndpoints(row(0), linear));
        curve.endpoints[1].append(plainEndpoints(row(1), emax));
        curve.endpoints[2].append(plainEndpoints(row(2), sigmoidEmax));
        curve.endpoints[3].append(plainEndpoints(row(3), exponential));
        for (int model = 0; model < modelWeights.size(); ++model) {
            const double step = modelWeights.at(model) / sampleCount * 100;
            const QVector<double>& endpoints = curve.endpoints.at(model).constLast();
            for (int dose = 0; dose < doses.size(); ++dose) {
                if (target.contains(endpoints.at(dose))) {
                    curve.probability[dose] += step;
                }
            }
        }
    }
    return curve;
}

Curve ProbabilityInputs::product()
{
    qsrand(1);
    const Table weights(sampleCount, modelWeights);
    EndpointRun run(endPoints, rawResults, 0, averagingPlan(weights, false, endPoints.size()));
    for (int sample = 0; sample < sampleCount; ++sample) {
        run.evaluateNext();
    }
    return {run.endpoints(),
            probabilityByAveraging(run.endpoints(), weights, false, doses.size(), target)};
}

void registerCurve(const char* subject, bool withEtas)
{
    const auto inputs = std::make_shared<ProbabilityInputs>(withEtas);
    Comparison comparison;
    comparison.subject = subject;
    comparison.ways = {
        {"plain", [inputs] { benchmark::DoNotOptimize(inputs->plain().probability.data()); }},
        {"velmora", [inputs] { benchmark::DoNotOptimize(inputs->product().probability.data()); }},
    };
    comparison.agree = [inputs] { return sameCurve(inputs->product(), inputs->plain()); };
    comparison.items = std::int64_t(sampleCount) * modelWeights.size() * doses.size();
    registerComparison(comparison);
}

} // namespace

void registerProbability()
{
    registerCurve("probability/twoEtas", true);
    registerCurve("probability/withoutEtas", false);
}
