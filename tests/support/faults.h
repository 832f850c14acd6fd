// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_FAULTS_H
#define VELMORA_TESTS_SUPPORT_FAULTS_H

// System faults, by a library between a program and the C library. It must be preloaded
// (LD_PRELOAD).

/// Calls that can fail, whatever names Qt and the program use for them: open64 is an Open.
enum class FaultCall { Open, Read, Write, Sync, Rename, Truncate, Close, Map, Allocate };

/// The calls to fail: calls of the arming thread and, except for allocations, only those on files
/// in the folder. Of closes, only those of files that were open for writing.
struct FaultPlan
{
    FaultCall call;
    int error;               ///< errno afterwards; 0 reads or writes only a part
    int number;              ///< of the failing call, counted from 1
    bool isLasting;          ///< true if all later calls fail, too
    const char* folder;      ///< must exist as long as the plan
    unsigned long leastSize; ///< smaller allocations do not count
};

/// Starts to count the calls of this plan's kind and lets them fail. Null without the library.
extern "C" __attribute__((weak)) void armFaults(const FaultPlan* next);

/// Ends that, and returns how many such calls there were.
extern "C" __attribute__((weak)) int disarmFaults();

#endif
