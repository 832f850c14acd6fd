// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// A CSV file.

#include "analysis/checkup/checkup.h"
#include "fuzz/literalvalue.h"
#include "fuzz/target.h"
#include "io/csv.h"
#include "tests/support/studyfiles.h"

#include <QTextStream>

#include <cmath>

namespace {

using Table = QVector<QVector<double>>;

/// Files are read in pieces of these sizes, by streams and by the reader.
constexpr int streamPieceSize = 16384;
constexpr int readerPieceSize = 1 << 20;

QVector<QStringList> plainFields(const QString& path)
{
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "the file can be read");
    QTextStream stream(&file);
    QVector<QStringList> lines;
    while (!stream.atEnd()) {
        lines.append(stream.readLine().split(','));
    }
    return lines;
}

double plainNumber(const QString& field)
{
    bool isNumber = false;
    const double number = field.toDouble(&isNumber);
    return isNumber ? number : qQNaN();
}

bool isDigits(const QString& field)
{
    return !field.isEmpty() && field.size() < 16
           && std::all_of(field.begin(), field.end(),
                          [](QChar c) { return c >= QChar('0') && c <= QChar('9'); });
}

void checkRows(const Table& rows, const QVector<QStringList>& lines)
{
    require(rows.size() == lines.size(), "every line is a row");
    for (int row = 0; row < rows.size(); ++row) {
        const QStringList& fields = lines.at(row);
        require(rows.at(row).size() == fields.size(), "every field is a number or NaN");
        for (int column = 0; column < fields.size(); ++column) {
            const double number = rows.at(row).at(column);
            require(sameBits(number, plainNumber(fields.at(column))), "fields convert as texts do");
            require(!isDigits(fields.at(column))
                        || number == double(fields.at(column).toLongLong()),
                    "digits are the number they say");
        }
    }
}

/// Numbers are written with six digits, and read back as such.
void checkWriting(const Table& table, const QString& path)
{
    csvwrite(path, table);
    const Table written = csvReadToDouble(path);
    require(written.size() == table.size(), "every row is written");
    for (int row = 0; row < table.size(); ++row) {
        require(written.at(row).size() == table.at(row).size(), "every number is written");
        for (int column = 0; column < table.at(row).size(); ++column) {
            const double before = table.at(row).at(column);
            const double after = written.at(row).at(column);
            // Beyond these limits six digits may round to no number.
            const bool isExtreme = std::isfinite(before) && before != 0.0
                                   && (std::fabs(before) > 1e308 || std::fabs(before) < 1e-307);
            const bool isClose = before == after || (std::isnan(before) && std::isnan(after))
                                 || std::fabs(after - before) <= 1e-5 * std::fabs(before);
            require(isExtreme || isClose, "six digits survive");
        }
    }
}

void checkFile(const StudyFiles& files, const QByteArray& content)
{
    const QString path = files.write("read.csv", content);
    QVector<QStringList> lines = plainFields(path);
    const Table table = csvReadToDouble(path);
    checkRows(table, lines);
    require(csvWithHeaderReadHeader(path) == (lines.isEmpty() ? QStringList() : lines.first()),
            "the header is the first line");
    lines = lines.mid(1);
    checkRows(csvWithHeaderReadToDouble(path), lines);
    checkWriting(table, files.path("written.csv"));

    const Table samples = csvWithHeaderReadToDouble(path);
    const QStringList header = csvWithHeaderReadHeader(path);
    const ImportCheckUp found = checkUp({{samples, table}, {table, {}}}, {header}, {"m"}, 2, 3);
    require(found.models.size() == 2 && !found.summary.isEmpty(), "every model is looked through");
}

} // namespace

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    return 0;
}

int LLVMFuzzerTestOneInput(const uchar* data, size_t size)
{
    static const StudyFiles files;
    const QByteArray content(reinterpret_cast<const char*>(data), int(size));
    checkFile(files, content);
    if (size % 8 == 1) { // at times with the border of two pieces in the middle
        checkFile(files, QByteArray(qMax(0, streamPieceSize - int(size) / 2), '7') + content);
    }
    if (size % 8 == 2) {
        checkFile(files, QByteArray(qMax(0, readerPieceSize - int(size) / 2), 'x') + content);
    }
    return 0;
}
