// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/memory.h"

#include <QFile>

#include <cmath>
#include <limits>
#include <malloc.h>

namespace {

/// Memory of a program in bytes: VmRSS is the present value, VmHWM the peak.
double memory(const char* field, const QString& program = "self")
{
    QFile file("/proc/" + program + "/status");
    file.open(QIODevice::ReadOnly);
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith(field)) {
            return 1024.0 * line.simplified().split(' ').value(1).toDouble();
        }
    }
    return std::numeric_limits<double>::quiet_NaN();
}

/// Resets the peak to the present memory, where the system allows it.
void forgetPeakMemory()
{
    malloc_trim(0);
    QFile file("/proc/self/clear_refs");
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        file.write("5");
    }
}

} // namespace

double memoryOf(const std::function<void()>& work)
{
    forgetPeakMemory();
    const double before = memory("VmRSS:");
    work();
    return memory("VmHWM:") - before;
}

double peakMemory(qint64 program)
{
    const double bytes = memory("VmHWM:", QString::number(program));
    return std::isnan(bytes) ? 0 : bytes;
}
