// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_PAIRS_H
#define VELMORA_BENCH_PAIRS_H

#include <vector>

// Statistics of ratios measured in pairs: the product and its baseline, one right after the
// other, so that a busy moment of the machine affects both.

/// The median of the ratios and an interval for the true median.
struct MedianInterval
{
    double median;
    double low;
    double high;
};

/// The interval misses the true median with a probability of at most error, half of it on each
/// side, for any distribution of the ratios. It reaches from the k-th least to the k-th greatest
/// of n ratios; k is the greatest number such that fewer than k of n fair coins show heads with a
/// probability of at most error/2. Infinite if there are too few ratios; the median of none is NaN.
/// David & Nagaraja, Order Statistics (2003), section 7.1.
MedianInterval medianInterval(std::vector<double> ratios, double error);

/// The number of pairs at the first, second, ... look at the interval: 8, and half as many again
/// each time.
int pairsOfLook(int look);

/// The error allowed for this look. Repeated looks that stop when the interval suits err more often
/// than a single one. So all looks share 2 %, and the first takes half of it:
/// 0.02 / (look (look + 1)). A row whose true median equals its bar is thus reported as missed with
/// a probability of at most 1 %.
double errorOfLook(int look);

enum class Verdict { Kept, Undecided, Missed };

/// Kept if the whole interval is at most the bar. Missed if all of it lies above the bar by more
/// than the error that pairs cannot reveal. That is 2 %, from the placement of code and data; on a
/// busy machine 7 %, as other programs' use of caches and memory slows the two sides unequally.
Verdict verdictOf(const MedianInterval& interval, double bar, bool isBusy = false);

#endif
