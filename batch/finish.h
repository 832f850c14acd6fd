// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_FINISH_H
#define VELMORA_BATCH_FINISH_H

#include "batch/rangerun.h"

// What a run gives when all of its data sets are done, however many machines they were done on.

/// Writes the comparison with the truth, findings and reports of the whole study. The tables of
/// data set 0 have to be loaded. Gives the findings, a line each, those of the run itself first.
QStringList writeStudyFiles(const RunInputs& inputs, const RangeResults& results,
                            const QStringList& runFindings, OutputFolder& output);

/// The project of the study with the doses chosen. Reads all data sets.
void saveProject(RunInputs& inputs, const QVector<DataSetResult>& dataSets, const QString& path);

#endif
