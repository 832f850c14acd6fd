// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_FLATCURVE_H
#define VELMORA_BENCH_FLATCURVE_H

#include "bench/study.h"

#include <array>
#include <vector>

/// The curve without ETAs as one writes it who has these four models only: numbers in one piece,
/// and one loop that evaluates, weighs and adds up.
class FlatCurve
{
public:
    using Weights = std::array<double, 4>; ///< [model]

    /// Copies the THETAs of data set 0 into one piece.
    explicit FlatCurve(const RawResults& rawResults);

    /// Endpoints and probability by the same weights for all samples.
    void compute(const Weights& weights);

    /// The results of the last computation.
    Curve results() const;
    const double* probability() const { return percent.data(); }

private:
    void evaluate(const double* thetas, double* values) const;

    std::vector<double> thetaRows; ///< [sample][model][theta]
    std::vector<double> endpoints; ///< [sample][model][dose]
    std::vector<double> doseAxis;
    std::vector<double> percent; ///< [dose]
};

#endif
