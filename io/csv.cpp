// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/csv.h"

#include "compat/qtversions.h"
#include "io/wholecharacters.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>
#include <optional>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
/// Bytes read at a time.
constexpr int pieceSize = 1 << 20;
/// A file with a longer line counts as unreadable: the line would not fit into a QString.
constexpr int longestLine = 1 << 28;

enum class Heading { None, Skip };

template <typename Text>
double toNumber(const Text& field)
{
    bool ok = false;
    const double value = field.toDouble(&ok);
    return ok ? value : notANumber;
}

/// Reads a number in plain notation that fills the field at begin, and returns the end of the
/// field; nullptr if QString::toDouble must decide.
const char* readPlainNumber(const char* begin, const char* end, double& value)
{
    const char* digit = begin != end && *begin == '-' ? begin + 1 : begin;
    if (digit == end || *digit < '0' || *digit > '9') {
        return nullptr;
    }
    const auto [rest, error] = std::from_chars(begin, end, value);
    if (error != std::errc() || (rest != end && *rest != ',')) {
        return nullptr;
    }
    // Zero may be an underflow, which Qt does not accept as a number; "0" is common.
    const bool plain = std::fpclassify(value) == FP_NORMAL || rest - begin == 1;
    return plain ? rest : nullptr;
}

QVector<double> readAsciiRow(const char* field, const char* lineEnd, int expectedLength)
{
    QVector<double> row;
    row.reserve(int(std::min<qint64>(expectedLength, lineEnd - field + 1)));
    while (true) {
        double value = notANumber;
        const char* fieldEnd = readPlainNumber(field, lineEnd, value);
        if (fieldEnd == nullptr) {
            fieldEnd = std::find(field, lineEnd, ',');
            value = toNumber(QString::fromLatin1(field, int(fieldEnd - field)));
        }
        row.append(value);
        if (fieldEnd == lineEnd) {
            return row;
        }
        field = fieldEnd + 1;
    }
}

/// Appends the rows of the lines from begin to end, by the line rules of
/// QTextStream::readLine.
void appendAsciiRows(QVector<QVector<double>>& table, const char* begin, const char* end)
{
    int expectedLength = table.isEmpty() ? 0 : table.constLast().size();
    for (const char* line = begin; line != end;) {
        const void* feed = std::memchr(line, '\n', std::size_t(end - line));
        const char* const terminator = feed != nullptr ? static_cast<const char*>(feed) : end;
        const bool carriageReturn = terminator != line && terminator[-1] == '\r';
        table.append(readAsciiRow(line, terminator - int(carriageReturn), expectedLength));
        expectedLength = table.constLast().size();
        line = feed != nullptr ? terminator + 1 : end;
    }
}

bool isAscii(const char* position, const char* end)
{
    constexpr quint64 highBits = 0x8080808080808080U;
    for (quint64 word = 0; end - position >= qint64(sizeof word); position += sizeof word) {
        std::memcpy(&word, position, sizeof word);
        if ((word & highBits) != 0) {
            return false;
        }
    }
    return std::all_of(position, end, [](char c) { return (uchar(c) & 0x80U) == 0; });
}

const char* afterLastFeed(const char* begin, const char* end)
{
    const auto feed = std::find(std::reverse_iterator(end), std::reverse_iterator(begin), '\n');
    return feed.base();
}

enum class Reading {
    Complete,
    NotAscii, ///< QTextStream must read it
    Failed
};

/// Reads plain ASCII text a piece at a time, so that memory never holds the text together with
/// all its numbers.
Reading readAscii(QIODevice& file, Heading heading, QVector<QVector<double>>& table)
{
    bool skip = heading == Heading::Skip;
    const auto appendLines = [&](const char* begin, const char* end) {
        if (skip && begin != end) {
            begin = std::find(begin, end, '\n');
            begin += int(begin != end);
            skip = false;
        }
        appendAsciiRows(table, begin, end);
    };
    QByteArray piece(pieceSize, Qt::Uninitialized);
    qint64 kept = 0; // bytes at the begin of the piece, from a line whose end is not read yet
    while (true) {
        const qint64 count = file.read(piece.data() + kept, piece.size() - kept);
        if (count < 0) {
            return Reading::Failed;
        }
        if (count == 0) {
            break;
        }
        char* const begin = piece.data();
        const char* const end = begin + kept + count;
        if (!isAscii(begin + kept, end)) {
            return Reading::NotAscii;
        }
        const char* const linesEnd = afterLastFeed(begin + kept, end);
        const char* const rest = linesEnd == begin + kept ? begin : linesEnd;
        appendLines(begin, rest);
        kept = end - rest;
        std::memmove(begin, rest, std::size_t(kept));
        if (kept == piece.size()) {
            if (kept >= longestLine) {
                return Reading::Failed;
            }
            piece.resize(2 * piece.size());
        }
    }
    appendLines(piece.constData(), piece.constData() + kept);
    return Reading::Complete;
}

/// The next line; nothing if it is too long or cannot be read. The stream itself would take a
/// read error for the end of a line, never for the end of the file.
std::optional<QString> readLine(QTextStream& stream, const QFile& file)
{
    const QString line = stream.readLine(longestLine);
    const bool isRead = file.error() == QFile::NoError && line.size() < longestLine;
    return isRead ? std::optional(line) : std::nullopt;
}

Reading readStream(QFile& file, Heading heading, QVector<QVector<double>>& table)
{
    table.clear();
    if (!file.seek(0)) {
        return Reading::Failed;
    }
    WholeCharacters characters(file);
    QTextStream stream(streamsLoseBytes ? static_cast<QIODevice*>(&characters) : &file);
    if (heading == Heading::Skip && !readLine(stream, file)) {
        return Reading::Failed;
    }
    while (!stream.atEnd()) {
        const std::optional<QString> line = readLine(stream, file);
        if (!line) {
            return Reading::Failed;
        }
        QVector<double> row;
        row.reserve(table.isEmpty() ? 0 : std::min(table.constLast().size(), line->size() + 1));
        // No split: its list can take twenty times the size of the file.
        const QStringView text(*line);
        qsizetype begin = 0;
        for (qsizetype comma = text.indexOf(','); comma >= 0; comma = text.indexOf(',', begin)) {
            row.append(toNumber(text.mid(begin, comma - begin)));
            begin = comma + 1;
        }
        row.append(toNumber(text.mid(begin)));
        table.append(row);
    }
    return Reading::Complete;
}

/// True for regular files: a pipe would make the program wait, and a device may never end. False
/// for an empty name, which a cancelled file dialog gives and which Qt warns about.
bool isReadable(const QString& path)
{
    return QFileInfo(path).isFile();
}

void noteUnread(const QString& path, QStringList* unread)
{
    const QString name = QFileInfo(path).fileName();
    if (unread != nullptr && !unread->contains(name)) {
        unread->append(name);
    }
}

QVector<QVector<double>> readTable(const QString& path, Heading heading, QStringList* unread)
{
    if (!isReadable(path)) {
        return {};
    }
    QFile file(path);
    QVector<QVector<double>> table;
    Reading reading = Reading::Failed;
    if (file.open(QIODevice::ReadOnly)) {
        reading = readAscii(file, heading, table);
        if (reading == Reading::NotAscii) {
            reading = readStream(file, heading, table);
        }
    }
    if (reading == Reading::Failed) {
        noteUnread(path, unread);
        return {};
    }
    return table;
}

void writeRows(QTextStream& stream, const QVector<QVector<double>>& table)
{
    for (const QVector<double>& row : table) {
        for (int column = 0; column < row.size(); ++column) {
            if (column > 0) {
                stream << ',';
            }
            stream << row.at(column);
        }
        stream << '\n';
    }
}

} // namespace

QVector<QVector<double>> csvReadToDouble(QString path, QStringList* unread)
{
    return readTable(path, Heading::None, unread);
}

QVector<QVector<double>> csvWithHeaderReadToDouble(QString path, QStringList* unread)
{
    return readTable(path, Heading::Skip, unread);
}

QStringList csvWithHeaderReadHeader(QString path, QStringList* unread)
{
    if (!isReadable(path)) {
        return {};
    }
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        WholeCharacters characters(file);
        QTextStream stream(streamsLoseBytes ? static_cast<QIODevice*>(&characters) : &file);
        if (stream.atEnd()) {
            return {};
        }
        if (const std::optional<QString> line = readLine(stream, file)) {
            return line->split(',');
        }
    }
    noteUnread(path, unread);
    return {};
}

void csvwrite(QString path, QVector<QVector<double>> table)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        qDebug("Error, unable to save");
        return;
    }
    QTextStream stream(&file);
    writeRows(stream, table);
}

void csvwrite(QString path, QVector<QVector<double>> table, QStringList header)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        qDebug("Error, unable to save");
        return;
    }
    if (table.isEmpty()) {
        return;
    }
    QTextStream stream(&file);
    // Intended: the heading names only the last column.
    stream << streamedText(header.isEmpty() ? QString() : header.constLast()) << '\n';
    writeRows(stream, table);
}
