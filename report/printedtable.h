// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_PRINTEDTABLE_H
#define VELMORA_REPORT_PRINTEDTABLE_H

#include "report/paper.h"

#include <functional>

/// A table on pages, with its headings on each of them.
class PrintedTable
{
public:
    PrintedTable(const ReportTable& reportTable, Paper* pages);

    /// The room that the first page must have for the table: all of it if it is short.
    double leadHeight() const;

    /// Returns false if aborted; calls goesOn before each row.
    bool print(const std::function<bool()>& goesOn);

private:
    struct Row
    {
        std::vector<PrintedText> cells;
        bool isHeading;
        double height; ///< including padding
    };

    Row row(const QStringList& texts, bool isHeading) const;
    void printRow(const Row& row);
    bool printPart(const Row& row, std::vector<int>& next);

    const ReportTable& table;
    Paper* paper;
    QVector<double> widths;
    Row heading;
};

#endif
