// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_SHARDS_H
#define VELMORA_BATCH_SHARDS_H

#include "batch/rangerun.h"

// Shards: parts of a run, on one machine or on many, and how to merge them.

QDataStream& operator<<(QDataStream& stream, const DataSetResult& result);
QDataStream& operator>>(QDataStream& stream, DataSetResult& result);

/// Writes what merging needs in addition to the tables: the results of each data set, bit for bit.
void writeShard(const RangeResults& results, OutputFolder& output);

/// True if the folder has the complete results of this run and range. Results of another run end
/// this one.
bool isComplete(const QString& folder, const RunRecord& record);

/// Merges shards, in any order, into the folder that the whole run would have written, byte for
/// byte except times. Gaps, overlaps, incomplete shards, and shards of other settings, files or
/// versions end the run. Returns the findings.
QStringList mergeShards(const QStringList& folders, const QString& outputPath, bool resumes);

#endif
