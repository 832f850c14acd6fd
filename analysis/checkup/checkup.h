// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_CHECKUP_H
#define VELMORA_ANALYSIS_CHECKUP_CHECKUP_H

#include "analysis/checkup/checkupcounts.h"
#include "analysis/checkup/heading.h"
#include "analysis/checkup/modelcheckup.h"

#include <QStringList>

#include <optional>

/// What the imported results of one model look like.
struct ModelCheckUp
{
    QString text;         ///< several lines of plain text: the model, its files, the findings
    QStringList findings; ///< what deserves attention, the gravest first
    /// Of the columns as columnsByName has them, whatever the heading looks like.
    SampleSums samples = {};
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

/// A data set of each model, [model]; none where the model lacks it. A model has the first of the
/// data sets that any model has.
using DataSetTables = QVector<std::optional<Table>>;

/// Those of a data set; none for a negative number.
DataSetTables tablesOf(const RawResults& rawResults, int dataSet);

/// The same check-up, data set by data set, so that not all of them need be in memory. Keeps the
/// tables of one data set, and of the others what was counted.
class CheckUpRun
{
public:
    /// Of as many models as there are names, which may be empty.
    CheckUpRun(const QVector<Heading>& headings, const QStringList& modelNames,
               int colNumOFVSetting, int colNumTHETA1Setting,
               const QVector<QStringList>& unread = {});

    /// Tells the data set before the next one, where it was not the last that was added. It is
    /// not counted.
    void follow(const DataSetTables& tables);

    /// Counts the next data set, of this number.
    void add(int dataSet, const DataSetTables& tables);

    /// Adds what another run of the same models counted of the data sets that follow. False, with
    /// nothing added, where it is not of as many models.
    bool append(const CheckUpCounts& later);

    const CheckUpCounts& counts() const { return counted; }

    /// What was found; of all data sets from 0 on, since they are told by their place.
    ImportCheckUp result() const;

private:
    QVector<CheckedModel> definitions; ///< [model], without counts
    QVector<int> ofvColumns;           ///< [model]
    QVector<SampleColumns> summed;     ///< columns of the sums, [model]
    int colNumOFV;
    int colNumTHETA1;
    DataSetTables previous;
    CheckUpCounts counted;
};

#endif
