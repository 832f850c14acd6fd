// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_OUTPUTFOLDER_H
#define VELMORA_BATCH_OUTPUTFOLDER_H

#include "io/safefile.h"

#include <QByteArray>
#include <QStringList>

#include <memory>
#include <vector>

/// A file of comma-separated lines (RFC 4180), written piece by piece. It appears in its place
/// when the run is done. A write that fails ends the run.
class TableFile
{
public:
    TableFile(const QString& filePath, const QStringList& headings);

    /// A file whose lines include the headings.
    explicit TableFile(const QString& filePath);

    void addRow(const QByteArrayList& fields);
    void addLines(const QByteArray& lines);
    QIODevice& device() { return file; }

    /// Ends the run if the device has an error.
    void check() const;
    void commit();

private:
    void flush();

    QString path;
    SafeFile file;
    QByteArray buffer;
};

/// The folder for results. All files appear in their places together, when the run is done. If
/// the run fails, a folder that was created for them is removed.
class OutputFolder
{
public:
    /// The name of the file that is written last. It marks the folder as complete.
    static constexpr char recordName[] = "run.json";

    /// Creates the folder, or takes one that is empty or whose earlier run is resumed.
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
    int lock = -1;    ///< descriptor of the folder, locked while the run writes to it
    QStringList made; ///< created folders, the deepest first
    QStringList names;
    std::vector<std::unique_ptr<TableFile>> files;
    QStringList placed; ///< paths of the files that are in their places
    bool isFinished = false;
};

#endif
