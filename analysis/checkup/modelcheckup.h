// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_MODELCHECKUP_H
#define VELMORA_ANALYSIS_CHECKUP_MODELCHECKUP_H

#include "analysis/checkup/heading.h"
#include "analysis/checkup/pairing.h"
#include "analysis/checkup/samplecounts.h"

#include <QStringList>

// The findings of the import check-up about one model.

/// Kinds of findings, the most serious first.
enum class Kind {
    Unreadable,
    WrongColumn,
    Pairing,
    NoOfv,
    NotConverged,
    NearBoundary,
    FirstRow,
    Numbering,
    Widths,
    DataSets
};

/// Something that the user should look at.
struct Finding
{
    Kind kind;
    qint64 count; ///< of samples, to find the worst of a kind
    QString text;
    QString brief; ///< for the summary, with the model's name
};

/// A model during its check-up.
struct CheckedModel
{
    QString name;
    QStringList unread; ///< files that could not be read to their end
    Heading heading;
    QStringList names; ///< of the columns; empty if the file has no readable heading
    SampleColumns columns;
    QVector<SampleCounts> dataSets;
    RowPairing pairing;
    int width = 0;     ///< columns of most samples
    QStringList facts; ///< what is as it should be
    QVector<Finding> findings;
};

/// What one model is compared with, and the 1-based column settings.
struct CheckContext
{
    const QVector<CheckedModel>& models; ///< whose rows are paired, by their OFV and numbers
    bool zeroSeen;                       ///< whether the sample numbers of any table start at 0
    int colNumOFV;
    int colNumTHETA1;
};

/// Adds the facts and findings of the model. Its counts and width, and the names and counts of all
/// models, must be known.
void checkModel(CheckedModel& model, const CheckContext& context);

#endif
