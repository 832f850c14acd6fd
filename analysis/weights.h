// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_WEIGHTS_H
#define VELMORA_ANALYSIS_WEIGHTS_H

#include "analysis/study.h"

/// Values of every model's weight expression for a data set, [model][sample]. Samples are those of
/// model 0; a model that lacks rows has fewer entries. NaN where the expression is blank or cannot
/// be bound. Compiles the current expressions.
Table weightValues(const Study& study, int dataSet);

/// Relative model weights per bootstrap sample, [sample][model].
/// Each row sums to 1; a row whose weights add up to 0 is NaN. With logScale the values are
/// natural logarithms, and NaN excludes the model; without, NaN makes its row NaN. A model
/// without a value for the sample has weight 0. Buckland, Burnham & Augustin (1997).
Table relativeWeights(const Table& values, int sampleCount, bool logScale);

/// The model with the highest value per bootstrap sample, the first of equal ones; -1
/// where no model has a value. NaN is never selected. Burnham & Anderson (2002).
QVector<int> selectedModels(const Table& values, int sampleCount);

/// Relative weights of a data set by the study's choice of scale, [sample][model]. Empty if
/// model 0 or the model shown on page "0" lacks the data set; the weights do not depend on
/// the model shown otherwise.
Table relativeWeights(const Study& study, int dataSet);

/// Model selected for each bootstrap sample of a data set, -1 for none; empty if model 0
/// lacks the data set.
QVector<int> selectedModels(const Study& study, int dataSet);

/// The model by which each sample is judged: that selected for it or, with one OFV per
/// model, the one selected for the first sample.
QVector<int> judgingModels(const Study& study, int dataSet);

/// The weights by which a data set is judged, by the study's method and OFV choice.
struct JudgingWeights
{
    Table values;          ///< of the weight expressions, [model][sample]
    Table relative;        ///< [sample][model]; empty with selection
    QVector<int> selected; ///< model that judges each sample, -1 for none; empty with averaging
};

/// All empty where relativeWeights or, with selection, judgingModels are.
JudgingWeights judgingWeights(const Study& study, int dataSet);

/// The weight expression proposed for a model: on the log scale minus half of OFV + 2K, an
/// information criterion (Akaike 1974). K is the number of names in the endpoint expression
/// beyond time, concentration and dose.
QString defaultWeightExpression(parser endPointParser);

#endif
