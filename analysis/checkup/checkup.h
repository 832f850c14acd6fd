// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_CHECKUP_H
#define VELMORA_ANALYSIS_CHECKUP_CHECKUP_H

#include "analysis/checkup/heading.h"
#include "model/tables.h"

#include <QStringList>

/// What the imported results of one model look like.
struct ModelCheckUp
{
    QString text;         ///< several lines of plain text: the model, its files, the findings
    QStringList findings; ///< what deserves attention, the gravest first
};

/// What imported results look like, so that nothing wrong in them goes unseen.
struct ImportCheckUp
{
    /// One line: "5 models, 1 data set, 1001 samples each; 317 samples of emax did not
    /// converge". Empty without models.
    QString summary;
    QVector<ModelCheckUp> models; ///< [model]
};

/// Looks imported results through. They may be uneven in every way: headings (pieces of the
/// heading line, [model]) and names may be missing, tables empty, rows short. Columns are
/// found by their names; without an ofv by name the OFV column setting counts. Settings are
/// 1-based. Data sets are told by their numbers from 0, as the selectors show them.
///
/// Samples are rows, the original fit in the first row included. The fit counts as missing
/// where the sample numbers start above 1, or at 1 while another table starts at 0; numbers
/// that start at 1 everywhere leave it open.
ImportCheckUp checkUp(const RawResults& rawResults, const QVector<QStringList>& headings,
                      const QStringList& modelNames, int colNumOFV, int colNumTHETA1);

/// The same with headings that were read before. unread has the names of files that could not
/// be read to their end, [model]; models may be missing.
ImportCheckUp checkUp(const RawResults& rawResults, const QVector<Heading>& headings,
                      const QStringList& modelNames, int colNumOFV, int colNumTHETA1,
                      const QVector<QStringList>& unread = {});

#endif
