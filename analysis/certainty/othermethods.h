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

/// The result of a method for a data set.
struct MethodResult
{
    Study made;                  ///< with the method
    Evaluation evaluation;       ///< with the weights that the method judges by
    QVector<double> probability; ///< in percent, per dose
    QVector<double> meds;        ///< per level in dose units; NaN for none
};

/// The result of a method from the endpoints by which a data set was judged. For the method that
/// was used it is the same to the last bit. None where the method needs a model whose endpoint was
/// not evaluated. Evaluates nothing and draws no random number.
std::optional<MethodResult> resultByMethod(const Study& made, const Evaluation& evaluation,
                                           const Method& method);

/// The MEDs of a data set by each method, [method of allMethods][level]; none where a method has no
/// result.
using MethodMeds = QVector<std::optional<QVector<double>>>;

/// The MEDs of all methods at the study's levels. All are none without an evaluation.
MethodMeds medsOfAllMethods(const Study& made, const Evaluation& evaluation);

#endif
