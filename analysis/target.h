// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_TARGET_H
#define VELMORA_ANALYSIS_TARGET_H

/// The target interval of the endpoint: above lower and at most upper.
struct TargetInterval
{
    double lower;
    double upper;
    /// False for NaN.
    bool contains(double endpoint) const { return lower < endpoint && endpoint <= upper; }
};

/// Adds a weight to the sum of every dose whose endpoint lies in the target interval.
inline void addHits(const double* endpoints, int doseCount, const TargetInterval& target,
                    double weight, double* sums)
{
    // Without branches, which nobody could predict: adds 0, which changes no sum, or the weight.
    // Compilers turn the pairs into vector operations.
    const double added[] = {0.0, weight};
    const int paired = doseCount / 2 * 2;
    for (int dose = 0; dose < paired; ++dose) {
        const int isHit =
            int(target.lower < endpoints[dose]) & int(endpoints[dose] <= target.upper);
        sums[dose] += isHit != 0 ? weight : 0.0;
    }
    for (int dose = paired; dose < doseCount; ++dose) {
        sums[dose] += added[int(target.contains(endpoints[dose]))];
    }
}

#endif
