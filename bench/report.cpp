// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/report.h"

#include "bench/measurements.h"

#include <QSaveFile>

#include <algorithm>
#include <cstdio>
#include <limits>

void Report::addRow(const std::string& name, double bar, const Ratio& ratio)
{
    add(Kind::Row, name, bar, ratio);
}

void Report::addLeast(const std::string& name, double limit, const Ratio& value)
{
    add(Kind::Least, name, limit, value);
}

void Report::addMost(const std::string& name, double limit, const Ratio& value)
{
    add(Kind::Most, name, limit, value);
}

void Report::add(Kind kind, const std::string& name, double bar, const Ratio& ratio)
{
    entries.push_back({kind, name, bar, ratio, std::numeric_limits<double>::quiet_NaN()});
}

void Report::conclude(const Measurements& measurements)
{
    for (Entry& entry : entries) {
        entry.value = entry.ratio(measurements);
    }
}

bool Report::isGood() const
{
    return !entries.empty() && std::all_of(entries.begin(), entries.end(), [](const Entry& entry) {
        return entry.isGood();
    });
}

void Report::print() const
{
    for (const bool rows : {true, false}) {
        std::printf("\n%-36s %8s %8s\n", rows ? "row" : "check", rows ? "ratio" : "value",
                    rows ? "bar" : "limit");
        for (const Entry& entry : entries) {
            if ((entry.kind == Kind::Row) == rows) {
                std::printf("%-36s %8.3f %s %5g%s\n", entry.name.c_str(), entry.value,
                            entry.kind == Kind::Least ? ">=" : "<=", entry.bar,
                            entry.isGood() ? "" : "  not met");
            }
        }
    }
}

bool Report::write(const std::string& path) const
{
    QByteArray text = "row,ratio,bar\n";
    for (const Entry& entry : entries) {
        if (entry.kind == Kind::Row) {
            text += QByteArray::fromStdString(entry.name) + ','
                    + QByteArray::number(entry.value, 'g', 6) + ',' + QByteArray::number(entry.bar)
                    + '\n';
        }
    }
    QSaveFile file(QString::fromStdString(path));
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
}

Report::Ratio timeRatio(const std::string& work, const std::string& limit)
{
    return
        [work, limit](const Measurements& measurements) { return measurements.ratio(work, limit); };
}
