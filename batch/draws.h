// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_DRAWS_H
#define VELMORA_BATCH_DRAWS_H

#include "batch/inputs.h"
#include "batch/record.h"

#include <functional>

/// How many random numbers the parts of a run draw. From these counts a part knows where the
/// whole run would begin it.
struct Draws
{
    QVector<qint64> ofDataSets; ///< [dataSet]
    QVector<qint64> ofTruth;    ///< [dataSet] that is compared with a true model
};

/// True if the data sets of a study draw random numbers.
bool drawsNumbers(const Study& study);

/// The number of draws of a data set. Its tables must be loaded.
qint64 drawsOf(const RunInputs& inputs, int dataSet);

/// The number of draws of the true models, without reading a file.
QVector<qint64> drawsOfTruth(const RunInputs& inputs);

/// Counts the draws of all data sets before endDataSet and reads their files, one after another.
/// files receives what was read. goesOn receives how many data sets are done.
Draws countDraws(RunInputs& inputs, int endDataSet, QVector<ReportedFile>* files,
                 const std::function<void(int done)>& goesOn);

/// The random position before a data set, and before its true model. All draws up to it must be
/// known.
quint32 positionBefore(const RunInputs& inputs, const Draws& draws, int dataSet);
quint32 positionBeforeTruth(const RunInputs& inputs, const Draws& draws, int dataSet);

#endif
