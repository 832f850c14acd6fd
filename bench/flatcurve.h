// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_FLATCURVE_H
#define VELMORA_BENCH_FLATCURVE_H

#include "bench/study.h"

#include <array>
#include <vector>

/// The curve without ETAs, written by hand for these four models only: the rows are read in place,
/// the results are one array, and one loop evaluates, weighs and adds up.
class FlatCurve
{
public:
    using Weights = std::array<double, 4>; ///< [model]

    /// Takes data set 0.
    explicit FlatCurve(const RawResults& rawResults);

    /// Computes endpoints and probability, with the same weights for all samples.
    void compute(const Weights& weights);

    /// The results of the last call of compute.
    Curve results() const;
    const double* probability() const { return percent.data(); }

private:
    void evaluate(int sample, double* values) const;

    RawResults inputs;
    std::vector<double> endpoints; ///< [sample][model][dose]
    std::vector<double> doseAxis;
    std::vector<double> percent; ///< [dose]
};

#endif
