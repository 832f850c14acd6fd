// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_REPORT_H
#define VELMORA_BENCH_REPORT_H

#include "bench/comparison.h"

#include <string>
#include <vector>

/// What was measured, beside the bars.
class Report
{
public:
    void add(const Comparison& comparison, const Measured& measured);

    /// A check of a number that must not exceed its limit; NaN exceeds every limit.
    void addMost(const std::string& name, double limit, double value);

    /// Whether something was measured, no row misses its bar and every check holds. What is
    /// undecided is no failure.
    bool isGood() const;

    /// Rows and checks on standard output.
    void print() const;

    /// The rows as a table with the columns row, ratio, bar, low, high and pairs. A row without
    /// a bar has none there. False if the file cannot be written.
    bool write(const std::string& path) const;

private:
    struct Entry
    {
        std::string name;
        double bar;
        const char* sign; ///< between value and bar
        bool isRow;
        Measured measured;
    };

    std::vector<Entry> entries;
};

#endif
