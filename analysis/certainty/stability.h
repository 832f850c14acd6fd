// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CERTAINTY_STABILITY_H
#define VELMORA_ANALYSIS_CERTAINTY_STABILITY_H

#include "analysis/certainty/evaluation.h"
#include "analysis/probability.h"

class QDataStream;

/// How often the bootstrap samples are resampled, and the seed of the generator that does it (the
/// Mersenne Twister of Matsumoto & Nishimura 1998), which starts again for each data set, so that
/// the same samples are drawn whatever was calculated before.
constexpr int resampleCount = 2000;
constexpr quint32 resamplingSeed = 20170923;
/// The most doses, those of all levels taken together, whose resamples are counted: 16 MB.
constexpr qint64 mostCountedDoses = 1 << 22;

/// How certain the minimum effective dose of one probability level is. Doses are given by their
/// index; the number of doses means none, which ranks above the highest dose.
struct DoseStability
{
    int med = 0;         ///< as it was chosen
    QVector<int> chosen; ///< in how many resamples, [dose], with none at the end
    int mostOften = 0;   ///< the lowest of equals
    int lower = 0;       ///< 2.5 % quantile over the resamples
    int upper = 0;       ///< 97.5 % quantile
    QVector<int> ties;   ///< doses whose probability equals the level, within 1e-9
    /// The number of bootstrap samples after which every probability that decides, from that of the
    /// dose below the MED upwards, would be two Monte Carlo errors away from the level. This is N
    /// max((2 error / (P - level))^2). Infinite where one equals the level.
    double samplesNeeded = 0.0;
    int nearest = -1; ///< the dose that demands them; -1 without doses

    /// The share of resamples in which the dose is chosen, in percent.
    double share(int dose) const { return 100.0 * chosen.value(dose) / resampleCount; }
};

/// Bytes that do not hold a stability give a status other than Ok and no stability; the doses read
/// lie within those of chosen. writeList and readList of io/streamlists.h take several.
QDataStream& operator<<(QDataStream& stream, const DoseStability& stability);
QDataStream& operator>>(QDataStream& stream, DoseStability& stability);

/// Whether so many levels and doses are few enough to count the resamples that choose each dose.
constexpr bool canCountResamples(int levelCount, int doseCount)
{
    return qint64(levelCount) * (doseCount + 1) <= mostCountedDoses;
}

/// Resamples the bootstrap samples with replacement, the same ones for all doses and models, and
/// repeats the rule of the minimum effective dose for each level (percent): [level]. probability is
/// the result, per dose in percent; hits (hitWeights) are the values of which it is the mean. A
/// probability within 1e-9 of the level equals it and is not above it, so that counts decide with
/// selection. With one OFV per model the weights of the first sample stay. None if aborted; empty
/// without samples or levels, or with more of them than canCountResamples. Efron & Tibshirani
/// (1993).
std::optional<QVector<DoseStability>> doseStability(const Grid& hits, int sampleCount,
                                                    const QVector<double>& probability,
                                                    const QVector<double>& levels,
                                                    const GoesOn& goesOn = {});

#endif
