// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_TARGET_H
#define VELMORA_ANALYSIS_TARGET_H

/// The interval that the endpoint shall lie in: above lower, and at most upper.
struct TargetInterval
{
    double lower;
    double upper;
    /// False for NaN.
    bool contains(double endpoint) const { return lower < endpoint && endpoint <= upper; }
};

#endif
