// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CERTAINTY_AVERAGEDENDPOINT_H
#define VELMORA_ANALYSIS_CERTAINTY_AVERAGEDENDPOINT_H

#include "analysis/certainty/evaluation.h"

/// The quantiles of an endpoint in the result.
constexpr double endpointQuantiles[] = {0.05, 0.25, 0.5, 0.75, 0.95};
constexpr int endpointQuantileCount = 5;

/// The distribution of an endpoint at one dose.
struct EndpointDistribution
{
    double mean = 0.0;
    QVector<double> quantiles; ///< in the order of endpointQuantiles
    double excluded = 0.0;     ///< weight of endpoints that are not finite or not known, percent
};

struct AveragedEndpoint
{
    QVector<EndpointDistribution> all;              ///< [dose]
    QVector<QVector<EndpointDistribution>> byModel; ///< [model][dose]
};

/// The endpoint over the bootstrap samples and models, each with its weight (appliedWeights). A
/// quantile is the lowest endpoint at which the weighted distribution function reaches it, over
/// positive weights and finite endpoints. The excluded share of all models refers to a weight of 1
/// for each sample, so that it includes samples without weights; that of one model refers to its
/// own weight. NaN where nothing is left. Buckland, Burnham & Augustin (1997).
AveragedEndpoint averagedEndpoint(const Study& made, const Evaluation& evaluation);

#endif
