// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CERTAINTY_CONTRIBUTIONS_H
#define VELMORA_ANALYSIS_CERTAINTY_CONTRIBUTIONS_H

#include "analysis/certainty/evaluation.h"

/// What each model contributes to a result.
struct Contributions
{
    Table parts;                 ///< of the probability in percent points, [dose][model]
    QVector<double> meanWeights; ///< over the samples that have weights, [model]; NaN without any
    QVector<double> bestShares;  ///< samples in which the model weighs most, percent, [model]
    int weighedSamples = 0;      ///< that have weights
    /// Effective number of models, 1 / sum(w^2) of a sample's weights, mean over the samples
    /// that have weights: the inverse of Simpson's index (1949; Hill 1973).
    double effectiveModels = 0.0;
    double dominatedShare = 0.0; ///< of these, with a weight above 0.9, percent
};

/// The contributions of the models; the parts add up to the probability. With selection the parts
/// are those of the selected models, and the weights those that averaging would use.
Contributions contributionsOf(const Study& made, const Evaluation& evaluation);

#endif
