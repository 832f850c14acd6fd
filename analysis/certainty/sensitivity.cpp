// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/certainty/sensitivity.h"

#include "analysis/dosesearch.h"

#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// The samples and fits that a choice leaves.
struct Remaining
{
    FitChoice choice;
    const Evaluation& evaluation;

    int firstSample() const { return choice == FitChoice::WithoutOriginalFit ? 1 : 0; }
    int sampleCount() const { return evaluation.sampleCount - firstSample(); }

    bool isRemoved(int sample, int model) const
    {
        const FitState state = evaluation.fits.at(model).at(sample);
        switch (choice) {
        case FitChoice::Successful:
            return state == FitState::Failed;
        case FitChoice::AwayFromBoundary:
            return state != FitState::Sound;
        default:
            return false;
        }
    }
};

/// The values of the weight expressions without the fits that are removed, [model][sample].
Table remainingValues(const Study& made, const Remaining& remaining)
{
    const Evaluation& evaluation = remaining.evaluation;
    // This gives a model no weight: NaN would spoil the sum of values that are not logarithms.
    const double none = made.selecting || made.logScale ? notANumber : 0.0;
    Table values = evaluation.weights.values;
    for (int model = 0; model < values.size(); ++model) {
        QVector<double>& ofModel = values[model];
        if (!made.individualOfv && !ofModel.isEmpty()) {
            ofModel.fill(ofModel.first(), evaluation.sampleCount);
        }
        const bool hasFits = model < evaluation.fits.size();
        const int samples = hasFits ? qMin(ofModel.size(), evaluation.sampleCount) : 0;
        for (int sample = 0; sample < samples; ++sample) {
            if (remaining.isRemoved(sample, model)) {
                ofModel[sample] = none;
            }
        }
    }
    return values;
}

/// The weights with which the remaining fits judge, [sample][model].
Grid remainingWeights(Study made, const Remaining& remaining)
{
    const Table values = remainingValues(made, remaining);
    const int sampleCount = remaining.evaluation.sampleCount;
    Evaluation changed = remaining.evaluation;
    if (made.selecting) {
        changed.weights.selected = selectedModels(values, sampleCount);
    } else {
        changed.weights.relative = relativeWeights(values, sampleCount, made.logScale);
    }
    made.individualOfv = true; // the values of the first sample are everywhere already
    return appliedWeights(made, changed);
}

/// A probability in the making, in percent per dose.
class Sum
{
public:
    Sum(const Study& study, const Remaining& remainingFits)
        : made(study)
        , remaining(remainingFits)
        , sums(study.doses.size(), 0.0)
    {
    }

    /// False if the endpoint is not known.
    bool addIfHit(int sample, int model, double weight)
    {
        const double* endpoints = remaining.evaluation.endpoints.at(model).of(sample);
        if (endpoints == nullptr) {
            return false;
        }
        const double step = weight / remaining.sampleCount() * 100;
        for (int dose = 0; dose < sums.size(); ++dose) {
            if (made.target.contains(endpoints[dose])) {
                sums[dose] += step;
            }
        }
        return true;
    }

    void add(double weight)
    {
        for (double& sum : sums) {
            sum += weight / remaining.sampleCount() * 100;
        }
    }

    ProbabilityOfFits result() const
    {
        return {sums, minimumEffectiveDoses(sums, made.levels, made.doses)};
    }

private:
    const Study& made;
    const Remaining& remaining;
    QVector<double> sums;
};

ProbabilityOfFits unknownResult(const Study& made)
{
    return {QVector<double>(made.doses.size(), notANumber),
            QVector<double>(made.levels.size(), notANumber)};
}

Sensitivity sensitivityTo(const Study& made, const Remaining& remaining)
{
    const Evaluation& evaluation = remaining.evaluation;
    const bool areAll =
        remaining.choice == FitChoice::All || remaining.choice == FitChoice::WithoutOriginalFit;
    const Grid before = appliedWeights(made, evaluation);
    const Grid after = areAll ? before : remainingWeights(made, remaining);
    Sum renormalised(made, remaining);
    Sum missed(made, remaining);
    Sum hit(made, remaining);
    Sensitivity found;
    found.fits = remaining.choice;
    found.samples = remaining.sampleCount();
    for (int sample = remaining.firstSample(); sample < evaluation.sampleCount; ++sample) {
        bool hasModel = false;
        for (int model = 0; model < evaluation.endpoints.size(); ++model) {
            const double old = before.row(sample)[model];
            const double renewed = after.row(sample)[model];
            if (renewed > 0) {
                hasModel = true;
                if (!renormalised.addIfHit(sample, model, renewed) && !areAll) {
                    found.unknown = "a model that would be selected instead was not evaluated; "
                                    "doses that use the cache evaluate all models";
                }
            }
            if (old > 0 && remaining.isRemoved(sample, model)) {
                ++found.removedFits;
                hit.add(old);
            } else if (old > 0) {
                missed.addIfHit(sample, model, old);
                hit.addIfHit(sample, model, old);
            }
        }
        found.samplesWithoutModel += int(!hasModel);
    }
    found.renormalised = found.unknown.isEmpty() ? renormalised.result() : unknownResult(made);
    found.ifMissed = missed.result();
    found.ifHit = hit.result();
    return found;
}

} // namespace

QString fitChoiceName(FitChoice choice)
{
    switch (choice) {
    case FitChoice::All:
        return "all fits";
    case FitChoice::Successful:
        return "successful fits";
    case FitChoice::AwayFromBoundary:
        return "successful fits away from a boundary";
    case FitChoice::WithoutOriginalFit:
        return "without the original fit";
    }
    return {};
}

QVector<Sensitivity> sensitivityToFits(const Study& made, const Evaluation& evaluation)
{
    QVector<FitChoice> choices{FitChoice::All};
    if (evaluation.tellsFailures) {
        choices.append(FitChoice::Successful);
    }
    if (evaluation.tellsBoundaries) {
        choices.append(FitChoice::AwayFromBoundary);
    }
    if (evaluation.startsWithOriginalFit && evaluation.sampleCount > 1) {
        choices.append(FitChoice::WithoutOriginalFit);
    }
    QVector<Sensitivity> found;
    for (const FitChoice choice : choices) {
        found.append(sensitivityTo(made, {choice, evaluation}));
    }
    return found;
}
