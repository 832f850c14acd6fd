// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CALCULATION_H
#define VELMORA_ANALYSIS_CALCULATION_H

#include "analysis/certainty/evaluation.h"
#include "analysis/endpointcache.h"
#include "analysis/probability.h"

#include <optional>

/// The probability of achieving the target in a data set, in the making: sample by sample,
/// by the study's method and OFV choice. The definitions must be up to date.
class ProbabilityRun
{
public:
    ProbabilityRun(const Study& currentStudy, int dataSetNumber);

    int sampleCount() const { return run.sampleCount(); }
    bool evaluateNext(const GoesOn& goesOn) { return run.evaluateNext(goesOn); }

    /// The endpoints of the samples so far: [model][sample][dose], or with selection one entry of
    /// [sample][dose].
    const QVector<Table>& endpoints() const { return run.endpoints(); }

    /// Relative weights, [sample][model]; empty with selection.
    const Table& relativeWeights() const { return weights.relative; }

    /// What the samples so far were judged by.
    Evaluation evaluation() const;

private:
    Study study;
    int dataSet;
    JudgingWeights weights;
    EndpointRun run;
};

/// Probability in percent, per dose of the study, that the endpoint lies in the target interval,
/// over the samples of a data set (see probabilityByAveraging and probabilityBySelection). None if
/// aborted. Empty without doses; all 0 where the data set does not exist. The definitions must be
/// up to date. With a cache the endpoints are taken from it, or kept there. evaluation gets what
/// the data set was judged by.
std::optional<QVector<double>> probabilityCurve(const Study& study, int dataSet,
                                                EndpointCache* cache = nullptr,
                                                const GoesOn& goesOn = {},
                                                Evaluation* evaluation = nullptr);

/// How many uniform random numbers probabilityCurve draws for the data set; with ofAllModels,
/// with a cache that does not hold the data set yet, for which selection evaluates all models.
/// Evaluates weights where they decide and any model draws, but no endpoint.
qint64 randomNumberCount(const Study& study, int dataSet, bool ofAllModels = false);

#endif
