// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_PLAN_H
#define VELMORA_BATCH_PLAN_H

#include "batch/draws.h"

/// What shards must know of the whole run: the number of draws of every data set, and the files
/// with their hashes.
struct Plan
{
    Draws draws;
    QVector<ReportedFile> files;
};

/// Reads every file once and writes the plan.
void writePlan(RunInputs& inputs, const QString& path, bool isQuiet);

/// Reads a plan. A plan of another version or for other settings ends the run.
Plan readPlan(const QString& path, const RunRecord& record);

/// Ends the run if a file differs from the planned one. name is the plan's name for messages.
void demandSameFiles(const QVector<ReportedFile>& files, const QVector<ReportedFile>& planned,
                     const QString& name);

/// Ends the run unless both have the same version, settings and number of data sets, and reports
/// what differs.
void demandSameRun(const RunRecord& first, const QString& firstName, const RunRecord& second,
                   const QString& secondName);

#endif
