// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_DEVIATES_AVX_H
#define VELMORA_MODEL_DEVIATES_AVX_H

// fillNormalDeviates for x86 processors with wider registers. Each form has a source file of its
// own, compiled for these processors. Such a file includes only the headers of the instructions
// and of SLEEF: otherwise the linker might choose its copy of an inline function for the whole
// program, and older processors could not run that.

/// Needs AVX.
void fillNormalDeviatesAvx(const int* numbers, int count, double* deviates);

/// Needs AVX-512F.
void fillNormalDeviatesAvx512(const int* numbers, int count, double* deviates);

#endif
