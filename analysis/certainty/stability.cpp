// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/certainty/stability.h"

#include "analysis/dosesearch.h"
#include "io/streamlists.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr double tieTolerance = 1e-9; ///< of probabilities in percent
/// Numbers that are added up between two questions whether to go on.
constexpr qint64 numbersAtATime = 1 << 22;

/// Draws bootstrap samples: how often each of so many is taken.
class Resampler
{
public:
    explicit Resampler(int sampleCount)
        : counts(sampleCount)
    {
    }

    const QVector<int>& next()
    {
        counts.fill(0);
        int* taken = counts.data();
        const auto sampleCount = quint64(counts.size());
        for (quint64 drawn = 0; drawn < sampleCount; ++drawn) {
            // The upper bits of a 32-bit number, scaled to the samples.
            ++taken[(quint64(generator()) * sampleCount) >> 32];
        }
        return counts;
    }

private:
    std::mt19937 generator{resamplingSeed};
    QVector<int> counts;
};

/// The lowest dose from which on, up to the highest, the sums are above so many.
int lowestDoseAbove(const QVector<double>& sums, double limit)
{
    int dose = sums.size();
    while (dose > 0 && sums.at(dose - 1) > limit) {
        --dose;
    }
    return dose;
}

/// The lowest dose that so many of the resamples do not exceed.
int quantile(const QVector<int>& chosen, double share)
{
    int count = 0;
    for (int dose = 0; dose < chosen.size(); ++dose) {
        count += chosen.at(dose);
        if (count >= share * resampleCount) {
            return dose;
        }
    }
    return chosen.size() - 1;
}

/// The part that does not need the resamples.
DoseStability unsampled(const QVector<double>& probability, const QVector<double>& errors,
                        double level, int sampleCount)
{
    DoseStability found;
    const int doseCount = probability.size();
    found.med = minimumEffectiveDoseIndex(probability, level);
    found.chosen.fill(0, doseCount + 1);
    for (int dose = 0; dose < doseCount; ++dose) {
        const double distance = std::fabs(probability.at(dose) - level);
        const bool isTie = distance <= tieTolerance;
        if (isTie) {
            found.ties.append(dose);
        }
        if (dose < found.med - 1) {
            continue;
        }
        const double errorsAway = 2 * errors.at(dose) / distance;
        const double needed =
            isTie ? std::numeric_limits<double>::infinity() : sampleCount * errorsAway * errorsAway;
        if (found.nearest < 0 || needed > found.samplesNeeded) {
            found.samplesNeeded = needed;
            found.nearest = dose;
        }
    }
    return found;
}

void summarise(DoseStability& found)
{
    for (int dose = 0; dose < found.chosen.size(); ++dose) {
        if (found.chosen.at(dose) > found.chosen.at(found.mostOften)) {
            found.mostOften = dose;
        }
    }
    found.lower = quantile(found.chosen, 0.025);
    found.upper = quantile(found.chosen, 0.975);
}

template <typename Stability, typename Action>
void visitNumbers(Stability& stability, const Action& action)
{
    action(stability.med);
    action(stability.mostOften);
    action(stability.lower);
    action(stability.upper);
    action(stability.samplesNeeded);
    action(stability.nearest);
}

/// Whether all doses are among those that were chosen from, and counts those of resamples.
bool isSound(const DoseStability& stability)
{
    const int none = qMax(0, stability.chosen.size() - 1);
    const auto areWithin = [](const QVector<int>& numbers, int highest) {
        return std::all_of(numbers.begin(), numbers.end(),
                           [highest](int number) { return 0 <= number && number <= highest; });
    };
    return areWithin({stability.med, stability.mostOften, stability.lower, stability.upper}, none)
           && areWithin(stability.chosen, resampleCount) && areWithin(stability.ties, none - 1)
           && -1 <= stability.nearest && stability.nearest < none;
}

} // namespace

QDataStream& operator<<(QDataStream& stream, const DoseStability& stability)
{
    visitNumbers(stability, [&stream](const auto& number) { stream << number; });
    writeList(stream, stability.chosen);
    writeList(stream, stability.ties);
    return stream;
}

QDataStream& operator>>(QDataStream& stream, DoseStability& stability)
{
    visitNumbers(stability, [&stream](auto& number) { stream >> number; });
    readList(stream, stability.chosen);
    readList(stream, stability.ties);
    if (stream.status() == QDataStream::Ok && !isSound(stability)) {
        stream.setStatus(QDataStream::ReadCorruptData);
    }
    if (stream.status() != QDataStream::Ok) {
        stability = {};
    }
    return stream;
}

std::optional<QVector<DoseStability>> doseStability(const Grid& hits, int sampleCount,
                                                    const QVector<double>& probability,
                                                    const QVector<double>& levels,
                                                    const GoesOn& goesOn)
{
    QVector<DoseStability> found;
    const int doseCount = probability.size();
    if (sampleCount == 0 || levels.isEmpty() || doseCount != hits.columns
        || !canCountResamples(levels.size(), doseCount)) {
        return found;
    }
    const QVector<double> errors = monteCarloErrors(hits, sampleCount);
    for (const double level : levels) {
        found.append(unsampled(probability, errors, level, sampleCount));
    }
    Resampler resampler(sampleCount);
    QVector<double> sums(doseCount);
    qint64 numbers = 0;
    for (int resample = 0; resample < resampleCount; ++resample) {
        const QVector<int>& taken = resampler.next();
        sums.fill(0.0);
        double* sum = sums.data();
        for (int sample = 0; sample < sampleCount; ++sample) {
            const double times = taken.at(sample);
            const double* row = hits.row(sample);
            for (int dose = 0; dose < doseCount; ++dose) {
                sum[dose] += times * row[dose];
            }
        }
        for (double& value : sums) {
            value *= 100;
        }
        for (int level = 0; level < levels.size(); ++level) {
            const double limit = (levels.at(level) + tieTolerance) * sampleCount;
            ++found[level].chosen[lowestDoseAbove(sums, limit)];
        }
        numbers += qint64(sampleCount) * (doseCount + 1);
        if (goesOn && numbers > numbersAtATime) {
            numbers = 0;
            if (!goesOn()) {
                return std::nullopt;
            }
        }
    }
    for (DoseStability& level : found) {
        summarise(level);
    }
    return found;
}
