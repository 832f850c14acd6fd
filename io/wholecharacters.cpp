// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/wholecharacters.h"

#include <algorithm>

namespace {

/// Approximate number of bytes at the end of a piece that go with the next one.
constexpr qint64 mostKept = 1000;

/// The number of bytes at the end that begin a longer character; 0 if none do.
qint64 begunAtEnd(const char* data, qint64 size)
{
    for (qint64 count = 1; count <= std::min<qint64>(3, size); ++count) {
        const auto byte = uchar(data[size - count]);
        if ((byte & 0xc0U) != 0x80U) {
            const int length = byte >= 0xf0U ? 4 : byte >= 0xe0U ? 3 : byte >= 0xc0U ? 2 : 1;
            return count < length ? count : 0;
        }
    }
    return 0;
}

} // namespace

WholeCharacters::WholeCharacters(QFile& source)
    : file(source)
{
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 WholeCharacters::readData(char* data, qint64 maxSize)
{
    // QIODevice calls again to fill the rest, which must not cut a character.
    const qint64 begun = held.size();
    if (maxSize <= begun) {
        return 0;
    }
    std::copy_n(held.constData(), begun, data);
    held.clear();
    const qint64 added = file.read(data + begun, maxSize - begun);
    if (added <= 0) {
        return begun > 0 ? begun : added;
    }
    const qint64 count = begun + added;
    qint64 kept = begunAtEnd(data, count);
    // A damaged character, of which only the begin is there, may precede.
    for (qint64 more = kept; more > 0 && kept < mostKept;) {
        more = begunAtEnd(data, count - kept);
        kept += more;
    }
    // At the end everything is given at once; otherwise a line would seem to follow.
    if (kept < count && !file.atEnd()) {
        held.append(data + count - kept, int(kept));
        return count - kept;
    }
    return count;
}
