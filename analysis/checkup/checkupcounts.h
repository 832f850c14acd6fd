// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_CHECKUPCOUNTS_H
#define VELMORA_ANALYSIS_CHECKUP_CHECKUPCOUNTS_H

#include "analysis/checkup/pairing.h"
#include "analysis/checkup/samplecounts.h"

class QDataStream;

/// What was counted of a model in data sets that follow one another.
struct CountedModel
{
    QVector<SampleCounts> dataSets;
    RowPairing pairing;
    SampleSums sums;
};

/// What a check-up keeps of the data sets that it has seen, instead of their samples. It can be
/// written, and joined with that of the data sets that follow.
struct CheckUpCounts
{
    QVector<CountedModel> models; ///< [model]

    /// Adds the counts of the data sets that follow. False, with nothing added, where they are
    /// not of as many models.
    bool append(const CheckUpCounts& later);
};

QDataStream& operator<<(QDataStream& stream, const CheckUpCounts& counts);

/// Bytes that no counts were written to give none and a status other than Ok, in no more memory
/// than a multiple of the bytes.
QDataStream& operator>>(QDataStream& stream, CheckUpCounts& counts);

#endif
