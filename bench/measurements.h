// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_MEASUREMENTS_H
#define VELMORA_BENCH_MEASUREMENTS_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>

/// Keeps the least time of each benchmark, over its repetitions, and prints it.
class Measurements : public benchmark::ConsoleReporter
{
public:
    Measurements()
        : ConsoleReporter(OO_None)
    {
    }

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

    /// Seconds of one run, on the benchmark's own clock; NaN if it was left out or failed.
    double seconds(const std::string& benchmark) const;

    /// Time of the work to that of its limit.
    double ratio(const std::string& work, const std::string& limit) const;

private:
    std::map<std::string, double> leastSeconds;
};

#endif
