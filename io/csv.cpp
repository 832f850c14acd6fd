// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/csv.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr qint64 largestInMemory = std::numeric_limits<int>::max() / 2;

enum class Heading { None, Skip };

template <typename Text>
double toNumber(const Text& field)
{
    bool ok = false;
    const double value = field.toDouble(&ok);
    return ok ? value : notANumber;
}

/// Reads a number in plain notation that fills the field at begin and gives the field's
/// end; nullptr where QString::toDouble has to decide.
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
    // Zero may be an underflow, which is no number to Qt; the one-digit zero is common.
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

/// The lines of plain ASCII text, by the line rules of QTextStream::readLine.
QVector<QVector<double>> readAscii(const QByteArray& text, Heading heading)
{
    QVector<QVector<double>> table;
    bool skip = heading == Heading::Skip;
    int expectedLength = 0;
    const char* const end = text.constData() + text.size();
    for (const char* line = text.constData(); line != end;) {
        const void* feed = std::memchr(line, '\n', std::size_t(end - line));
        const char* const terminator = feed != nullptr ? static_cast<const char*>(feed) : end;
        if (!skip) {
            const bool carriageReturn = terminator != line && terminator[-1] == '\r';
            table.append(readAsciiRow(line, terminator - int(carriageReturn), expectedLength));
            expectedLength = table.constLast().size();
        }
        skip = false;
        line = feed != nullptr ? terminator + 1 : end;
    }
    return table;
}

QVector<QVector<double>> readStream(QTextStream& stream, Heading heading)
{
    QVector<QVector<double>> table;
    if (heading == Heading::Skip) {
        stream.readLine();
    }
    while (!stream.atEnd()) {
        const QString line = stream.readLine();
        QVector<double> row;
        int begin = 0;
        // No split: its list can take twenty times the size of the file.
        for (int comma = line.indexOf(','); comma >= 0; comma = line.indexOf(',', begin)) {
            row.append(toNumber(line.midRef(begin, comma - begin)));
            begin = comma + 1;
        }
        row.append(toNumber(line.midRef(begin)));
        table.append(row);
    }
    return table;
}

bool isAscii(const QByteArray& text)
{
    constexpr quint64 highBits = 0x8080808080808080U;
    const char* position = text.constData();
    const char* const end = position + text.size();
    for (quint64 word = 0; end - position >= qint64(sizeof word); position += sizeof word) {
        std::memcpy(&word, position, sizeof word);
        if ((word & highBits) != 0) {
            return false;
        }
    }
    return std::all_of(position, end, [](char c) { return (uchar(c) & 0x80U) == 0; });
}

bool openForReading(QFile& file)
{
    // Regular files only: a pipe lets the program wait, and a device may never end. Qt warns
    // when an empty name is opened, and a cancelled file dialog gives one.
    return QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly);
}

QVector<QVector<double>> readTable(const QString& path, Heading heading)
{
    QFile file(path);
    if (!openForReading(file)) {
        return {};
    }
    if (file.size() > largestInMemory) {
        QTextStream stream(&file);
        return readStream(stream, heading);
    }
    const QByteArray text = file.readAll();
    if (isAscii(text)) {
        return readAscii(text, heading);
    }
    QTextStream stream(text);
    return readStream(stream, heading);
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

QVector<QVector<double>> csvReadToDouble(QString path)
{
    return readTable(path, Heading::None);
}

QVector<QVector<double>> csvWithHeaderReadToDouble(QString path)
{
    return readTable(path, Heading::Skip);
}

QStringList csvWithHeaderReadHeader(QString path)
{
    QFile file(path);
    if (!openForReading(file)) {
        return {};
    }
    QTextStream stream(&file);
    return stream.atEnd() ? QStringList() : stream.readLine().split(',');
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
    // Intended: the heading names the last column alone.
    stream << (header.isEmpty() ? QString() : header.constLast()) << '\n';
    writeRows(stream, table);
}
