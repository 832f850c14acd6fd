// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_SOURCEFILE_H
#define VELMORA_IO_SOURCEFILE_H

#include <QDateTime>
#include <QString>

#include <functional>

/// A file that results were read from, in its state at that time.
struct SourceFile
{
    QString path;       ///< empty if there was none
    qint64 size = -1;   ///< in bytes; -1 if it does not exist
    QDateTime modified; ///< time of the last change
};

/// The file in its present state.
SourceFile sourceFile(const QString& path);

/// The present state of a file that was read earlier.
struct FileCheck
{
    enum class State { Same, Changed, Gone, Unreadable };
    State state = State::Gone;
    QByteArray sha256; ///< of its content, as hexadecimal digits; only if it is the same
};

/// Checks a file that was read earlier. If its size and time are unchanged, reads it again, a
/// piece at a time. goesOn receives how many bytes have been read and returns false to abort; the
/// file is then unreadable, as is anything other than a regular file.
FileCheck checkFile(const SourceFile& noted, const std::function<bool(qint64 bytes)>& goesOn);

#endif
