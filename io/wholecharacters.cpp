// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/wholecharacters.h"

#include <algorithm>

namespace {

/// Bytes at the end that begin a character of more bytes.
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
    const qint64 begun = std::min<qint64>(held.size(), maxSize);
    std::copy_n(held.constData(), begun, data);
    held.remove(0, int(begun));
    const qint64 added = file.read(data + begun, maxSize - begun);
    if (added <= 0) {
        return begun > 0 ? begun : added;
    }
    const qint64 count = begun + added;
    const qint64 kept = begunAtEnd(data, count);
    if (kept < count) {
        held.append(data + count - kept, int(kept));
        return count - kept;
    }
    return count;
}
