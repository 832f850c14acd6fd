// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_FINISH_H
#define VELMORA_BATCH_FINISH_H

#include "batch/rangerun.h"

// The last steps of a run, when all its data sets are done, on one machine or on many.

/// Writes the comparison with the truth, findings and reports of the whole study. The tables of
/// data set 0 must be loaded. Returns the findings, one line each, those of the run first.
QStringList writeStudyFiles(const RunInputs& inputs, const RangeResults& results,
                            const QStringList& runFindings, OutputFolder& output);

/// Writes the study and its doses to a project file. Reads all data sets.
void saveProject(RunInputs& inputs, const QVector<DataSetResult>& dataSets, const QString& path);

#endif
