// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/console.h"

#include <cstdio>

/// Prints the machine once; the library calls this for each subject.
bool Console::ReportContext(const Context& context)
{
    constexpr std::size_t longestName = 36;
    const bool isFirst = name_field_width_ == 0;
    const bool goesOn = !isFirst || ConsoleReporter::ReportContext(context);
    name_field_width_ = longestName;
    return goesOn;
}

/// Fills the library's columns with other values: the baseline instead of the processor time, and
/// the number of pairs instead of that of iterations.
void Console::ReportRuns(const std::vector<Run>& runs)
{
    for (Run shown : runs) {
        const std::string name = shown.run_name.function_name;
        shown.run_name = {};
        shown.run_name.function_name = name;
        const double pairs = shown.counters["pairs"];
        shown.iterations = benchmark::IterationCount(pairs);
        shown.real_accumulated_time *= pairs;
        shown.cpu_accumulated_time = shown.counters["baseline"] * pairs;
        shown.counters.clear();
        ConsoleReporter::ReportRuns({shown});
    }
}

void Console::PrintHeader(const Run& /*run*/)
{
    std::printf("\n%-*s %13s %15s %12s\n", int(name_field_width_), "row", "product", "baseline",
                "pairs");
}
