// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/comparison.h"

#include <algorithm>
#include <ctime>
#include <limits>
#include <memory>
#include <optional>

namespace {

struct Progress
{
    Comparison comparison;
    std::optional<bool> agrees;
    double yardstick = std::numeric_limits<double>::infinity(); ///< processor ticks per run
};

bool agrees(Progress& progress)
{
    if (!progress.agrees) {
        progress.agrees = progress.comparison.agree();
    }
    return *progress.agrees;
}

void time(benchmark::State& state, Progress& progress, std::size_t way)
{
    if (!agrees(progress)) {
        state.SkipWithError("the ways differ in their results");
        return;
    }
    const Comparison& comparison = progress.comparison;
    const std::function<void()>& run = comparison.ways.at(way).run;
    const std::clock_t start = std::clock();
    for (auto _ : state) {
        run();
        benchmark::ClobberMemory();
    }
    const double ticks = double(std::clock() - start) / double(state.iterations());
    if (way == 0) {
        progress.yardstick = std::min(progress.yardstick, ticks);
    }
    if (progress.yardstick < std::numeric_limits<double>::infinity()) {
        state.counters["ratio"] = ticks / progress.yardstick;
    }
    using benchmark::Counter;
    state.counters["each"] =
        Counter(double(comparison.items), Counter::kIsIterationInvariantRate | Counter::kInvert);
    if (comparison.bytes) {
        state.SetBytesProcessed(state.iterations() * comparison.bytes());
    }
}

double least(const std::vector<double>& repetitions)
{
    return *std::min_element(repetitions.begin(), repetitions.end());
}

} // namespace

void registerComparison(const Comparison& comparison)
{
    const auto progress = std::make_shared<Progress>();
    progress->comparison = comparison;
    for (std::size_t way = 0; way < comparison.ways.size(); ++way) {
        const std::string name = comparison.subject + '/' + comparison.ways[way].name;
        const auto body = [progress, way](benchmark::State& state) { time(state, *progress, way); };
        // Of the whole process: parallel sections count with all their threads.
        benchmark::RegisterBenchmark(name.c_str(), body)
            ->Unit(comparison.unit)
            ->MeasureProcessCPUTime()
            ->ComputeStatistics("min", least);
    }
}
