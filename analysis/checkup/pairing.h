// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_PAIRING_H
#define VELMORA_ANALYSIS_CHECKUP_PAIRING_H

#include "model/tables.h"

#include <QVector>

#include <limits>

// Whether the rows of the models belong together. Averaging and selection take row s of every
// model for the same resample. If it is the same, the OFV of all models is high or low with
// it; sample numbers cannot show that, as every file has its own.

/// Spearman's rank correlation (Spearman 1904) of two samples of so many values: Pearson's
/// correlation of the ranks, of which ties share the mean. Pairs count in which both values
/// are finite. NaN below 20 of these, and where either value is the same in all of them.
double rankCorrelation(const double* first, const double* second, int count);

/// Rows of a data set in which the OFV of a model does not go with that of its partner.
struct PairingFault
{
    int partner = -1; ///< model; -1 where there is no fault
    int dataSet = 0;
    int firstRow = 0;
    int rowCount = 0;
    bool isWhole = true; ///< whether these are all rows that both have
    double correlation = 0.0;
    /// By how many rows, up to 20, the model's rows have to be moved down, so that the
    /// correlation is 0.5 or more, the highest possible, and better than chance makes it; negative
    /// for up, 0 where that is not possible.
    int shift = 0;
    double restored = 0.0; ///< the correlation after that
};

/// How the OFV of a model goes with that of the other models.
struct RowPairing
{
    PairingFault worst; ///< of the data sets in which the model's rows are those that do not fit
    /// Rank correlations over all rows with the other models, in data sets in which neither is at
    /// fault; NaN where there are none.
    double lowest = std::numeric_limits<double>::quiet_NaN();
    double highest = std::numeric_limits<double>::quiet_NaN();

    /// Adds what was found in data sets that follow.
    void append(const RowPairing& later);
};

/// Checks every pair of models in a data set; with more than 20 models, each with the first. tables
/// are [model], empty where a model lacks the data set; ofvColumns are 0-based, [model], -1 for
/// none. Adds to pairings, [model], and returns which models are at fault, [model].
///
/// A pair does not fit if its rank correlation lies below 0.5, over all rows or over a fifth of
/// them: where a row is missing in the middle, the rows before still fit. The fault is then in the
/// fifth that fits least, but in all rows where no fifth fits. Parts with fewer than 20 rows that
/// have both OFVs are not judged. At fault is the model that fits the fewest others, the last of
/// several, so that one shuffled file leaves the others alone. The worst of its faults is that with
/// the lowest correlation, over all rows if there is one.
QVector<bool> pairRows(int dataSet, const QVector<Table>& tables, const QVector<int>& ofvColumns,
                       QVector<RowPairing>& pairings);

#endif
