// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_SHARDS_H
#define VELMORA_BATCH_SHARDS_H

#include "batch/rangerun.h"

// Parts of a run, on one machine or many, and how they become the whole.

QDataStream& operator<<(QDataStream& stream, const DataSetResult& result);
QDataStream& operator>>(QDataStream& stream, DataSetResult& result);

/// Writes what merging needs beside the tables: the results of each data set with all bits.
void writeShard(const RangeResults& results, OutputFolder& output);

/// Whether the folder has the complete results of this run and range. Those of another run end
/// this one.
bool isComplete(const QString& folder, const RunRecord& record);

/// Makes of shards, in any order, the folder that the whole run would have given, byte for byte
/// but for times. Gaps, overlaps, shards that are not complete, and shards of other settings,
/// files or versions end the run. Gives the findings.
QStringList mergeShards(const QStringList& folders, const QString& outputPath, bool resumes);

#endif
