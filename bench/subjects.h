// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_SUBJECTS_H
#define VELMORA_BENCH_SUBJECTS_H

class Report;

// Each subject registers the rows in its comment, which go to the report when they are measured.
// Unless said otherwise a row is a ratio of processor times, the program being kept on one
// processor.

/// expr_block, expr_single: one evaluation of typical expressions.
void registerExpressions(Report& report);

/// pos_eta, pos_eta_threads (wall time on two processors to one), pos_plain: the
/// probability curve of one data set.
void registerProbability(Report& report);

/// certainty, certainty_plain: a curve and a dose selection with Monte Carlo errors to those
/// without, with ETAs and without.
/// stability: doses resampled to the obvious loop.
void registerCertainty(Report& report);

/// recalculate: the curve in the window to the curve alone.
void registerRecalculation(Report& report);

/// linear_samples, linear_datasets: how the time grows with the data.
void registerGrowth(Report& report);

/// csv_read: one raw_results file.
void registerCsv(Report& report);

/// csv_folder: the import of a folder to its files read alone.
void registerFolderImport(Report& report);

/// project_file: saved and loaded to the same bytes written and read, in wall time.
void registerProjectFile(Report& report);

/// batch, batch_shards, batch_memory: the program without a window to the window, in shards to
/// the whole, and the memory of many data sets to that of few.
void registerBatch(Report& report);

/// edit_latency: wall time from a key to the painted window, in 50 ms.
void registerEditing(Report& report);

/// start: the program until its window is painted to a bare window with a chart.
void registerStart(Report& report);

/// page_switch: wall time from a click on a page to the painted window, in frames of 16 ms.
void registerPages(Report& report);

#endif
