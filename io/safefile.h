// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_SAFEFILE_H
#define VELMORA_IO_SAFEFILE_H

#include <QtGlobal>

#ifdef Q_OS_UNIX

#include "io/filesizelimit.h"

#include <QByteArray>
#include <QIODevice>

/// Writes a file that replaces an older one only when it is complete and on the disk. Until then
/// it is next to the older one as velmora-*.tmp; a killed program leaves nothing else.
///
/// The new file has the older file's permissions. Symbolic links are followed to their file; other
/// names of that file (hard links) keep the older content. Folders, devices, pipes and files that
/// are not writable stay as they are.
class SafeFile : public QIODevice
{
public:
    explicit SafeFile(const QString& path);
    Q_DISABLE_COPY(SafeFile)

    /// Drops what was not committed.
    ~SafeFile() override;

    /// Opens the file, only for writing. Any failure, here or later, leaves the older file as it
    /// was, and errorString says why.
    bool open(OpenMode mode) override;
    bool isSequential() const override { return true; }

    /// Puts the file in its place. False if that fails or a write has failed. If only the
    /// folder cannot be written to the disk, the new file is in its place but may not survive a
    /// power cut.
    bool commit();

protected:
    qint64 readData(char* data, qint64 size) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    bool findTarget();
    bool isReplaceable();
    bool create();
    bool fail(const QString& reason = qt_error_string());
    void giveUp();

    QByteArray target;    ///< the file that all links lead to
    QByteArray temporary; ///< empty unless it exists
    int permissions = -1; ///< of the older file; -1 if there is none
    int file = -1;
    int folder = -1; ///< the folder of both; -1 if it cannot be read
    bool hasFailed = false;
    const FileSizeSignalIgnored noSignal;
};

#else

#include <QSaveFile>

using SafeFile = QSaveFile;

#endif

#endif
