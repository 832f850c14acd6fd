// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_OUTPUTFOLDER_H
#define VELMORA_BATCH_OUTPUTFOLDER_H

#include "io/safefile.h"

#include <QByteArray>
#include <QStringList>

#include <memory>
#include <vector>

/// A file of comma-separated lines (RFC 4180) that is written bit by bit and put in its place
/// when everything is done. A write that fails ends the run.
class TableFile
{
public:
    TableFile(const QString& filePath, const QStringList& headings);

    /// For lines that others write.
    explicit TableFile(const QString& filePath);

    void addRow(const QByteArrayList& fields);
    void addLines(const QByteArray& lines);
    QIODevice& device() { return file; }

    /// Tells what went wrong at the device, if anything did.
    void check() const;
    void commit();

private:
    void flush();

    QString path;
    SafeFile file;
    QByteArray buffer;
};

/// The folder that results go to. Files take their places together, when everything is done;
/// a folder that was made for them goes if that does not come to pass.
class OutputFolder
{
public:
    /// The name of the file that is written last and tells that the folder is complete.
    static constexpr char recordName[] = "run.json";

    /// Makes the folder, or takes one that is empty or that an earlier run is to be resumed in.
    OutputFolder(const QString& folderPath, bool resumes);
    ~OutputFolder();
    OutputFolder(const OutputFolder&) = delete;
    OutputFolder& operator=(const OutputFolder&) = delete;

    TableFile& addTable(const QString& name, const QStringList& headings);
    TableFile& addFile(const QString& name);

    /// Puts everything in its place, the record last.
    void finish(const QByteArray& record);

    QString pathOf(const QString& name) const { return path + '/' + name; }

private:
    void takeForThisRun();
    void removeAll();

    QString path;
    int lock = -1;    ///< of the open folder, as long as the run writes to it
    QStringList made; ///< folders that did not exist before, the deepest first
    QStringList names;
    std::vector<std::unique_ptr<TableFile>> files;
    QStringList placed; ///< paths of files that are in their places
    bool isFinished = false;
};

#endif
