// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/sourcefile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr qint64 pieceBytes = 1 << 20;

bool isAsNoted(const SourceFile& noted)
{
    const SourceFile now = sourceFile(noted.path);
    return now.size == noted.size && now.modified == noted.modified;
}

} // namespace

SourceFile sourceFile(const QString& path)
{
    const QFileInfo info(path);
    // A pipe or a device would be waited for.
    return info.isFile() ? SourceFile{path, info.size(), info.lastModified()}
                         : SourceFile{path, -1, {}};
}

FileCheck checkFile(const SourceFile& noted, const std::function<bool(qint64 bytes)>& goesOn)
{
    using State = FileCheck::State;
    if (sourceFile(noted.path).size < 0) {
        return {State::Gone, {}};
    }
    if (!isAsNoted(noted)) {
        return {State::Changed, {}};
    }
    QFile file(noted.path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return {State::Unreadable, {}};
    }
    QCryptographicHash hash(QCryptographicHash::Sha256);
    qint64 done = 0;
    QByteArray piece;
    while (!(piece = file.read(pieceBytes)).isEmpty()) {
        hash.addData(piece);
        done += piece.size();
        if (!goesOn(done)) {
            return {State::Unreadable, {}};
        }
    }
    if (!isAsNoted(noted)) {
        return {State::Changed, {}}; // meanwhile
    }
    return done == noted.size ? FileCheck{State::Same, hash.result().toHex()}
                              : FileCheck{State::Unreadable, {}};
}
