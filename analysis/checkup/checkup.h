// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_CHECKUP_H
#define VELMORA_ANALYSIS_CHECKUP_CHECKUP_H

#include "analysis/checkup/checkupcounts.h"
#include "analysis/checkup/heading.h"
#include "analysis/checkup/modelcheckup.h"
#include "io/numberedfiles.h"

#include <QStringList>

#include <optional>

/// The check-up of the imported results of one model.
struct ModelCheckUp
{
    QString text;         ///< several lines of plain text: the model, its files, the findings
    QStringList findings; ///< the most serious first
    /// Sums over the columns that columnsByName finds, whatever the heading looks like.
    SampleSums samples = {};
};

/// The check-up of imported results, so that no fault in them goes unnoticed.
struct ImportCheckUp
{
    /// One line: "5 models, 1 data set, 1001 samples each; 317 samples of emax did not
    /// converge". Empty without models.
    QString summary;
    QVector<ModelCheckUp> models; ///< [model]
};

/// Checks imported results. They may be uneven in every way: headings (pieces of the heading line,
/// [model]) and names may be missing, tables empty, rows short. Columns are found by their names;
/// if none is named ofv, the OFV column setting counts. Settings are 1-based. Data sets are
/// numbered from 0, as in the selectors.
///
/// Samples are rows, the original fit in the first row included. The fit counts as missing where
/// the sample numbers start above 1, or at 1 while another table starts at 0; if all numbers start
/// at 1, this remains unknown.
ImportCheckUp checkUp(const RawResults& rawResults, const QVector<QStringList>& headings,
                      const QStringList& modelNames, int colNumOFV, int colNumTHETA1);

/// The same with headings that are already read. unread has the names of files that could not be
/// read to their end, [model]; models may be missing.
ImportCheckUp checkUp(const RawResults& rawResults, const QVector<Heading>& headings,
                      const QStringList& modelNames, int colNumOFV, int colNumTHETA1,
                      const QVector<QStringList>& unread = {});

/// Adds that files behind a gap in the numbers of the data sets were not read, to the summary and
/// to the findings of model 0. Nothing if there are none.
void addGap(ImportCheckUp& found, const FileGap& gap);

/// A data set of each model, [model]; none where the model lacks it. A model has the first data
/// sets of those that any model has.
using DataSetTables = QVector<std::optional<Table>>;

/// The tables of a data set; none for a negative number.
DataSetTables tablesOf(const RawResults& rawResults, int dataSet);

/// The same check-up, data set by data set, so that not all of them need to be in memory. Keeps the
/// tables of one data set and the counts of the others.
class CheckUpRun
{
public:
    /// Checks as many models as there are names, which may be empty.
    CheckUpRun(const QVector<Heading>& headings, const QStringList& modelNames,
               int colNumOFVSetting, int colNumTHETA1Setting,
               const QVector<QStringList>& unread = {});

    /// Sets the data set before the next one, where it was not the last that was added. It is not
    /// counted.
    void follow(const DataSetTables& tables);

    /// Counts the next data set, of this number.
    void add(int dataSet, const DataSetTables& tables);

    /// Adds the counts of another run of the same models over the data sets that follow. False,
    /// with nothing added, if the number of models differs.
    bool append(const CheckUpCounts& later);

    const CheckUpCounts& counts() const { return counted; }

    /// The findings on all data sets from 0 on, which are numbered by their place.
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
