// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/pairs.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// The greatest k as medianInterval defines it; 0 if there is none.
int outermostRank(int count, double error)
{
    double fewerHeads = 0.0;
    int rank = 0;
    while (2 * rank < count) {
        const double heads = rank;
        fewerHeads += std::exp(std::lgamma(count + 1.0) - std::lgamma(heads + 1.0)
                               - std::lgamma(count - heads + 1.0) - count * std::log(2.0));
        if (2 * fewerHeads > error) {
            break;
        }
        ++rank;
    }
    return rank;
}

} // namespace

MedianInterval medianInterval(std::vector<double> ratios, double error)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (ratios.empty()) {
        return {std::numeric_limits<double>::quiet_NaN(), -infinity, infinity};
    }
    std::sort(ratios.begin(), ratios.end());
    const std::size_t count = ratios.size();
    const double median = (ratios[(count - 1) / 2] + ratios[count / 2]) / 2;
    const auto rank = std::size_t(outermostRank(int(count), error));
    if (rank == 0) {
        return {median, -infinity, infinity};
    }
    return {median, ratios[rank - 1], ratios[count - rank]};
}

int pairsOfLook(int look)
{
    int pairs = 8;
    for (int earlier = 1; earlier < look; ++earlier) {
        pairs += pairs / 2;
    }
    return pairs;
}

double errorOfLook(int look)
{
    constexpr double together = 0.02;
    return together / (look * (look + 1.0));
}

Verdict verdictOf(const MedianInterval& interval, double bar, bool isBusy)
{
    constexpr double byPlace = 0.02;
    constexpr double byOthers = 0.07;
    if (interval.high <= bar) {
        return Verdict::Kept;
    }
    const double hidden = isBusy ? byOthers : byPlace;
    return interval.low > bar * (1 + hidden) ? Verdict::Missed : Verdict::Undecided;
}
