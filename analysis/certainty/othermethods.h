// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CERTAINTY_OTHERMETHODS_H
#define VELMORA_ANALYSIS_CERTAINTY_OTHERMETHODS_H

#include "analysis/certainty/evaluation.h"

/// A way in which the models come together, as Study has it.
struct Method
{
    bool selecting;
    bool individualOfv;
};

constexpr Method allMethods[] = {{false, true}, {true, true}, {false, false}, {true, false}};

/// What a method makes of a data set.
struct MethodResult
{
    Study made;                  ///< with the method
    Evaluation evaluation;       ///< with the weights that the method judges by
    QVector<double> probability; ///< in percent, per dose
    QVector<double> meds;        ///< per level in dose units; NaN for none
};

/// The result that a method gives from the endpoints that a data set was judged by; that of the
/// method it was judged by is the same to the last bit. None where a model would judge whose
/// endpoint was not evaluated: nothing is evaluated or drawn.
std::optional<MethodResult> resultByMethod(const Study& made, const Evaluation& evaluation,
                                           const Method& method);

/// The MEDs of a data set by methods, [method of allMethods][level]; none where a method gives no
/// result.
using MethodMeds = QVector<std::optional<QVector<double>>>;

/// Those at the study's levels. All none without an evaluation.
MethodMeds medsOfAllMethods(const Study& made, const Evaluation& evaluation);

#endif
