// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_SUBJECTS_H
#define VELMORA_BENCH_SUBJECTS_H

class Report;

// Each subject registers the rows that its comment lists; they go to the report when they are
// measured. A row is the ratio of two processor times unless the comment says otherwise, and the
// program runs on one processor.

/// expr_block, expr_single: one evaluation of typical expressions.
void registerExpressions(Report& report);

/// pos_eta, pos_eta_threads (wall time on two processors to that on one), pos_plain: the
/// probability curve of one data set.
void registerProbability(Report& report);

/// certainty, certainty_plain: a curve and a dose selection with their figures of certainty to
/// those without, with ETAs and without ETAs.
/// stability: the resampling of doses to a simple loop.
void registerCertainty(Report& report);

/// recalculate: the curve in the window to the curve alone.
void registerRecalculation(Report& report);

/// linear_samples, linear_datasets: how the time grows with the data.
void registerGrowth(Report& report);

/// csv_read: one raw_results file.
void registerCsv(Report& report);

/// csv_folder: the import of a folder to the reading of its files alone.
void registerFolderImport(Report& report);

/// project_file: a project saved and opened to the same bytes written and read, in wall time.
void registerProjectFile(Report& report);

/// batch, batch_shards: the program without a window to the window, and a run in shards to one run.
/// batch_memory: its memory with many data sets to that with few.
void registerBatch(Report& report);

/// edit_latency: wall time from a key to the painted window, in units of 50 ms.
void registerEditing(Report& report);

/// start: the time until the program's window is painted to that of a bare window with a chart.
void registerStart(Report& report);

/// page_switch: wall time from a click on a page to the painted window, in units of 16 ms.
void registerPages(Report& report);

#endif
