// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_DEVIATES_AVX_H
#define VELMORA_MODEL_DEVIATES_AVX_H

// fillNormalDeviates for x86 processors with wider registers. Each stands in a source file of its
// own, compiled for these processors: nothing but the instructions' and SLEEF's headers is included
// there, as the linker might else choose such a file's copy of an inline function for the whole
// program, which older processors could not run.

/// Needs AVX.
void fillNormalDeviatesAvx(const int* numbers, int count, double* deviates);

/// Needs AVX-512F.
void fillNormalDeviatesAvx512(const int* numbers, int count, double* deviates);

#endif
