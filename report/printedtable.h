// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_PRINTEDTABLE_H
#define VELMORA_REPORT_PRINTEDTABLE_H

#include "report/paper.h"

#include <functional>

/// A table on pages, whose headings stand on each of them.
class PrintedTable
{
public:
    PrintedTable(const ReportTable& reportTable, Paper* pages);

    /// What the page has to have room for where the table begins: all of a short one.
    double leadHeight() const;

    /// False if it is given up; goesOn is asked at each row.
    bool print(const std::function<bool()>& goesOn);

private:
    struct Row
    {
        std::vector<PrintedText> cells;
        bool isHeading;
        double height; ///< with its padding
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
