// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/comparison.h"
#include "bench/inputs.h"
#include "bench/subjects.h"
#include "io/csv.h"
#include "tests/support/studyfiles.h"

#include <QFile>
#include <QTextStream>

#include <algorithm>
#include <charconv>
#include <limits>

namespace {

constexpr int rowCount = 10000;
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct RawFile
{
    QStringList heading;
    Table table;
};

bool sameFile(const RawFile& first, const RawFile& second)
{
    return first.heading == second.heading && sameBits(first.table, second.table);
}

const QString& filePath()
{
    static const StudyFiles folder;
    static const QString path = [] {
        InputNumbers numbers;
        return folder.write("raw_results_model1.csv",
                            rawResultsText(bootstrapTable(numbers, rowCount)));
    }();
    return path;
}

RawFile readByHand()
{
    QFile file(filePath());
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray text = file.readAll();
    const char* const end = text.constData() + text.size();
    const char* position = std::find(text.constData(), end, '\n');
    RawFile result;
    result.heading =
        QString::fromLatin1(text.constData(), int(position - text.constData())).split(',');
    result.table.reserve(rowCount);
    while (end - position > 1) {
        QVector<double> row;
        row.reserve(result.heading.size());
        do {
            double value = notANumber;
            position = std::from_chars(position + 1, end, value).ptr;
            row.append(value);
        } while (*position == ',');
        result.table.append(row);
    }
    return result;
}

RawFile readVelmora()
{
    return {csvWithHeaderReadHeader(filePath()), csvWithHeaderReadToDouble(filePath())};
}

RawFile readByStream()
{
    QFile file(filePath());
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QTextStream stream(&file);
    RawFile result;
    result.heading = stream.readLine().split(',');
    while (!stream.atEnd()) {
        QVector<double> row;
        for (const QString& field : stream.readLine().split(',')) {
            bool isNumber = false;
            const double value = field.toDouble(&isNumber);
            row.append(isNumber ? value : notANumber);
        }
        result.table.append(row);
    }
    return result;
}

Comparison compareReaders(const char* name, double bar, RawFile (*product)())
{
    const auto side = [](RawFile (*read)()) {
        return timed([read] { benchmark::DoNotOptimize(read().table.constData()); });
    };
    Comparison comparison;
    comparison.name = name;
    comparison.bar = bar;
    comparison.contests = {{side(product), side(readByHand)}};
    comparison.agree = [product] {
        const RawFile expected = readByHand();
        return expected.table.size() == rowCount && sameFile(product(), expected);
    };
    return comparison;
}

} // namespace

void registerCsv(Report& report)
{
    registerComparison(report, compareReaders("csv_read", 1.6, readVelmora));
    Comparison check = compareReaders("QTextStream and split in csv_read", 4, readByStream);
    check.kind = Comparison::Kind::LeastCheck;
    registerComparison(report, check);
}
