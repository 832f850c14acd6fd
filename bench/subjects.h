// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_SUBJECTS_H
#define VELMORA_BENCH_SUBJECTS_H

// Each subject registers its comparisons.

/// One evaluation of typical expressions.
void registerExpressions();

/// The probability curve of one data set.
void registerProbability();

/// Reading a raw_results file.
void registerCsv();

#endif
