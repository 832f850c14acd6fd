// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_PAIRS_H
#define VELMORA_BENCH_PAIRS_H

#include <vector>

// What ratios say that were measured in pairs: the product and its limit, one right after the
// other, so that a busy moment of the machine meets both.

/// The median of the ratios, and an interval that has the true median.
struct MedianInterval
{
    double median;
    double low;
    double high;
};

/// The interval is wrong with a probability of at most error, half of it on each side, whatever
/// the distribution of the ratios is. It reaches from the k-th least to the k-th greatest of n
/// ratios, with the greatest k for which fewer than k of n fair coins show heads with a
/// probability of at most error/2. Infinite if there are too few; the median of none is NaN.
/// David & Nagaraja, Order Statistics (2003), section 7.1.
MedianInterval medianInterval(std::vector<double> ratios, double error);

/// How many pairs there are when the interval is looked at for the first, second, ... time:
/// 8, and half as many again each time.
int pairsOfLook(int look);

/// The error that this look may make. Who looks again and again, and stops when the interval
/// suits, errs more often than with one look. That is why the looks share 2 %, the first taking
/// half of it: 0.02 / (look (look + 1)). So a row whose true median is its bar is said to miss
/// it with a probability of at most 1 %.
double errorOfLook(int look);

enum class Verdict { Kept, Undecided, Missed };

/// Kept if the whole interval is at most the bar; missed if all of it lies above the bar by more
/// than what pairs cannot tell: 2 % that come from the places of code and data, or on a busy
/// machine 7 %, as programs that share caches and memory with a pair meet its sides unequally.
Verdict verdictOf(const MedianInterval& interval, double bar, bool isBusy = false);

#endif
