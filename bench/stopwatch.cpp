// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/stopwatch.h"

#include <QFile>

#include <algorithm>
#include <ctime>
#include <sys/resource.h>
#include <unistd.h>

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

/// Seconds that a thread waited for a processor: the second number of the scheduler's statistics.
double waitingOf(const QString& thread)
{
    QFile file(thread + "/schedstat");
    file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    return 1e-9 * file.readAll().split(' ').value(1).toDouble();
}

/// Processor time of other programs, and of the system for them, since the machine started.
double secondsOfOthers()
{
    QFile file("/proc/stat");
    if (!file.open(QIODevice::ReadOnly)) {
        return 0.0;
    }
    const QList<QByteArray> ticks = file.readLine().simplified().split(' ');
    double all = 0.0;
    for (const int field : {1, 2, 3, 6, 7, 8}) { // all but idle, waiting, and guests counted twice
        all += ticks.value(field).toDouble();
    }
    return all / double(sysconf(_SC_CLK_TCK)) - secondsOf(CLOCK_PROCESS_CPUTIME_ID)
           - secondsOfPrograms();
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

OtherPrograms::OtherPrograms()
    : wall(Clock::WholeWall)
    , start(secondsOfOthers())
{
}

double OtherPrograms::share() const
{
    const double seconds = wall.seconds() * double(sysconf(_SC_NPROCESSORS_ONLN));
    return std::max(0.0, (secondsOfOthers() - start) / seconds);
}
