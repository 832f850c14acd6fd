// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/weights.h"

#include <cmath>

namespace {

bool hasSample(const QVector<double>& modelValues, int sample)
{
    return sample < modelValues.size();
}

/// The value that the logarithms of a sample are taken relative to, so that their
/// exponentials stay in range.
double referenceValue(const Table& values, int sample)
{
    for (const QVector<double>& modelValues : values) {
        if (hasSample(modelValues, sample) && !std::isnan(modelValues.at(sample))) {
            return modelValues.at(sample);
        }
    }
    return 0.0;
}

QVector<double> sampleWeights(const Table& values, int sample, bool logScale)
{
    const double reference = logScale ? referenceValue(values, sample) : 0.0;
    QVector<double> weights(values.size(), 0.0);
    double sum = 0.0;
    for (int model = 0; model < values.size(); ++model) {
        if (hasSample(values.at(model), sample)) {
            const double value = values.at(model).at(sample);
            if (!logScale) {
                weights[model] = value;
            } else if (!std::isnan(value)) {
                weights[model] = std::exp(value - reference);
            }
        }
        sum += weights.at(model);
    }
    for (double& weight : weights) {
        weight /= sum;
    }
    return weights;
}

/// Whether relative weights of a data set are to be had.
bool hasRelativeWeights(const Study& study, int dataSet)
{
    const int shown = study.shownModel;
    return shown >= 0 && shown < study.rawResults.size() && shown < study.rawResultsHeaders.size()
           && dataSet < study.rawResults.at(shown).size() && dataSet < study.dataSetCount();
}

int sampleCountOf(const Study& study, int dataSet)
{
    return study.rawResults.first().at(dataSet).size();
}

QVector<int> judging(QVector<int> selected, bool individualOfv)
{
    if (!selected.isEmpty() && !individualOfv) {
        selected.fill(selected.first());
    }
    return selected;
}

} // namespace

Table weightValues(const Study& study, int dataSet)
{
    const RawResults& rawResults = study.rawResults;
    QVector<endPoint> endPoints = study.endPoints; // compiled and bound here
    Table values(rawResults.size());
    if (rawResults.isEmpty() || dataSet >= rawResults.first().size()) {
        return values;
    }
    const int sampleCount = rawResults.first().at(dataSet).size();
    for (int model = 0; model < rawResults.size() && model < endPoints.size(); ++model) {
        endPoint& definition = endPoints[model];
        definition.weightParser.generate_tree();
        if (dataSet < rawResults.at(model).size()) {
            const Table& rows = rawResults.at(model).at(dataSet);
            const int rowCount = qMin(sampleCount, rows.size());
            values[model].reserve(rowCount);
            for (int sample = 0; sample < rowCount; ++sample) {
                values[model].append(definition.evaluateWeight(rows.at(sample)));
            }
        }
    }
    return values;
}

Table relativeWeights(const Table& values, int sampleCount, bool logScale)
{
    Table weights;
    weights.reserve(sampleCount);
    for (int sample = 0; sample < sampleCount; ++sample) {
        weights.append(sampleWeights(values, sample, logScale));
    }
    return weights;
}

QVector<int> selectedModels(const Table& values, int sampleCount)
{
    QVector<int> selected(sampleCount, -1);
    for (int sample = 0; sample < sampleCount; ++sample) {
        double best = 0.0;
        for (int model = 0; model < values.size(); ++model) {
            if (!hasSample(values.at(model), sample)) {
                continue;
            }
            const double value = values.at(model).at(sample);
            const bool isFirst = selected.at(sample) < 0;
            const bool isBetter = isFirst ? !std::isnan(value) : value > best;
            if (isBetter) {
                best = value;
                selected[sample] = model;
            }
        }
    }
    return selected;
}

Table relativeWeights(const Study& study, int dataSet)
{
    return hasRelativeWeights(study, dataSet) ? relativeWeights(
               weightValues(study, dataSet), sampleCountOf(study, dataSet), study.logScale)
                                              : Table();
}

QVector<int> selectedModels(const Study& study, int dataSet)
{
    return dataSet < study.dataSetCount()
               ? selectedModels(weightValues(study, dataSet), sampleCountOf(study, dataSet))
               : QVector<int>();
}

QVector<int> judgingModels(const Study& study, int dataSet)
{
    return judging(selectedModels(study, dataSet), study.individualOfv);
}

JudgingWeights judgingWeights(const Study& study, int dataSet)
{
    const bool exists =
        study.selecting ? dataSet < study.dataSetCount() : hasRelativeWeights(study, dataSet);
    if (!exists) {
        return {};
    }
    const Table values = weightValues(study, dataSet);
    const int sampleCount = sampleCountOf(study, dataSet);
    return study.selecting
               ? JudgingWeights{values,
                                {},
                                judging(selectedModels(values, sampleCount), study.individualOfv)}
               : JudgingWeights{values, relativeWeights(values, sampleCount, study.logScale), {}};
}

QString defaultWeightExpression(parser endPointParser)
{
    const int parameters = endPointParser.extract_variables().size() - FirstFreeSlot;
    return QString("(0-%1-ofv/2)").arg(qMax(0, parameters));
}
