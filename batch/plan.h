// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_PLAN_H
#define VELMORA_BATCH_PLAN_H

#include "batch/draws.h"

/// What shards need to know of the whole run: the random numbers of every data set, and the
/// files with their hashes.
struct Plan
{
    Draws draws;
    QVector<ReportedFile> files;
};

/// Reads every file once and writes the plan.
void writePlan(RunInputs& inputs, const QString& path, bool isQuiet);

/// Reads a plan. One that was made by another version or for other settings ends the run.
Plan readPlan(const QString& path, const RunRecord& record);

/// Ends the run where a file is not the one of the plan or of the record of that name.
void demandSameFiles(const QVector<ReportedFile>& files, const QVector<ReportedFile>& planned,
                     const QString& name);

/// Ends the run unless both were made by the same version and for the same settings and data
/// sets. Names what differs.
void demandSameRun(const RunRecord& first, const QString& firstName, const RunRecord& second,
                   const QString& secondName);

#endif
