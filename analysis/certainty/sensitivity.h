// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CERTAINTY_SENSITIVITY_H
#define VELMORA_ANALYSIS_CERTAINTY_SENSITIVITY_H

#include "analysis/certainty/evaluation.h"

/// Which fits a probability is made from.
enum class FitChoice {
    All,
    Successful,        ///< without those that failed
    AwayFromBoundary,  ///< of these, without those near a boundary
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

/// The result from all fits and from each choice of them that the data tell.
///
/// A fit that is not chosen removes its model from that sample, and the weights of the others
/// are made anew without it; with selection the best of the others judges. A sample with no
/// model left counts as a miss. With one OFV per model the weights stay those of the first
/// sample, of which a model that is removed from a sample is left out there. NaN where a model
/// judges whose endpoint was not evaluated: so with selection, unless a cache has them all.
/// The two bounds need no other endpoints.
QVector<Sensitivity> sensitivityToFits(const Study& made, const Evaluation& evaluation);

#endif
