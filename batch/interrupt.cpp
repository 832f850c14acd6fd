// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/interrupt.h"

#include "batch/error.h"

#include <atomic>
#include <csignal>
#include <unistd.h>

namespace {

constexpr unsigned secondsToWait = 1;

std::atomic<bool> interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free);

void endNow(int /*signal*/)
{
    const char text[] = "velmora-batch: Interrupted.\n";
    const auto written = write(STDERR_FILENO, text, sizeof text - 1);
    static_cast<void>(written); // there is no other way to report it
    _exit(int(ExitCode::Failed));
}

void interrupt(int /*signal*/)
{
    if (!interrupted.exchange(true)) { // further signals do not delay the end
        alarm(secondsToWait);
    }
}

} // namespace

void watchInterrupts()
{
    std::signal(SIGINT, interrupt);
    std::signal(SIGTERM, interrupt);
    std::signal(SIGALRM, endNow);
}

bool isInterrupted()
{
    return interrupted;
}

void endIfInterrupted()
{
    if (interrupted) {
        fail("Interrupted: nothing was written.");
    }
}
