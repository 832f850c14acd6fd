// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/analysis/probability.h"

QVector<double> probabilityBySelection(const Table& endpoints, int doseCount,
                                       const TargetInterval& target)
{
    QVector<double> probability(doseCount, 0.0);
    double* sums = probability.data();
    const double step = 1.0 / endpoints.size() * 100;
    for (const QVector<double>& sample : endpoints) {
        const int doses = qMin(sample.size(), doseCount);
        for (int dose = 0; dose < doses; ++dose) {
            if (target.contains(sample.at(dose))) {
                sums[dose] += step;
            }
        }
    }
    return probability;
}

QVector<double> probabilityByAveraging(const QVector<Table>& endpoints, const Table& weights,
                                       bool individualWeights, int doseCount,
                                       const TargetInterval& target)
{
    QVector<double> probability(doseCount, 0.0);
    double* sums = probability.data();
    const int sampleCount = endpoints.isEmpty() ? 0 : endpoints.first().size();
    for (int sample = 0; sample < sampleCount; ++sample) {
        const int weightRow = individualWeights ? sample : 0;
        if (weightRow >= weights.size()) {
            break;
        }
        const QVector<double>& sampleWeights = weights.at(weightRow);
        const int modelCount = qMin(endpoints.size(), sampleWeights.size());
        for (int model = 0; model < modelCount; ++model) {
            const Table& samples = endpoints.at(model);
            const double weight = sampleWeights.at(model);
            if (!(weight > 0) || sample >= samples.size()) {
                continue;
            }
            const double step = weight / samples.size() * 100;
            const QVector<double>& values = samples.at(sample);
            const int doses = qMin(values.size(), doseCount);
            for (int dose = 0; dose < doses; ++dose) {
                if (target.contains(values.at(dose))) {
                    sums[dose] += step;
                }
            }
        }
    }
    return probability;
}

EndpointRun::EndpointRun(QVector<endPoint>& endPointDefinitions, const RawResults& results,
                         int dataSetNumber)
    : endPoints(endPointDefinitions)
    , rawResults(results)
    , dataSet(dataSetNumber)
{
}

void EndpointRun::evaluateWeighted(int sample, const QVector<double>& weights)
{
    values.resize(endPoints.size());
    for (int model = 0; model < endPoints.size(); ++model) {
        const bool hasWeight = model < weights.size() && weights.at(model) > 0;
        values[model].append(hasWeight ? endpointsOf(model, sample) : QVector<double>());
    }
}

void EndpointRun::evaluateSelected(int sample, int model)
{
    values.resize(1);
    values.first().append(endpointsOf(model, sample));
}

QVector<double> EndpointRun::endpointsOf(int model, int sample)
{
    const bool exists = model >= 0 && model < endPoints.size() && model < rawResults.size()
                        && dataSet < rawResults.at(model).size()
                        && sample < rawResults.at(model).at(dataSet).size();
    return exists ? endPoints[model].evaluateEndpoint(rawResults.at(model).at(dataSet).at(sample))
                  : QVector<double>();
}

bool holdsSelected(const QVector<Table>& endpoints, const QVector<int>& selected)
{
    for (int sample = 0; sample < selected.size(); ++sample) {
        const int model = selected.at(sample);
        if (model < 0) {
            continue;
        }
        if (model >= endpoints.size() || sample >= endpoints.at(model).size()
            || endpoints.at(model).at(sample).isEmpty()) {
            return false;
        }
    }
    return true;
}

Table pickSelected(const QVector<Table>& endpoints, const QVector<int>& selected)
{
    Table picked;
    picked.reserve(selected.size());
    for (int sample = 0; sample < selected.size(); ++sample) {
        const int model = selected.at(sample);
        const bool exists =
            model >= 0 && model < endpoints.size() && sample < endpoints.at(model).size();
        picked.append(exists ? endpoints.at(model).at(sample) : QVector<double>());
    }
    return picked;
}
