// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/comparison.h"
#include "bench/flatcurve.h"
#include "bench/inputs.h"
#include "bench/processors.h"
#include "bench/study.h"
#include "bench/subjects.h"
#include "tests/support/randomnumbers.h"

#include <QThread>

#include <cmath>
#include <memory>

namespace {

constexpr FlatCurve::Weights modelWeights{0.4, 0.3, 0.2, 0.1};

/// True if the curves differ by no more than the relative tolerance; 0 demands equal numbers.
bool sameCurve(const Curve& first, const Curve& second, double tolerance)
{
    return std::equal(
               first.endpoints.begin(), first.endpoints.end(), second.endpoints.begin(),
               second.endpoints.end(),
               [tolerance](const Table& a, const Table& b) { return sameWithin(a, b, tolerance); })
           && sameWithin(first.probability, second.probability, tolerance);
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
    // The threads get even shares of the individuals, so a remainder is left out; the mean divides
    // by all.
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

Curve curveByHand(const RawResults& rawResults)
{
    Generator generator;
    const int sampleCount = rawResults.constFirst().constFirst().size();
    Curve curve{QVector<Table>(int(modelWeights.size())), QVector<double>(doses.size(), 0.0)};
    for (int sample = 0; sample < sampleCount; ++sample) {
        const auto row = [&rawResults, sample](int model) -> const QVector<double>& {
            return rawResults.at(model).at(0).at(sample);
        };
        curve.endpoints[0].append(simulate(row(0), linear, generator));
        curve.endpoints[1].append(simulate(row(1), emax, generator));
        curve.endpoints[2].append(simulate(row(2), sigmoidEmax, generator));
        curve.endpoints[3].append(simulate(row(3), exponential, generator));
        for (int model = 0; model < int(modelWeights.size()); ++model) {
            const double step = modelWeights.at(std::size_t(model)) / sampleCount * 100;
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

/// The curve by Velmora.
class Probability
{
public:
    explicit Probability(Variability variability)
        : study(makeStudy({}, variability))
        , definitions(definitionsOf(study))
    {
    }

    const RawResults& rawResults() const { return study.rawResults; }

    Curve curve()
    {
        seedRandomNumbers(1);
        const int sampleCount = rawResults().constFirst().constFirst().size();
        const QVector<double> weights(modelWeights.begin(), modelWeights.end());
        return computeCurve(definitions, rawResults(), Table(sampleCount, weights), false);
    }

private:
    ProjectItems study;
    QVector<endPoint> definitions;
};

Side byVelmora(const std::shared_ptr<Probability>& velmora)
{
    return timed([velmora] { benchmark::DoNotOptimize(velmora->curve().probability.constData()); });
}

/// Cosines and logarithms of libraries may differ in the last place.
bool isSameAsByHand(Probability& velmora)
{
    constexpr double tolerance = 1e-12;
    return sameCurve(velmora.curve(), curveByHand(velmora.rawResults()), tolerance);
}

Comparison compareWithEtas(const std::shared_ptr<Probability>& velmora)
{
    Comparison comparison;
    comparison.name = "pos_eta";
    if (__builtin_cpu_supports("avx") != 0) {
        comparison.bar = 0.6;
    }
    comparison.contests = {{byVelmora(velmora), timed([velmora] {
                                benchmark::DoNotOptimize(
                                    curveByHand(velmora->rawResults()).probability.constData());
                            })}};
    comparison.agree = [velmora] { return isSameAsByHand(*velmora); };
    return comparison;
}

Comparison compareWithoutEtas()
{
    const auto velmora = std::make_shared<Probability>(Variability::None);
    const auto flat = std::make_shared<FlatCurve>(velmora->rawResults());
    Comparison comparison;
    comparison.name = "pos_plain";
    comparison.bar = 1.8;
    comparison.contests = {{byVelmora(velmora), timed([flat] {
                                flat->compute(modelWeights);
                                benchmark::DoNotOptimize(flat->probability());
                            })}};
    comparison.agree = [velmora, flat] {
        flat->compute(modelWeights);
        return sameCurve(velmora->curve(), flat->results(), 0.0);
    };
    return comparison;
}

/// Wall time with one thread for each processor; NaN if other programs take more than a small share
/// of the processors.
Side onProcessors(int count, const std::shared_ptr<Probability>& velmora)
{
    return [count, velmora] {
        constexpr double smallShare = 0.05;
        constexpr int curves = 8; // the system counts the time of others in coarse ticks
        const Processors processors(count);
        const OtherPrograms others;
        const Stopwatch watch(Clock::WholeWall);
        for (int curve = 0; curve < curves; ++curve) {
            benchmark::DoNotOptimize(velmora->curve().probability.constData());
        }
        const double seconds = watch.seconds() / curves;
        return others.share() > smallShare ? std::numeric_limits<double>::quiet_NaN() : seconds;
    };
}

Comparison compareThreads(const std::shared_ptr<Probability>& velmora)
{
    Comparison comparison;
    comparison.name = "pos_eta_threads";
    comparison.bar = 0.68;
    comparison.contests = {{onProcessors(2, velmora), onProcessors(1, velmora)}};
    comparison.agree = [velmora] {
        const Processors processors(2);
        return isSameAsByHand(*velmora);
    };
    return comparison;
}

} // namespace

void registerProbability(Report& report)
{
    const auto withEtas = std::make_shared<Probability>(Variability::TwoEtas);
    registerComparison(report, compareWithEtas(withEtas));
    registerComparison(report, compareThreads(withEtas));
    registerComparison(report, compareWithoutEtas());
}
