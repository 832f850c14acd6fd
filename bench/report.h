// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_REPORT_H
#define VELMORA_BENCH_REPORT_H

#include "bench/comparison.h"

#include <string>
#include <vector>

/// The results of all comparisons, with their bars.
class Report
{
public:
    void add(const Comparison& comparison, const Measured& measured);

    /// Adds a check of a number that must not exceed its bar; NaN exceeds every bar.
    void addMost(const std::string& name, double bar, double value);

    /// True if something was measured, no row misses its bar and every check holds. An undecided
    /// row is no failure.
    bool isGood() const;

    /// Prints rows and checks on standard output.
    void print() const;

    /// Writes the rows as CSV with the columns row, ratio, bar, low, high and pairs; bar is empty
    /// for a row without one. Returns false if the file cannot be written.
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
