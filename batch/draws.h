// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_DRAWS_H
#define VELMORA_BATCH_DRAWS_H

#include "batch/inputs.h"
#include "batch/record.h"

#include <functional>

/// Random numbers that the parts of a run draw. With them a part begins where it would in the
/// whole run.
struct Draws
{
    QVector<qint64> ofDataSets; ///< [dataSet]
    QVector<qint64> ofTruth;    ///< [dataSet] that is compared with a true model
};

/// Whether the data sets of a study draw any.
bool drawsNumbers(const Study& study);

/// The numbers of a data set, whose tables are loaded.
qint64 drawsOf(const RunInputs& inputs, int dataSet);

/// Those of the true models; nothing is read for them.
QVector<qint64> drawsOfTruth(const RunInputs& inputs);

/// Counts the numbers of all data sets up to one, whose files are read for it, one after another;
/// files gets those that were. goesOn is told how many data sets are done.
Draws countDraws(RunInputs& inputs, int endDataSet, QVector<ReportedFile>* files,
                 const std::function<void(int done)>& goesOn);

/// The position before a data set, and before its true model, all draws up to it being known.
quint32 positionBefore(const RunInputs& inputs, const Draws& draws, int dataSet);
quint32 positionBeforeTruth(const RunInputs& inputs, const Draws& draws, int dataSet);

#endif
