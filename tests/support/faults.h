// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_FAULTS_H
#define VELMORA_TESTS_SUPPORT_FAULTS_H

// Faults of the system, by a library that stands between a program and the C library when it
// is preloaded (LD_PRELOAD).

/// Calls that can fail, under the names by which Qt and the program make them: open64 is an Open.
enum class FaultCall { Open, Read, Write, Sync, Rename, Truncate, Close, Map, Allocate };

/// What is to fail: calls of the thread that arms, and but for allocations only those on files
/// below the folder; of closes those of files that were open for writing.
struct FaultPlan
{
    FaultCall call;
    int error;               ///< errno afterwards; 0 lets a part be read or written
    int number;              ///< of the call, counted from 1
    bool isLasting;          ///< whether all calls after it fail, too
    const char* folder;      ///< has to live as long
    unsigned long leastSize; ///< of allocations that count
};

/// From now on calls of this plan's kind are counted and fail. Null without the library.
extern "C" __attribute__((weak)) void armFaults(const FaultPlan* next);

/// Ends that; gives how many such calls there were.
extern "C" __attribute__((weak)) int disarmFaults();

#endif
