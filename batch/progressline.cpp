// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/progressline.h"

#include <cstdio>
#include <unistd.h>

namespace {

constexpr int millisecondsBetween = 200;
constexpr const char* eraseLine = "\r\033[K";

} // namespace

ProgressLine::ProgressLine(const QString& whatIsDone, int allSteps, bool isQuiet)
    : what(whatIsDone)
    , all(allSteps)
    , isShown(!isQuiet && isatty(STDERR_FILENO) != 0)
{
    start.start();
}

ProgressLine::~ProgressLine()
{
    if (isShown) {
        std::fputs(eraseLine, stderr);
    }
}

void ProgressLine::show(int done)
{
    if (!isShown || (last.isValid() && last.elapsed() < millisecondsBetween && done < all)) {
        return;
    }
    last.start();
    const double secondsLeft = double(start.elapsed()) / 1000 / qMax(1, done) * (all - done);
    std::fprintf(stderr, "%s%s %d of %d, %.0f s left", eraseLine, qUtf8Printable(what), done, all,
                 secondsLeft);
}
