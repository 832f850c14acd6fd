// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/comparison.h"
#include "bench/inputs.h"
#include "bench/processors.h"
#include "bench/report.h"
#include "bench/study.h"
#include "bench/subjects.h"
#include "tests/support/randomnumbers.h"

#include <QThread>

#include <cmath>
#include <memory>

namespace {

const QVector<double> modelWeights{0.4, 0.3, 0.2, 0.1};

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

/// The numbers of qrand() after qsrand(1), without its calls.
class Generator
{
public:
    double normal()
    {
        const double first = uniform();
        const double second = uniform();
        return std::sqrt(-2.0 * std::log(first)) * std::cos(6.283185307179586 * second);
    }

private:
    double uniform()
    {
        const quint64 product = quint64(state) * 48271U;
        state = quint32(product & 0x7fffffffU) + quint32(product >> 31U);
        state = state >= 0x7fffffffU ? state - 0x7fffffffU : state;
        return int(state) / 2147483647.0;
    }

    quint32 state = 1;
};

template <typename Model>
QVector<double> simulate(const QVector<double>& row, Model (*modelAt)(const double*, double),
                         Generator& generator)
{
    // As many individuals as the threads get in even shares; the mean counts all.
    const int threads = qMax(1, QThread::idealThreadCount());
    const int individuals = simulationCount / threads * threads;
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
            const double first = generator.normal();
            const double second = generator.normal();
            sum += model(factor11 * first, factor21 * first + factor22 * second);
        }
        endpoints.append(sum / simulationCount);
    }
    return endpoints;
}

template <typename Model>
QVector<double> evaluate(const QVector<double>& row, Model (*modelAt)(const double*, double))
{
    QVector<double> endpoints;
    endpoints.reserve(doses.size());
    for (const double dose : doses) {
        endpoints.append(modelAt(row.constData() + ThetaColumn, dose)(0.0, 0.0));
    }
    return endpoints;
}

template <typename Model>
QVector<double> endpointsOf(const QVector<double>& row, Model (*modelAt)(const double*, double),
                            Generator* generator)
{
    return generator != nullptr ? simulate(row, modelAt, *generator) : evaluate(row, modelAt);
}

Curve curveByHand(const RawResults& rawResults, Variability variability)
{
    Generator numbers;
    Generator* const generator = variability == Variability::TwoEtas ? &numbers : nullptr;
    const int sampleCount = rawResults.constFirst().constFirst().size();
    Curve curve{QVector<Table>(modelWeights.size()), QVector<double>(doses.size(), 0.0)};
    for (int sample = 0; sample < sampleCount; ++sample) {
        const auto row = [&rawResults, sample](int model) -> const QVector<double>& {
            return rawResults.at(model).at(0).at(sample);
        };
        curve.endpoints[0].append(endpointsOf(row(0), linear, generator));
        curve.endpoints[1].append(endpointsOf(row(1), emax, generator));
        curve.endpoints[2].append(endpointsOf(row(2), sigmoidEmax, generator));
        curve.endpoints[3].append(endpointsOf(row(3), exponential, generator));
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

/// The same curve by hand and by Velmora.
class Probability
{
public:
    explicit Probability(Variability studyVariability)
        : variability(studyVariability)
        , study(makeStudy({}, variability))
        , definitions(definitionsOf(study))
    {
    }

    Curve byHand() const { return curveByHand(study.rawResults, variability); }

    Curve byVelmora()
    {
        seedRandomNumbers(1);
        const int sampleCount = study.rawResults.constFirst().constFirst().size();
        return computeCurve(definitions, study.rawResults, Table(sampleCount, modelWeights), false);
    }

private:
    Variability variability;
    ProjectItems study;
    QVector<endPoint> definitions;
};

void registerCurve(const char* subject, const std::shared_ptr<Probability>& probability)
{
    Comparison comparison;
    comparison.subject = subject;
    comparison.ways = {
        {"plain",
         [probability](benchmark::State& /*state*/) {
             benchmark::DoNotOptimize(probability->byHand().probability.constData());
         }},
        {"velmora",
         [probability](benchmark::State& /*state*/) {
             benchmark::DoNotOptimize(probability->byVelmora().probability.constData());
         }},
    };
    comparison.agree = [probability] {
        return sameCurve(probability->byVelmora(), probability->byHand());
    };
    comparison.repetitions = 15;
    registerComparison(comparison);
}

/// With as many threads in the pool as processors.
void registerThreads(const char* subject, const std::shared_ptr<Probability>& probability)
{
    const auto onProcessors = [probability](int count) {
        return [probability, count](benchmark::State& /*state*/) {
            const Processors processors(count);
            benchmark::DoNotOptimize(probability->byVelmora().probability.constData());
        };
    };
    Comparison comparison;
    comparison.subject = subject;
    comparison.ways = {{"one", onProcessors(1)}, {"two", onProcessors(2)}};
    comparison.agree = [probability] {
        const Processors processors(2);
        return sameCurve(probability->byVelmora(), probability->byHand());
    };
    comparison.clock = Clock::Wall;
    comparison.repetitions = 25;
    registerComparison(comparison);
}

} // namespace

void registerProbability(Report& report)
{
    const auto withEtas = std::make_shared<Probability>(Variability::TwoEtas);
    registerCurve("probability/twoEtas", withEtas);
    registerThreads("probability/threads", withEtas);
    registerCurve("probability/withoutEtas", std::make_shared<Probability>(Variability::None));
    report.addRow("pos_eta", 1.3,
                  timeRatio("probability/twoEtas/velmora", "probability/twoEtas/plain"));
    report.addRow("pos_eta_threads", 0.75,
                  timeRatio("probability/threads/two", "probability/threads/one"));
    report.addRow("pos_plain", 4,
                  timeRatio("probability/withoutEtas/velmora", "probability/withoutEtas/plain"));
}
