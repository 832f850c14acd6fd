// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_REPORT_H
#define VELMORA_BENCH_REPORT_H

#include <functional>
#include <string>
#include <vector>

class Measurements;

/// The ratios of what was measured, beside the bars that they must not exceed.
class Report
{
public:
    using Ratio = std::function<double(const Measurements&)>;

    /// A row of the table of ratios. NaN, from a failed benchmark, exceeds every bar.
    void addRow(const std::string& name, double bar, const Ratio& ratio);

    // What shows that the measurement is worth something.
    void addLeast(const std::string& name, double limit, const Ratio& value);
    void addMost(const std::string& name, double limit, const Ratio& value);

    /// Takes the ratios from the measurements; to be called once, at the end.
    void conclude(const Measurements& measurements);

    /// Whether no row exceeds its bar and every check holds.
    bool isGood() const;

    /// Rows and checks on standard output.
    void print() const;

    /// The rows as a table with the columns row, ratio and bar. False if the file cannot
    /// be written.
    bool write(const std::string& path) const;

private:
    enum class Kind { Row, Least, Most };

    struct Entry
    {
        Kind kind;
        std::string name;
        double bar;
        Ratio ratio;
        double value;
        bool isGood() const { return kind == Kind::Least ? value >= bar : value <= bar; }
    };

    void add(Kind kind, const std::string& name, double bar, const Ratio& ratio);

    std::vector<Entry> entries;
};

/// The time of a benchmark to that of the one which is its limit.
Report::Ratio timeRatio(const std::string& work, const std::string& limit);

#endif
