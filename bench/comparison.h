// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_COMPARISON_H
#define VELMORA_BENCH_COMPARISON_H

#include <benchmark/benchmark.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Several ways of doing the same work. The first one is the yardstick, written by hand for
/// this very work: the counter "ratio" of each is its processor time over the yardstick's
/// least.
struct Comparison
{
    struct Way
    {
        std::string name;
        std::function<void()> run;
    };

    std::string subject;
    std::vector<Way> ways;
    /// Whether the ways give the same results. Called once, before anything is timed; false
    /// leaves the comparison out with an error.
    std::function<bool()> agree;
    /// Units of work in a run; the counter "each" is the time of one.
    std::int64_t items = 1;
    /// Bytes read in a run; empty if that says nothing.
    std::function<std::int64_t()> bytes;
    benchmark::TimeUnit unit = benchmark::kMillisecond;
};

/// Adds one benchmark per way, named subject/way. With repetitions the row "min" holds the
/// least time and ratio.
void registerComparison(const Comparison& comparison);

#endif
