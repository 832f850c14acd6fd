// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_MEMORY_H
#define VELMORA_BENCH_MEMORY_H

#include <QtGlobal>

#include <functional>

/// The peak memory in bytes of a task, beyond what the program holds before. Rather too large than
/// too small where the system cannot reset the peak; NaN where it does not report memory.
double memoryOf(const std::function<void()>& work);

/// The peak memory in bytes of a running program, by its number; 0 if it has ended.
double peakMemory(qint64 program);

#endif
