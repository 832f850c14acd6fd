// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_CONTENT_H
#define VELMORA_REPORT_CONTENT_H

#include "analysis/checkup/checkup.h"
#include "analysis/results.h"
#include "analysis/summary.h"
#include "io/sourcefile.h"
#include "report/document.h"

/// A file that a study was read from, and what has become of it.
struct ReportedFile
{
    QString use; ///< "emax", "model 1, data set 3", "simulation model of data set 3"
    SourceFile file;
    FileCheck check = {};
};

/// Where a study came from, as a report tells it.
struct ReportSource
{
    StudySource study;
    QVector<ReportedFile> files;
    ImportCheckUp checkUp; ///< of all data sets, whether or not they are in memory
    QStringList findings;  ///< everything that is found now
    QDateTime date;
};

/// Everything that a report is made from. Without widgets: whoever has a study and its results
/// can write one.
struct ReportInputs
{
    CurrentInputs now;
    StudyResults results;
    ReportSource source;
};

/// Checks the files one after another. goesOn is told the share of all bytes that is done; false
/// if it is given up.
bool checkFiles(QVector<ReportedFile>& files, const std::function<bool(double done)>& goesOn);

/// The report. Results that were not calculated are left out, with a sentence that says so; those
/// that are stale or were given up say so on the first page. Nothing is drawn from the sequence
/// of random numbers, and nothing evaluated but typical curves of models without ETAs. None if
/// it is given up.
std::optional<ReportDocument> reportDocument(const ReportInputs& inputs, const GoesOn& goesOn);

#endif
