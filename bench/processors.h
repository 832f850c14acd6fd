// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_PROCESSORS_H
#define VELMORA_BENCH_PROCESSORS_H

#include <sched.h>

/// Keeps the program on the first processors that it may use, as long as this object lives.
/// A nested object may ask for more processors than the outer one.
class Processors
{
public:
    explicit Processors(int count);
    ~Processors();
    Processors(const Processors&) = delete;
    Processors& operator=(const Processors&) = delete;

private:
    cpu_set_t previous;
    int previousThreadCount;
};

#endif
