// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_CHECKUPCOUNTS_H
#define VELMORA_ANALYSIS_CHECKUP_CHECKUPCOUNTS_H

#include "analysis/checkup/pairing.h"
#include "analysis/checkup/samplecounts.h"

class QDataStream;

/// The counts of a model in data sets that follow one another.
struct CountedModel
{
    QVector<SampleCounts> dataSets;
    RowPairing pairing;
    SampleSums sums;
};

/// The counts that a check-up keeps instead of the samples of the data sets. They can be written,
/// and joined with the counts of the data sets that follow.
struct CheckUpCounts
{
    QVector<CountedModel> models; ///< [model]

    /// Adds the counts of the data sets that follow. False, with nothing added, if the number of
    /// models differs.
    bool append(const CheckUpCounts& later);
};

QDataStream& operator<<(QDataStream& stream, const CheckUpCounts& counts);

/// Bytes that do not hold counts give none and a status other than Ok; memory stays below a
/// multiple of the bytes.
QDataStream& operator>>(QDataStream& stream, CheckUpCounts& counts);

#endif
