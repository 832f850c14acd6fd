// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_CONSOLE_H
#define VELMORA_BENCH_CONSOLE_H

#include <benchmark/benchmark.h>

/// Prints each row as soon as it is measured, with the times of its middle pair.
class Console : public benchmark::ConsoleReporter
{
public:
    Console()
        : ConsoleReporter(OO_None)
    {
    }

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

protected:
    void PrintHeader(const Run& run) override;
};

#endif
