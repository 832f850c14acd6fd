// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_SAMPLECOUNTS_H
#define VELMORA_ANALYSIS_CHECKUP_SAMPLECOUNTS_H

#include "model/tables.h"

#include <QMap>
#include <QStringList>

#include <limits>

/// 0-based columns of a model's samples, -1 for none.
struct SampleColumns
{
    int number = -1;    ///< of the sample, 0 for the original fit
    int converged = -1; ///< 0 if the minimization failed
    int boundary = -1;  ///< other than 0 if an estimate is near a boundary
    int ofv = -1;

    bool operator==(const SampleColumns& other) const
    {
        return number == other.number && converged == other.converged && boundary == other.boundary
               && ofv == other.ofv;
    }
};

/// The counts of a data set. Without the column that it needs, a count is 0; withoutOfv is then all
/// samples.
struct SampleCounts
{
    qint64 samples = 0; ///< rows, the original fit included
    double firstNumber = std::numeric_limits<double>::quiet_NaN();
    double lastNumber = std::numeric_limits<double>::quiet_NaN();
    qint64 withoutOfv = 0;
    qint64 notConverged = 0;
    qint64 unknownConvergence = 0; ///< the column has no number
    qint64 nearBoundary = 0;
    qint64 missingNumbers = 0;  ///< between the lowest and the highest
    qint64 repeatedNumbers = 0; ///< samples whose number another sample before has
    qint64 unnumbered = 0;
    qint64 mispaired = 0;         ///< rows whose number is not that of the partner's row
    bool fitFailed = false;       ///< the original fit, number 0 in the first row, did not converge
    bool unevenlyPaired = false;  ///< with a table of another number of rows; set by callers
    bool unpaired = false;        ///< its OFV does not go with the others; set by callers
    bool repeatsPrevious = false; ///< the data set before has the same samples; set by callers
    QMap<int, qint64> widths;     ///< samples per number of columns
};

/// The samples of a model over its data sets.
struct SampleSums
{
    qint64 dataSets = 0;
    qint64 fewest = 0; ///< samples in a data set
    qint64 most = 0;   ///< the same
    qint64 samples = 0;
    qint64 withoutOfv = 0;
    qint64 notConverged = 0;
    qint64 nearBoundary = 0;

    void add(const SampleCounts& counts);
    void add(const SampleSums& sums);
};

/// The columns by their names, [column], except the OFV, which goes by its setting (1-based).
SampleColumns columnsByName(const QStringList& names, int colNumOFV);

/// The numbers in a column, one per row; NaN where a row is short. Empty for column -1.
QVector<double> columnValues(const Table& table, int column);

/// Counts the samples of a table. numbers are those of its number column, partnerNumbers
/// those of the table whose rows it is paired with; where either is missing, a row counts
/// as well paired.
SampleCounts countSamples(const Table& table, const SampleColumns& columns,
                          const QVector<double>& numbers, const QVector<double>& partnerNumbers);

/// Whether the tables hold the same samples, at least one.
bool sameSamples(const Table& first, const Table& second);

#endif
