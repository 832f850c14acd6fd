// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_HASHES_H
#define VELMORA_BATCH_HASHES_H

#include "batch/datasource.h"
#include "report/content.h"

#include <future>

/// The file with its hash. A file that changes meanwhile ends the run.
ReportedFile hashedFile(const QString& use, const SourceFile& file);

/// Hashes the files of a data set in another thread while the run reads them and calculates; does
/// nothing for a project. A file that changes meanwhile ends the run.
class FileHashes
{
public:
    FileHashes(const DataSource& source, int dataSet);

    /// Waits for the hashes.
    QVector<ReportedFile> result();

private:
    QVector<ReportedFile> files;
    std::future<QVector<FileCheck>> checks;
};

#endif
