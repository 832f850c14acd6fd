// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CERTAINTY_EVALUATION_H
#define VELMORA_ANALYSIS_CERTAINTY_EVALUATION_H

#include "analysis/weights.h"

#include <optional>

// The part of a calculation that is kept, so that figures of its certainty need neither another
// evaluation nor another random number.

/// Numbers in rows of one length, in one piece: [row][column].
struct Grid
{
    int columns = 0;
    QVector<double> values;

    Grid() = default;
    Grid(int rowCount, int columnCount, double value = 0.0)
        : columns(columnCount)
        , values(rowCount * columnCount, value)
    {
    }

    const double* row(int index) const { return values.constData() + qint64(index) * columns; }
    double* row(int index) { return values.data() + qint64(index) * columns; }
};

/// How the fit of a model to a bootstrap sample ended, by the columns that are named
/// minimization_successful and estimate_near_boundary. A fit failed unless the first column holds a
/// number other than 0. Where a model lacks a column, nothing is known against its fits.
enum class FitState : char { Sound, NearBoundary, Failed };

/// The endpoints of a model in a data set, of those samples for which they were evaluated. They
/// share the memory of the table that they were evaluated to.
class KeptEndpoints
{
public:
    KeptEndpoints() = default;

    /// endpoints is [sample][dose]; empty for a sample that was not evaluated. Endpoints that are
    /// missing at the end of a sample become NaN.
    KeptEndpoints(const Table& endpoints, int doseCount);

    /// The endpoints of a sample, one per dose; nullptr if they were not evaluated.
    const double* of(int sample) const
    {
        return sample >= samples.size() || samples.at(sample).isEmpty()
                   ? nullptr
                   : samples.at(sample).constData();
    }

    qint64 bytes() const;

private:
    Table samples; ///< [sample][dose]
};

/// The endpoints by which a data set was judged, with the weights and the states of the fits.
struct Evaluation
{
    int sampleCount = 0;
    JudgingWeights weights;
    QVector<KeptEndpoints> endpoints;           ///< [model]
    QVector<QVector<FitState>> fits;            ///< [model][sample]
    bool tellsFailures = false;                 ///< whether a model has the column
    bool tellsBoundaries = false;               ///< the same
    bool startsWithOriginalFit = false;         ///< whether the first sample has the number 0
    QString missing = "nothing was calculated"; ///< why there is none; empty if there is one

    bool exists() const { return missing.isEmpty(); }
    qint64 bytes() const;
};

/// Keeps the endpoints of a data set, as far as they were evaluated: [model][sample][dose]. Without
/// endpoints, or where a cache does not have the same number of samples for each model or has more
/// samples than there are weights, the result is a reason instead of an evaluation.
Evaluation keepEvaluation(const Study& study, int dataSet, const JudgingWeights& weights,
                          const QVector<Table>& endpoints);

/// Endpoints of the model selected for each sample, [sample][dose], put in their places:
/// [model][sample][dose], empty elsewhere.
QVector<Table> spreadSelected(const Table& endpoints, const QVector<int>& selected, int modelCount);

/// The weight with which each model judged each sample, [sample][model]: its positive relative
/// weight, that of the first sample with one OFV per model, or 1 for the model selected. 0
/// everywhere else, so that a sample without weights judges nothing.
Grid appliedWeights(const Study& made, const Evaluation& evaluation);

/// The weight that each sample puts inside the target interval, [sample][dose]: the sum of the
/// weights, [sample][model], of the models whose endpoint lies in it. 0 to 1 unless weights are
/// negative, 0 and 1 with selection; its mean over the samples is the probability.
Grid hitWeights(const Study& made, const Evaluation& evaluation, const Grid& weights);

/// Monte Carlo error of the probability per dose, in percent points:
/// 100 sd(z) / sqrt(N) with z the weights that the N samples put inside the interval
/// (hitWeights) and N the divisor of sd, too; with selection that is 100 sqrt(p (1 - p) / N).
///
/// It shows how far the probability may be from that of infinitely many bootstrap samples. With
/// ETAs it includes the draws, but not the bias of few individuals; with one OFV per model it holds
/// given the weights of the first sample. 0 does not mean that the probability is certain: all
/// samples agree, except for the rounding of weights. NaN without samples. Koehler, Brown & Haneuse
/// (2009); Morris, White & Crowther (2019).
QVector<double> monteCarloErrors(const Grid& hits, int sampleCount);
QVector<double> monteCarloErrors(const Study& made, const Evaluation& evaluation);

#endif
