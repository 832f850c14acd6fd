// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_SOURCEFILE_H
#define VELMORA_IO_SOURCEFILE_H

#include <QDateTime>
#include <QString>

#include <functional>

/// A file that results were read from, as it was then.
struct SourceFile
{
    QString path;       ///< empty where there was none
    qint64 size = -1;   ///< in bytes; -1 where it does not exist
    QDateTime modified; ///< the last time
};

/// The file as it is now.
SourceFile sourceFile(const QString& path);

/// What has become of a file that was read.
struct FileCheck
{
    enum class State { Same, Changed, Gone, Unreadable };
    State state = State::Gone;
    QByteArray sha256; ///< of its content, as hexadecimal digits; only where it is the same
};

/// Looks at a file that was read, and reads it once more, a piece at a time, if its size and
/// time are those of then. goesOn is told how many bytes have been read and gives it up by
/// false; the file is unreadable then, as is what is no file.
FileCheck checkFile(const SourceFile& noted, const std::function<bool(qint64 bytes)>& goesOn);

#endif
