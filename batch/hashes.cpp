// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/hashes.h"

#include "batch/error.h"
#include "batch/interrupt.h"

namespace {

FileCheck check(const SourceFile& file)
{
    return checkFile(file, [](qint64) { return !isInterrupted(); });
}

void demandSame(const ReportedFile& file)
{
    endIfInterrupted();
    if (file.check.state != FileCheck::State::Same) {
        fail(QString("%1 changed while it was read; run again.").arg(file.file.path));
    }
}

} // namespace

ReportedFile hashedFile(const QString& use, const SourceFile& file)
{
    ReportedFile hashed{use, file, check(file)};
    demandSame(hashed);
    return hashed;
}

FileHashes::FileHashes(const DataSource& source, int dataSet)
{
    const QVector<SourceFile> read =
        source.isProject() ? QVector<SourceFile>() : source.files(dataSet);
    for (int model = 0; model < read.size(); ++model) {
        if (!read.at(model).path.isEmpty()) {
            QString use = QString("model %1").arg(model);
            if (source.dataSetCount() > 1) {
                use += QString(", data set %1").arg(dataSet);
            }
            files.append({use, read.at(model), {}});
        }
    }
    checks = std::async(std::launch::async, [noted = files] {
        QVector<FileCheck> found;
        for (const ReportedFile& file : noted) {
            found.append(check(file.file));
        }
        return found;
    });
}

QVector<ReportedFile> FileHashes::result()
{
    const QVector<FileCheck> found = checks.get();
    for (int file = 0; file < files.size(); ++file) {
        files[file].check = found.at(file);
        demandSame(files.at(file));
    }
    return files;
}
