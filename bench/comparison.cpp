// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/comparison.h"

#include "bench/report.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>

namespace {

constexpr double shortestSample = 0.005;
constexpr double shortestContest = 1.0;

/// Both sides, measured one right after the other.
struct Sample
{
    double product;
    double baseline;
    double ratio() const { return product / baseline; }
};

Sample measurePair(const std::vector<Contest>& contests, bool productFirst)
{
    Sample logarithms{0.0, 0.0};
    for (const Contest& contest : contests) {
        Sample sample{};
        if (productFirst) {
            sample.product = contest.product();
            sample.baseline = contest.baseline();
        } else {
            sample.baseline = contest.baseline();
            sample.product = contest.product();
        }
        logarithms.product += std::log(sample.product) / double(contests.size());
        logarithms.baseline += std::log(sample.baseline) / double(contests.size());
    }
    return {std::exp(logarithms.product), std::exp(logarithms.baseline)};
}

double loadOfMachine()
{
    double load = std::numeric_limits<double>::quiet_NaN();
    getloadavg(&load, 1);
    return load;
}

Verdict verdictFor(const Comparison& comparison, const MedianInterval& ratio, bool isBusy)
{
    if (std::isnan(comparison.bar)) {
        return Verdict::Kept;
    }
    if (comparison.kind == Comparison::Kind::Row) {
        return verdictOf(ratio, comparison.bar, isBusy);
    }
    return verdictOf({1 / ratio.median, 1 / ratio.high, 1 / ratio.low}, 1 / comparison.bar, isBusy);
}

/// The pairs of a contest measured so far.
class Series
{
public:
    explicit Series(const std::vector<Contest>& ofContests)
        : contests(ofContests)
    {
        measurePair(contests, true); // fills caches and finds how often to repeat short tasks
    }

    std::size_t size() const { return all.size(); }

    /// Measures pairs until the system's count of processor time is fine enough to show whether
    /// the machine was quiet meanwhile.
    void measureSome()
    {
        constexpr double shortestGroup = 0.2;
        constexpr double fewOthers = 0.1;
        std::vector<Sample> group;
        const OtherPrograms meanwhile;
        const Stopwatch elapsed(Clock::WholeWall);
        do {
            const Sample sample = measurePair(contests, productFirst);
            productFirst = !productFirst;
            if (!std::isnan(sample.ratio())) {
                group.push_back(sample);
            }
        } while (elapsed.seconds() < shortestGroup);
        all.insert(all.end(), group.begin(), group.end());
        if (meanwhile.share() <= fewOthers) {
            quiet.insert(quiet.end(), group.begin(), group.end());
        }
    }

    /// Uses the pairs from quiet moments if there are enough of them, else all pairs.
    Measured evaluate(const Comparison& comparison, int look) const
    {
        const bool isQuiet = quiet.size() >= std::size_t(pairsOfLook(1));
        std::vector<Sample> samples = isQuiet ? quiet : all;
        std::sort(samples.begin(), samples.end(), [](const Sample& first, const Sample& second) {
            return first.ratio() < second.ratio();
        });
        std::vector<double> ratios;
        ratios.reserve(samples.size());
        for (const Sample& sample : samples) {
            ratios.push_back(sample.ratio());
        }
        Measured measured;
        measured.ratio = medianInterval(ratios, errorOfLook(look));
        measured.verdict = verdictFor(comparison, measured.ratio, !isQuiet);
        measured.pairs = int(samples.size());
        if (!samples.empty()) {
            measured.product = samples[samples.size() / 2].product;
            measured.baseline = samples[samples.size() / 2].baseline;
        }
        measured.others = others.share();
        measured.load = loadOfMachine();
        return measured;
    }

private:
    const std::vector<Contest>& contests;
    std::vector<Sample> all;
    std::vector<Sample> quiet;
    OtherPrograms others;
    bool productFirst = false;
};

/// Measures until a look decides the comparison or the time is over.
Measured measure(const Comparison& comparison, const std::vector<Contest>& contests)
{
    Series series(contests);
    const Stopwatch elapsed(Clock::WholeWall);
    int looks = 0;
    for (int step = 1;; ++step) {
        const auto enough = std::size_t(pairsOfLook(step));
        while (series.size() < enough && elapsed.seconds() < comparison.longestSeconds) {
            series.measureSome();
        }
        const bool isOver = elapsed.seconds() >= comparison.longestSeconds;
        if (isOver || elapsed.seconds() >= shortestContest) {
            const Measured measured = series.evaluate(comparison, ++looks);
            if (isOver || measured.verdict != Verdict::Undecided) {
                return measured;
            }
        }
    }
}

bool isWorse(const Measured& first, const Measured& second)
{
    return first.verdict != second.verdict ? first.verdict > second.verdict
                                           : first.ratio.median > second.ratio.median;
}

Measured measure(const Comparison& comparison)
{
    if (comparison.together == Comparison::Together::GeometricMean) {
        return measure(comparison, comparison.contests);
    }
    std::vector<Measured> each;
    for (const Contest& contest : comparison.contests) {
        each.push_back(measure(comparison, {contest}));
    }
    return *std::min_element(each.begin(), each.end(), isWorse);
}

void run(benchmark::State& state, const Comparison& comparison, Report& report)
{
    Measured measured;
    if (comparison.agree && !comparison.agree()) {
        state.SkipWithError("the two sides give different results");
    }
    for (auto _ : state) {
        measured = measure(comparison);
        state.SetIterationTime(comparison.isTime ? measured.product : 0.0);
    }
    state.counters["baseline"] = comparison.isTime ? measured.baseline : 0.0;
    state.counters["pairs"] = measured.pairs;
    report.add(comparison, measured);
}

} // namespace

Side timedInPart(const std::function<void(Stopwatch&)>& work, Clock clock)
{
    return [work, clock, repeats = 1]() mutable {
        for (;;) {
            Stopwatch stopwatch(clock);
            for (int repeat = 0; repeat < repeats; ++repeat) {
                work(stopwatch);
                benchmark::ClobberMemory();
            }
            const double seconds = stopwatch.seconds();
            if (seconds >= shortestSample) {
                return seconds / repeats;
            }
            repeats *= 2;
        }
    };
}

Side timed(const std::function<void()>& work, Clock clock)
{
    return timedInPart([work](Stopwatch& /*stopwatch*/) { work(); }, clock);
}

Side constant(double value)
{
    return [value] { return value; };
}

void registerComparison(Report& report, const Comparison& comparison)
{
    const auto body = [comparison, &report](benchmark::State& state) {
        run(state, comparison, report);
    };
    benchmark::RegisterBenchmark(comparison.name.c_str(), body)
        ->Unit(comparison.unit)
        ->UseManualTime()
        ->Iterations(1);
}
