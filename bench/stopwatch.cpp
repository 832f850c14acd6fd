// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/stopwatch.h"

#include <QDir>
#include <QFile>

#include <ctime>
#include <sys/resource.h>

namespace {

double secondsOf(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return double(time.tv_sec) + 1e-9 * double(time.tv_nsec);
}

double secondsOf(const timeval& time)
{
    return double(time.tv_sec) + 1e-6 * double(time.tv_usec);
}

double secondsOfPrograms()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
}

/// How long a thread waited for a processor: the second number of the scheduler's statistics.
double waitingOf(const QString& thread)
{
    QFile file(thread + "/schedstat");
    file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    return 1e-9 * file.readAll().split(' ').value(1).toDouble();
}

double now(Clock clock)
{
    switch (clock) {
    case Clock::Processor:
        return secondsOf(CLOCK_PROCESS_CPUTIME_ID);
    case Clock::Programs:
        return secondsOfPrograms();
    case Clock::Wall:
        return secondsOf(CLOCK_MONOTONIC) - waitingOf("/proc/thread-self");
    case Clock::WholeWall:
        break;
    }
    return secondsOf(CLOCK_MONOTONIC);
}

} // namespace

Stopwatch::Stopwatch(Clock ofClock)
    : clock(ofClock)
{
    resume();
}

void Stopwatch::pause()
{
    if (isRunning) {
        passed += now(clock) - start;
        isRunning = false;
    }
}

void Stopwatch::resume()
{
    if (!isRunning) {
        start = now(clock);
        isRunning = true;
    }
}

double Stopwatch::seconds() const
{
    return passed + (isRunning ? now(clock) - start : 0.0);
}

double secondsOfWaiting()
{
    double seconds = 0.0;
    const QDir threads("/proc/self/task");
    for (const QString& thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        seconds += waitingOf(threads.filePath(thread));
    }
    return seconds;
}
