// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_CONTENT_H
#define VELMORA_REPORT_CONTENT_H

#include "analysis/checkup/checkup.h"
#include "analysis/results.h"
#include "analysis/summary.h"
#include "io/sourcefile.h"
#include "report/document.h"

/// A file that a study was read from, and its state now.
struct ReportedFile
{
    QString use; ///< "emax", "model 1, data set 3", "simulation model of data set 3"
    SourceFile file;
    FileCheck check = {};
};

/// Where a study came from, as a report shows it.
struct ReportSource
{
    StudySource study;
    QVector<ReportedFile> files;
    ImportCheckUp checkUp; ///< of all data sets, in memory or not
    QStringList findings;  ///< all findings at the moment
    QDateTime date;
};

/// Everything that a report is made from. It needs no widgets: a study and its results suffice.
struct ReportInputs
{
    CurrentInputs now;
    StudyResults results;
    ReportSource source;
};

/// Checks the files one after another. goesOn receives the share of all bytes that is done.
/// Returns false if aborted.
bool checkFiles(QVector<ReportedFile>& files, const std::function<bool(double done)>& goesOn);

/// Returns the report. It leaves out results that were not calculated, with a sentence that says
/// so, and names stale and aborted results on the first page. It draws no random numbers and
/// evaluates only typical curves of models without ETAs. None if aborted.
std::optional<ReportDocument> reportDocument(const ReportInputs& inputs, const GoesOn& goesOn);

#endif
