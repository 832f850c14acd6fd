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

/// Does a work and measures it: seconds of one run, or bytes. NaN if other programs were in the
/// way; such a pair does not count.
using Side = std::function<double()>;

/// Seconds of a run on the clock. Work shorter than a few milliseconds is repeated, so that the
/// clock is fine enough. By the stopwatch the work can leave a part out.
Side timed(const std::function<void()>& work, Clock clock = Clock::Processor);
Side timedInPart(const std::function<void(Stopwatch&)>& work, Clock clock = Clock::Processor);

/// A limit that is the same for all runs.
Side constant(double value);

/// A work of Velmora and what it is held against.
struct Contest
{
    Side product;
    Side limit;
};

/// A ratio with the bar that it must not exceed.
struct Comparison
{
    enum class Kind { Row, LeastCheck };
    enum class Together { GeometricMean, Worst };

    std::string name;
    double bar = std::numeric_limits<double>::quiet_NaN(); ///< NaN for none
    std::vector<Contest> contests;
    /// Of several contests: the mean of the ratios in each pair, or the worst of their medians.
    Together together = Together::GeometricMean;
    /// Whether both sides give the same results. Called once, before anything is measured; with
    /// false the row fails. Empty if there is nothing to compare.
    std::function<bool()> agree;
    /// A contest that is undecided after this time stays so.
    double longestSeconds = 20;
    bool isTime = true; ///< what the sides give, and the console shows
    benchmark::TimeUnit unit = benchmark::kMillisecond;
    /// A check of the limit itself has to reach its bar.
    Kind kind = Kind::Row;
};

/// What the pairs of a comparison showed.
struct Measured
{
    MedianInterval ratio{std::numeric_limits<double>::quiet_NaN(), 0, 0};
    Verdict verdict = Verdict::Missed;
    int pairs = 0;
    double product = 0.0; ///< of the pair in the middle
    double limit = 0.0;
    double others = 0.0; ///< share of the processors that other programs took meanwhile
    double load = 0.0;   ///< of the machine in the last minute
};

/// Adds a benchmark that measures pairs and puts the result into the report, which must live on.
void registerComparison(Report& report, const Comparison& comparison);

#endif
