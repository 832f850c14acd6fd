// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/subjects.h"

#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    registerExpressions();
    registerProbability();
    registerCsv();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
