// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_FUZZ_TARGET_H
#define VELMORA_FUZZ_TARGET_H

#include <QtGlobal>

// A fuzzing target defines these functions; the fuzzer's main function calls them.

/// Called once, before the first input.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

/// Called for every input. Ends the program if the input shows a fault.
extern "C" int LLVMFuzzerTestOneInput(const uchar* data, size_t size);

/// Ends the program, so that the fuzzer keeps the input.
inline void require(bool condition, const char* promise)
{
    if (!condition) {
        qFatal("broken: %s", promise);
    }
}

#endif
