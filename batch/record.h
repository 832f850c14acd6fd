// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_RECORD_H
#define VELMORA_BATCH_RECORD_H

#include "batch/settings.h"
#include "report/content.h"

/// What the last bits of expressions depend on, as far as a machine tells.
struct Machine
{
    QString architecture;
    QStringList features; ///< of the processor that mathematical functions may use
    QString cLibrary;     ///< name and version

    bool operator==(const Machine& other) const
    {
        return architecture == other.architecture && features == other.features
               && cLibrary == other.cLibrary;
    }
};

/// This one.
Machine thisMachine();

/// "x86_64 with avx avx2 fma, glibc 2.36".
QString machineText(const Machine& machine);

/// Data sets from first to before end.
struct DataSetRange
{
    int first = 0;
    int end = 0;

    int count() const { return end - first; }
};

/// What a run was: the file run.json, which is complete when everything else is.
struct RunRecord
{
    QString program; ///< name and version
    BatchSettings settings;
    int dataSetCount = 0; ///< of the study
    DataSetRange dataSets;
    QVector<ReportedFile> files; ///< that were read, with their hashes
    quint32 positionBefore = 0;  ///< in the sequence of random numbers, before data set 0
    quint32 positionAfter = 0;
    Machine machine;
    double seconds = 0.0;

    bool isWhole() const { return dataSets.count() == dataSetCount; }
};

QJsonObject recordObject(const RunRecord& record);
QByteArray recordText(const RunRecord& record);

/// A record. One that is missing or damaged ends the run.
RunRecord readRecordFile(const QString& path);

/// The record in a folder, which is not complete without it.
RunRecord readRecord(const QString& folder);

/// Whether a folder has a record, and thus all that the run was to give.
bool hasRecord(const QString& folder);

/// The name of this program with its version, for records and reports.
QString programName();

#endif
