// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/zip.h"

#include <array>

namespace {

constexpr quint16 version = 20; ///< that is needed to unpack deflated files
constexpr quint16 deflated = 8;
constexpr quint16 firstDay = (1 << 5) | 1; ///< of the calendar of MS-DOS, 1980-01-01

/// Numbers with the lowest byte first.
template <typename T>
QByteArray bytes(T number)
{
    QByteArray text;
    for (unsigned i = 0; i < sizeof(T); ++i) {
        text.append(char(number >> (8 * i)));
    }
    return text;
}

std::array<quint32, 256> crcTable()
{
    constexpr quint32 reversedPolynomial = 0xedb88320;
    std::array<quint32, 256> table{};
    for (quint32 byte = 0; byte < table.size(); ++byte) {
        quint32 rest = byte;
        for (int bit = 0; bit < 8; ++bit) {
            rest = (rest & 1) != 0 ? (rest >> 1) ^ reversedPolynomial : rest >> 1;
        }
        table.at(byte) = rest;
    }
    return table;
}

quint32 crc32(const QByteArray& content)
{
    static const std::array<quint32, 256> table = crcTable();
    quint32 crc = ~quint32(0);
    for (const char byte : content) {
        crc = table.at((crc ^ quint8(byte)) & 0xff) ^ (crc >> 8);
    }
    return ~crc;
}

/// The deflated bytes, without what zlib and Qt put around them.
QByteArray deflatedBytes(const QByteArray& content)
{
    constexpr int head = 6; // Qt's length and zlib's header
    constexpr int tail = 4; // zlib's checksum
    const QByteArray packed = qCompress(content);
    return packed.mid(head, packed.size() - head - tail);
}

} // namespace

void ZipArchive::add(const QByteArray& name, const QByteArray& content, Packing packing)
{
    const bool isPacked = packing == Packing::Deflated;
    const QByteArray data = isPacked ? deflatedBytes(content) : content;
    const QByteArray common = bytes<quint16>(0) + bytes<quint16>(isPacked ? deflated : 0)
                              + bytes<quint16>(0) + bytes<quint16>(firstDay) + bytes(crc32(content))
                              + bytes(quint32(data.size())) + bytes(quint32(content.size()))
                              + bytes(quint16(name.size())) + bytes<quint16>(0);
    const auto offset = quint32(files.size());
    files += "PK\3\4" + bytes(version) + common + name + data;
    directory += "PK\1\2" + bytes(version) + bytes(version) + common + bytes<quint16>(0)
                 + bytes<quint16>(0) + bytes<quint16>(0) + bytes<quint32>(0) + bytes(offset) + name;
    ++count;
}

QByteArray ZipArchive::finished() const
{
    return files + directory + "PK\5\6" + bytes<quint16>(0) + bytes<quint16>(0)
           + bytes(quint16(count)) + bytes(quint16(count)) + bytes(quint32(directory.size()))
           + bytes(quint32(files.size())) + bytes<quint16>(0);
}
