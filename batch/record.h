// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_RECORD_H
#define VELMORA_BATCH_RECORD_H

#include "batch/settings.h"
#include "report/content.h"

/// What the last bits of expressions depend on, as far as the machine reports it.
struct Machine
{
    QString architecture;
    QStringList features; ///< processor features that mathematical functions may use
    QString cLibrary;     ///< name and version
    QString deviates; ///< hash of normal deviates of fixed numbers: versions of SLEEF may differ

    bool operator==(const Machine& other) const
    {
        return architecture == other.architecture && features == other.features
               && cLibrary == other.cLibrary && deviates == other.deviates;
    }
};

/// The machine that the program runs on.
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

/// The record of a run, in the file run.json. It is written when everything else is complete.
struct RunRecord
{
    QString program; ///< name and version
    BatchSettings settings;
    int dataSetCount = 0; ///< number of data sets of the study
    DataSetRange dataSets;
    QVector<ReportedFile> files; ///< the files that were read, with their hashes
    quint32 positionBefore = 0;  ///< in the random sequence, before data set 0
    quint32 positionAfter = 0;
    Machine machine;
    double seconds = 0.0;

    bool isWhole() const { return dataSets.count() == dataSetCount; }
};

QJsonObject recordObject(const RunRecord& record);
QByteArray recordText(const RunRecord& record);

/// Reads a record. A record that is missing or damaged ends the run.
RunRecord readRecordFile(const QString& path);

/// Reads the record of a folder. A folder without record is not complete and ends the run.
RunRecord readRecord(const QString& folder);

/// True if a folder has a record, and so all results of its run.
bool hasRecord(const QString& folder);

/// The name of this program with its version, for records and reports.
QString programName();

#endif
