// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_SAFEFILE_H
#define VELMORA_IO_SAFEFILE_H

#include <QtGlobal>

#ifdef Q_OS_UNIX

#include "io/filesizelimit.h"

#include <QByteArray>
#include <QIODevice>

/// Writes a file that takes the place of an older one only when it is complete and on the disk.
/// Until then it stands beside that as velmora-*.tmp, which is all that a program leaves that is
/// killed.
///
/// The older file's permissions are kept. Symbolic links are followed to the file that they
/// lead to; further names of that file (hard links) keep the older content. What is no file,
/// such as a folder, a device or a pipe, is left alone, and so is a file that is not writable.
class SafeFile : public QIODevice
{
public:
    explicit SafeFile(const QString& path);
    Q_DISABLE_COPY(SafeFile)

    /// Gives up what was not committed.
    ~SafeFile() override;

    /// For writing only. Whatever fails, here or later, leaves the older file as it was, and
    /// errorString tells why.
    bool open(OpenMode mode) override;
    bool isSequential() const override { return true; }

    /// Puts the file in its place; false if that fails or a write has failed. If only the
    /// folder cannot be written to the disk, the new file stands in its place all the same,
    /// but may not outlast a power cut.
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

    QByteArray target;    ///< the file behind all links
    QByteArray temporary; ///< empty unless it exists
    int permissions = -1; ///< of the older file; -1 if there is none
    int file = -1;
    int folder = -1; ///< of both; -1 if it may not be read
    bool hasFailed = false;
    const FileSizeSignalIgnored noSignal;
};

#else

#include <QSaveFile>

using SafeFile = QSaveFile;

#endif

#endif
