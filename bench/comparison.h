// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_COMPARISON_H
#define VELMORA_BENCH_COMPARISON_H

#include <benchmark/benchmark.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Processor: time that the processors spend on all threads of this program. It leaves out
/// what other programs take, and what is waited for. Own: each way sets the time of its run.
enum class Clock { Processor, Wall, Own };

/// Several ways of doing the same work, or work of several sizes.
struct Comparison
{
    struct Way
    {
        std::string name;
        /// Does the work once. By the state it can leave a part out of the time.
        std::function<void(benchmark::State&)> run;
    };

    std::string subject;
    std::vector<Way> ways;
    /// Whether the ways give the same results. Called once, before anything is timed; false
    /// leaves the comparison out with an error. Empty if there is nothing to compare.
    std::function<bool()> agree;
    Clock clock = Clock::Processor;
    /// Samples of each way. Those of all ways that are registered are taken in random order,
    /// so that a busy moment of the machine meets all of them.
    int repetitions = 30;
    /// Work shorter than this is repeated within a sample, whose mean counts.
    double shortestSampleSeconds = 0.005;
    /// Units of work in a run; the counter "each" is the time of one.
    std::int64_t items = 1;
    benchmark::TimeUnit unit = benchmark::kMillisecond;
};

/// Adds one benchmark per way, named subject/way.
void registerComparison(const Comparison& comparison);

#endif
