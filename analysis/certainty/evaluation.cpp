// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/certainty/evaluation.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
/// A row of a table takes about as much memory besides its numbers as this many numbers.
constexpr int numbersPerRow = 6;
/// Percent points that the rounding of weights leaves where all samples agree.
constexpr double roundingError = 1e-10;

/// 0-based columns that show how fits ended, -1 for none.
struct FitColumns
{
    int number;
    int converged;
    int boundary;
};

FitColumns fitColumns(const QStringList& names)
{
    return {columnNamed(names, "model"), columnNamed(names, "minimization_successful"),
            columnNamed(names, "estimate_near_boundary")};
}

bool isOther(double value, double than)
{
    return value < than || value > than; // false for NaN
}

FitState fitState(const QVector<double>& row, const FitColumns& columns)
{
    if (columns.converged >= 0 && !isOther(row.value(columns.converged, notANumber), 0)) {
        return FitState::Failed;
    }
    return isOther(row.value(columns.boundary, notANumber), 0) ? FitState::NearBoundary
                                                               : FitState::Sound;
}

/// How the fits of a data set ended, as far as its headings name the columns.
void readFits(const Study& study, int dataSet, Evaluation& evaluation)
{
    for (int model = 0; model < evaluation.endpoints.size(); ++model) {
        const FitColumns columns = fitColumns(study.columnNamesOf(model));
        const Table rows = study.rawResults.value(model).value(dataSet);
        QVector<FitState> states(evaluation.sampleCount, FitState::Sound);
        if (columns.converged >= 0 || columns.boundary >= 0) {
            for (int sample = 0; sample < qMin(states.size(), rows.size()); ++sample) {
                states[sample] = fitState(rows.at(sample), columns);
            }
        }
        evaluation.fits.append(states);
        evaluation.tellsFailures |= columns.converged >= 0;
        evaluation.tellsBoundaries |= columns.boundary >= 0;
        evaluation.startsWithOriginalFit |=
            columns.number >= 0 && rows.value(0).value(columns.number, notANumber) == 0;
    }
}

/// Whether every sample has its weights and its place among the endpoints of all models.
bool fits(const JudgingWeights& weights, const QVector<Table>& endpoints, int sampleCount)
{
    return qMax(weights.relative.size(), weights.selected.size()) >= sampleCount
           && std::all_of(endpoints.begin(), endpoints.end(), [sampleCount](const Table& samples) {
                  return samples.size() == sampleCount;
              });
}

} // namespace

KeptEndpoints::KeptEndpoints(const Table& endpoints, int doseCount)
    : samples(endpoints)
{
    for (int sample = 0; sample < endpoints.size(); ++sample) {
        const int known = endpoints.at(sample).size();
        if (known > 0 && known < doseCount) {
            samples[sample] += QVector<double>(doseCount - known, notANumber);
        }
    }
}

qint64 KeptEndpoints::bytes() const
{
    qint64 numbers = qint64(samples.size()) * numbersPerRow;
    for (const QVector<double>& doses : samples) {
        numbers += doses.size();
    }
    return numbers * int(sizeof(double));
}

qint64 Evaluation::bytes() const
{
    qint64 numbers = qint64(weights.relative.size()) * (endpoints.size() + numbersPerRow);
    for (const QVector<double>& values : weights.values) {
        numbers += values.size();
    }
    qint64 sum = numbers * int(sizeof(double));
    for (const KeptEndpoints& kept : endpoints) {
        sum += kept.bytes() + sampleCount;
    }
    return sum;
}

Evaluation keepEvaluation(const Study& study, int dataSet, const JudgingWeights& weights,
                          const QVector<Table>& endpoints)
{
    Evaluation evaluation;
    evaluation.sampleCount = endpoints.value(0).size();
    if (evaluation.sampleCount == 0) {
        evaluation.missing = "no bootstrap sample was evaluated";
        return evaluation;
    }
    if (!fits(weights, endpoints, evaluation.sampleCount)) {
        evaluation.missing = "the cache and the data differ in the number of samples";
        return evaluation;
    }
    evaluation.missing.clear();
    evaluation.weights = weights;
    for (const Table& samples : endpoints) {
        evaluation.endpoints.append(KeptEndpoints(samples, study.doses.size()));
    }
    readFits(study, dataSet, evaluation);
    return evaluation;
}

QVector<Table> spreadSelected(const Table& endpoints, const QVector<int>& selected, int modelCount)
{
    QVector<Table> spread(modelCount, Table(endpoints.size()));
    for (int sample = 0; sample < qMin(endpoints.size(), selected.size()); ++sample) {
        const int model = selected.at(sample);
        if (model >= 0 && model < modelCount) {
            spread[model][sample] = endpoints.at(sample);
        }
    }
    return spread;
}

Grid appliedWeights(const Study& made, const Evaluation& evaluation)
{
    const int modelCount = evaluation.endpoints.size();
    Grid applied(evaluation.sampleCount, modelCount);
    double* row = applied.values.data();
    for (int sample = 0; sample < evaluation.sampleCount; ++sample, row += modelCount) {
        if (made.selecting) {
            const int model = evaluation.weights.selected.at(sample);
            if (model >= 0 && model < modelCount) {
                row[model] = 1.0;
            }
            continue;
        }
        const QVector<double>& weights =
            evaluation.weights.relative.at(made.individualOfv ? sample : 0);
        for (int model = 0; model < qMin(modelCount, weights.size()); ++model) {
            row[model] = weights.at(model) > 0 ? weights.at(model) : 0.0;
        }
    }
    return applied;
}

Grid hitWeights(const Study& made, const Evaluation& evaluation, const Grid& weights)
{
    const int doseCount = made.doses.size();
    const TargetInterval target = made.target;
    Grid hits(evaluation.sampleCount, doseCount);
    const int modelCount = evaluation.endpoints.size();
    const KeptEndpoints* const ofModels = evaluation.endpoints.constData();
    double* row = hits.values.data();
    for (int sample = 0; sample < evaluation.sampleCount; ++sample) {
        const double* ofSample = weights.row(sample);
        for (int model = 0; model < modelCount; ++model) {
            const double weight = ofSample[model];
            const double* endpoints = ofModels[model].of(sample);
            if (weight > 0 && endpoints != nullptr) {
                addHits(endpoints, doseCount, target, weight, row);
            }
        }
        row += doseCount;
    }
    return hits;
}

QVector<double> monteCarloErrors(const Grid& hits, int sampleCount)
{
    QVector<double> errors(hits.columns, 0.0);
    QVector<double> means(hits.columns, 0.0);
    double* mean = means.data();
    double* error = errors.data();
    for (int sample = 0; sample < sampleCount; ++sample) {
        const double* row = hits.row(sample);
        for (int dose = 0; dose < hits.columns; ++dose) {
            mean[dose] += row[dose];
        }
    }
    for (double& sum : means) {
        sum /= sampleCount;
    }
    for (int sample = 0; sample < sampleCount; ++sample) {
        const double* row = hits.row(sample);
        for (int dose = 0; dose < hits.columns; ++dose) {
            const double distance = row[dose] - mean[dose];
            error[dose] += distance * distance;
        }
    }
    for (double& squares : errors) {
        squares = 100.0 * std::sqrt(squares / sampleCount) / std::sqrt(double(sampleCount));
        squares = squares < roundingError ? 0.0 : squares; // NaN stays
    }
    return errors;
}

QVector<double> monteCarloErrors(const Study& made, const Evaluation& evaluation)
{
    return monteCarloErrors(hitWeights(made, evaluation, appliedWeights(made, evaluation)),
                            evaluation.sampleCount);
}
