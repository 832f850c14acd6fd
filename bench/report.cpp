// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/report.h"

#include <QSaveFile>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

std::string remark(double bar, const Measured& measured)
{
    if (measured.pairs == 0 && measured.verdict == Verdict::Missed) {
        return "missed: not measured";
    }
    if (std::isnan(bar)) {
        return "no bar on this processor";
    }
    switch (measured.verdict) {
    case Verdict::Kept:
        return {};
    case Verdict::Missed:
        return "missed";
    case Verdict::Undecided:
        break;
    }
    char text[80];
    std::snprintf(text, sizeof(text),
                  "undecided: other programs take %.0f %% of the processors, load %.1f",
                  100 * measured.others, measured.load);
    return text;
}

QByteArray inFile(double number)
{
    return std::isnan(number) ? QByteArray() : QByteArray::number(number, 'g', 6);
}

} // namespace

void Report::add(const Comparison& comparison, const Measured& measured)
{
    const bool isRow = comparison.kind == Comparison::Kind::Row;
    entries.push_back({comparison.name, comparison.bar, isRow ? "<=" : ">=", isRow, measured});
}

void Report::addMost(const std::string& name, double bar, double value)
{
    Measured measured;
    measured.ratio = {value, value, value};
    measured.verdict = verdictOf(measured.ratio, bar);
    measured.pairs = 1;
    entries.push_back({name, bar, "<=", false, measured});
}

bool Report::isGood() const
{
    return !entries.empty() && std::all_of(entries.begin(), entries.end(), [](const Entry& entry) {
        return entry.measured.verdict != Verdict::Missed;
    });
}

void Report::print() const
{
    for (const bool rows : {true, false}) {
        std::printf("\n%-36s %8s %8s %8s %8s %6s\n", rows ? "row" : "check",
                    rows ? "ratio" : "value", "bar", "low", "high", "pairs");
        for (const Entry& entry : entries) {
            if (entry.isRow == rows) {
                const Measured& measured = entry.measured;
                std::printf("%-36s %8.3f %s %5g %8.3f %8.3f %6d  %s\n", entry.name.c_str(),
                            measured.ratio.median, entry.sign, entry.bar, measured.ratio.low,
                            measured.ratio.high, measured.pairs,
                            remark(entry.bar, measured).c_str());
            }
        }
    }
}

bool Report::write(const std::string& path) const
{
    QByteArray text = "row,ratio,bar,low,high,pairs\n";
    for (const Entry& entry : entries) {
        if (entry.isRow) {
            const Measured& measured = entry.measured;
            text += QByteArray::fromStdString(entry.name) + ',' + inFile(measured.ratio.median)
                    + ',' + inFile(entry.bar) + ',' + inFile(measured.ratio.low) + ','
                    + inFile(measured.ratio.high) + ',' + QByteArray::number(measured.pairs) + '\n';
        }
    }
    QSaveFile file(QString::fromStdString(path));
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
}
