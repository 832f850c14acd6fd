// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_ANALYSIS_PROBABILITY_H
#define VELMORA_APP_ANALYSIS_PROBABILITY_H

#include "app/analysis/tables.h"
#include "model/endpoint.h"

/// The interval that the endpoint shall lie in: above lower, and at most upper.
struct TargetInterval
{
    double lower;
    double upper;
    /// False for NaN.
    bool contains(double endpoint) const { return lower < endpoint && endpoint <= upper; }
};

/// Probability in percent, per dose, that the endpoint lies in the target interval.
/// endpoints is [sample][dose], of the model selected for each sample; a sample without a
/// model is empty and counts as a miss. 0.0 for every dose without samples.
/// The sum is made of equal steps, sample by sample: its last bits decide whether a level
/// is exceeded.
QVector<double> probabilityBySelection(const Table& endpoints, int doseCount,
                                       const TargetInterval& target);

/// The same averaged over the models with their relative weights, [sample][model].
/// endpoints is [model][sample][dose], empty where the model's weight is not positive.
/// Without individualWeights the weights of the first sample serve for all.
QVector<double> probabilityByAveraging(const QVector<Table>& endpoints, const Table& weights,
                                       bool individualWeights, int doseCount,
                                       const TargetInterval& target);

/// Evaluates the endpoints of one data set, bootstrap sample by bootstrap sample.
/// The endpoint definitions must be up to date with doses and expressions.
class EndpointRun
{
public:
    EndpointRun(QVector<endPoint>& endPointDefinitions, const RawResults& results,
                int dataSetNumber);

    /// Appends the sample's endpoints of all models whose weight is positive, and an empty
    /// entry for the others.
    void evaluateWeighted(int sample, const QVector<double>& weights);

    /// Appends the sample's endpoints of the model, an empty entry for -1.
    void evaluateSelected(int sample, int model);

    /// [model][sample][dose]; with evaluateSelected one entry of [sample][dose].
    const QVector<Table>& endpoints() const { return values; }

private:
    QVector<double> endpointsOf(int model, int sample);

    QVector<endPoint>& endPoints;
    const RawResults& rawResults;
    int dataSet;
    QVector<Table> values;
};

/// Whether the endpoints of a data set, [model][sample][dose], hold those of the model
/// selected for every sample.
bool holdsSelected(const QVector<Table>& endpoints, const QVector<int>& selected);

/// The endpoints of the model selected for each sample, [sample][dose].
Table pickSelected(const QVector<Table>& endpoints, const QVector<int>& selected);

#endif
