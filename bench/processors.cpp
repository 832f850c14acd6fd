// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/processors.h"

#include <QThreadPool>

namespace {

/// The processors that the program may use at its start.
cpu_set_t allProcessors()
{
    cpu_set_t processors;
    sched_getaffinity(0, sizeof(processors), &processors);
    return processors;
}

/// Threads inherit the processors of the thread that starts them, so the pool starts new ones.
void restart(QThreadPool& pool, int threadCount, const cpu_set_t& processors)
{
    pool.waitForDone();
    pool.setMaxThreadCount(threadCount);
    sched_setaffinity(0, sizeof(processors), &processors);
}

} // namespace

Processors::Processors(int count)
    : previousThreadCount(QThreadPool::globalInstance()->maxThreadCount())
{
    static const cpu_set_t all = allProcessors();
    sched_getaffinity(0, sizeof(previous), &previous);
    cpu_set_t first;
    CPU_ZERO(&first);
    for (int cpu = 0; cpu < CPU_SETSIZE && CPU_COUNT(&first) < count; ++cpu) {
        if (CPU_ISSET(cpu, &all)) {
            CPU_SET(cpu, &first);
        }
    }
    restart(*QThreadPool::globalInstance(), count, first);
}

Processors::~Processors()
{
    restart(*QThreadPool::globalInstance(), previousThreadCount, previous);
}
