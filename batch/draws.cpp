// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/draws.h"

#include "analysis/calculation.h"
#include "analysis/truth.h"
#include "batch/hashes.h"
#include "batch/interrupt.h"
#include "model/randomng.h"

#include <algorithm>
#include <numeric>

namespace {

/// The sum of the first counts.
quint64 sumOfFirst(const QVector<qint64>& counts, int end)
{
    const auto last = counts.begin() + qBound(0, end, counts.size());
    return quint64(std::accumulate(counts.begin(), last, qint64(0)));
}

} // namespace

bool drawsNumbers(const Study& study)
{
    return std::any_of(study.endPoints.begin(), study.endPoints.end(),
                       [](const endPoint& definition) {
                           return definition.highestEta > 0 && !definition.hasBlankOmega();
                       });
}

qint64 drawsOf(const RunInputs& inputs, int dataSet)
{
    return randomNumberCount(inputs.study, dataSet, inputs.usesCache);
}

QVector<qint64> drawsOfTruth(const RunInputs& inputs)
{
    QVector<qint64> counts;
    for (int dataSet = 0; dataSet < inputs.truth.rows.size(); ++dataSet) {
        counts.append(randomNumberCountOfMed(inputs.study, inputs.truth.rows.at(dataSet),
                                             inputs.truth.modelNumbers.value(dataSet, -1)));
    }
    return counts;
}

Draws countDraws(RunInputs& inputs, int endDataSet, QVector<ReportedFile>* files,
                 const std::function<void(int done)>& goesOn)
{
    Draws draws;
    draws.ofTruth = drawsOfTruth(inputs);
    const bool draw = drawsNumbers(inputs.study);
    if (!draw && files == nullptr) {
        draws.ofDataSets.fill(0, endDataSet);
        return draws;
    }
    for (int dataSet = 0; dataSet < endDataSet; ++dataSet) {
        FileHashes hashes(inputs.source, dataSet);
        if (draw) {
            inputs.source.load(inputs.study, dataSet);
        }
        draws.ofDataSets.append(draw ? drawsOf(inputs, dataSet) : 0);
        inputs.source.release(inputs.study, dataSet);
        const QVector<ReportedFile> hashed = hashes.result();
        if (files != nullptr) {
            *files += hashed;
        }
        endIfInterrupted();
        goesOn(dataSet + 1);
    }
    return draws;
}

quint32 positionBefore(const RunInputs& inputs, const Draws& draws, int dataSet)
{
    return randomPositionAfter(inputs.randomPosition, sumOfFirst(draws.ofDataSets, dataSet));
}

quint32 positionBeforeTruth(const RunInputs& inputs, const Draws& draws, int dataSet)
{
    const quint32 start = inputs.truthPosition != 0
                              ? inputs.truthPosition
                              : positionBefore(inputs, draws, draws.ofDataSets.size());
    return randomPositionAfter(start, sumOfFirst(draws.ofTruth, dataSet));
}
