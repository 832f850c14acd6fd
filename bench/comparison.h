// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_COMPARISON_H
#define VELMORA_BENCH_COMPARISON_H

#include "bench/pairs.h"
#include "bench/stopwatch.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <limits>
#include <string>
#include <vector>

class Report;

/// Runs a task and measures it: seconds of one run, or bytes. NaN if other programs disturbed the
/// measurement; such a pair does not count.
using Side = std::function<double()>;

/// Seconds of a run on the clock. A task shorter than a few milliseconds is repeated, as the clock
/// is too coarse for it. With the stopwatch the task can leave a part out.
Side timed(const std::function<void()>& work, Clock clock = Clock::Processor);
Side timedInPart(const std::function<void(Stopwatch&)>& work, Clock clock = Clock::Processor);

/// A baseline that is the same in every run.
Side constant(double value);

/// A task of Velmora and the baseline that it is compared with.
struct Contest
{
    Side product;
    Side baseline;
};

/// A ratio with the bar that it must not exceed.
struct Comparison
{
    enum class Kind { Row, LeastCheck };
    enum class Together { GeometricMean, Worst };

    std::string name;
    double bar = std::numeric_limits<double>::quiet_NaN(); ///< NaN for none
    std::vector<Contest> contests;
    /// What counts of several contests: the mean ratio of each pair, or the worst median.
    Together together = Together::GeometricMean;
    /// True if both sides give the same results. Called once, before the measurement; the row
    /// fails if it returns false. Empty if there is nothing to compare.
    std::function<bool()> agree;
    /// A contest that is still undecided after this time remains undecided.
    double longestSeconds = 20;
    bool isTime = true; ///< whether the sides return seconds; only these are printed
    benchmark::TimeUnit unit = benchmark::kMillisecond;
    /// Whether the bar is the most (a row) or the least (a check of the baseline) that is allowed.
    Kind kind = Kind::Row;
};

/// The result of a comparison.
struct Measured
{
    MedianInterval ratio{std::numeric_limits<double>::quiet_NaN(), 0, 0};
    Verdict verdict = Verdict::Missed;
    int pairs = 0;
    double product = 0.0; ///< of the middle pair
    double baseline = 0.0;
    double others = 0.0; ///< share of the processors that other programs took meanwhile
    double load = 0.0;   ///< of the machine in the last minute
};

/// Adds a benchmark that measures pairs and adds the result to the report. The report must outlive
/// the benchmark.
void registerComparison(Report& report, const Comparison& comparison);

#endif
