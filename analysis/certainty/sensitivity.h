// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CERTAINTY_SENSITIVITY_H
#define VELMORA_ANALYSIS_CERTAINTY_SENSITIVITY_H

#include "analysis/certainty/evaluation.h"

/// The fits from which a probability is calculated.
enum class FitChoice {
    All,
    Successful,        ///< without those that failed
    AwayFromBoundary,  ///< the successful ones that are not near a boundary
    WithoutOriginalFit ///< all, without the first sample
};

/// "all fits", "successful fits", "successful fits away from a boundary", "without the
/// original fit".
QString fitChoiceName(FitChoice choice);

/// Probabilities, per dose in percent, and MEDs, per level in dose units with NaN for none.
struct ProbabilityOfFits
{
    QVector<double> probability;
    QVector<double> meds;
};

/// The result that a choice of fits would give.
struct Sensitivity
{
    FitChoice fits = FitChoice::All;
    int samples = 0;
    int removedFits = 0;            ///< that had a weight
    int samplesWithoutModel = 0;    ///< that count as a miss
    QString unknown;                ///< why renormalised is NaN; empty if it is not
    ProbabilityOfFits renormalised; ///< the weights of the others take the place
    ProbabilityOfFits ifMissed;     ///< the weight that was removed counts as a miss
    ProbabilityOfFits ifHit;        ///< the weight that was removed counts as a hit
};

/// The result from all fits and from each choice of fits for which the data have columns.
///
/// A fit that is left out removes its model from that sample, and the weights of the others are
/// calculated again without it; with selection the best of the others judges. A sample with no
/// model left counts as a miss. With one OFV per model the weights stay those of the first sample,
/// without the models that are removed from a sample. NaN where the result needs a model whose
/// endpoint was not evaluated; this happens with selection, unless a cache holds all models. The
/// two bounds need no further endpoints.
QVector<Sensitivity> sensitivityToFits(const Study& made, const Evaluation& evaluation);

#endif
