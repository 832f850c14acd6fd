// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/measurements.h"

#include <algorithm>
#include <limits>

namespace {

double secondsOf(const benchmark::BenchmarkReporter::Run& run)
{
    if (run.error_occurred) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    const bool ofProcessor = run.run_name.time_type == "process_time";
    const double time = ofProcessor ? run.GetAdjustedCPUTime() : run.GetAdjustedRealTime();
    return time / benchmark::GetTimeUnitMultiplier(run.time_unit);
}

} // namespace

/// Called for each subject; all are measured on the same machine.
bool Measurements::ReportContext(const Context& context)
{
    const bool isFirst = name_field_width_ == 0;
    return !isFirst || ConsoleReporter::ReportContext(context);
}

void Measurements::ReportRuns(const std::vector<Run>& runs)
{
    if (runs.front().run_type == Run::RT_Aggregate) {
        return;
    }
    const auto least =
        std::min_element(runs.begin(), runs.end(), [](const Run& first, const Run& second) {
            return secondsOf(first) < secondsOf(second);
        });
    leastSeconds[least->run_name.function_name] = secondsOf(*least);
    Run shown = *least;
    shown.run_name = {};
    shown.run_name.function_name = least->run_name.function_name;
    shown.run_name.time_type = least->run_name.time_type;
    ConsoleReporter::ReportRuns({shown});
}

double Measurements::seconds(const std::string& benchmark) const
{
    const auto found = leastSeconds.find(benchmark);
    return found != leastSeconds.end() ? found->second : std::numeric_limits<double>::quiet_NaN();
}

double Measurements::ratio(const std::string& work, const std::string& limit) const
{
    return seconds(work) / seconds(limit);
}
