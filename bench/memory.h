// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_MEMORY_H
#define VELMORA_BENCH_MEMORY_H

#include <QtGlobal>

#include <functional>

/// The most memory in bytes that a work takes beyond what the program has before. Too much rather
/// than too little where the most memory ever taken cannot be forgotten; NaN where the system
/// does not tell.
double memoryOf(const std::function<void()>& work);

/// The most memory in bytes that a running program ever had, by its number; 0 when it has ended.
double peakMemory(qint64 program);

#endif
