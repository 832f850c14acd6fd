// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/comparison.h"

#include <memory>
#include <optional>

namespace {

struct Registered
{
    Comparison comparison;
    std::optional<bool> agrees;
};

bool agrees(Registered& registered)
{
    if (!registered.agrees) {
        const std::function<bool()>& agree = registered.comparison.agree;
        registered.agrees = !agree || agree();
    }
    return *registered.agrees;
}

void time(benchmark::State& state, Registered& registered, std::size_t way)
{
    if (!agrees(registered)) {
        state.SkipWithError("the ways differ in their results");
        return;
    }
    const Comparison& comparison = registered.comparison;
    for (auto _ : state) {
        comparison.ways[way].run(state);
        benchmark::ClobberMemory();
    }
    using benchmark::Counter;
    if (comparison.items > 1) {
        state.counters["each"] = Counter(double(comparison.items),
                                         Counter::kIsIterationInvariantRate | Counter::kInvert);
    }
}

} // namespace

void registerComparison(const Comparison& comparison)
{
    const auto registered = std::make_shared<Registered>();
    registered->comparison = comparison;
    for (std::size_t way = 0; way < comparison.ways.size(); ++way) {
        const std::string name = comparison.subject + '/' + comparison.ways[way].name;
        const auto body = [registered, way](benchmark::State& state) {
            time(state, *registered, way);
        };
        auto* const added = benchmark::RegisterBenchmark(name.c_str(), body)
                                ->Unit(comparison.unit)
                                ->Repetitions(comparison.repetitions)
                                ->MinTime(comparison.shortestSampleSeconds);
        if (comparison.clock == Clock::Wall) {
            added->UseRealTime();
        } else if (comparison.clock == Clock::Own) {
            added->UseManualTime();
        } else {
            // Of the whole process: parallel sections count with all their threads.
            added->MeasureProcessCPUTime();
        }
    }
}
