// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/comparison.h"
#include "bench/studywindow.h"
#include "bench/subjects.h"

#include <QProcess>

void registerStart(Report& report)
{
    const auto start = [](const QStringList& arguments) {
        return timed(
            [arguments] {
                QProcess program;
                program.start(VELMORA_START, arguments);
                require(program.waitForFinished() && program.exitCode() == 0, "a start failed");
            },
            Clock::Programs);
    };
    Comparison comparison;
    comparison.name = "start";
    comparison.bar = 2;
    comparison.contests = {{start({}), start({"bare"})}};
    registerComparison(report, comparison);
}
