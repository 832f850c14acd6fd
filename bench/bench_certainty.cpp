// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/calculation.h"
#include "analysis/certainty/stability.h"
#include "analysis/dosesearch.h"
#include "bench/comparison.h"
#include "bench/inputs.h"
#include "bench/study.h"
#include "bench/subjects.h"
#include "tests/support/randomnumbers.h"

#include <memory>
#include <random>

namespace {

const QVector<double> levels{10, 20, 30, 40, 50, 60, 70, 80, 90};
constexpr int resampledSamples = 1001;

/// A curve and a dose selection, with the values kept and figures computed for their certainty, or
/// without.
class Certainty
{
public:
    explicit Certainty(Variability variability)
    {
        const ProjectItems items = makeStudy({}, variability);
        study = inputsOf(definitionsOf(items), items.rawResults);
        study.rawResultsHeaders = items.rawResultsHeaders;
        for (QStringList& heading : study.rawResultsHeaders) {
            heading[4] = "minimization_successful"; // how the fits ended is kept, too
            heading[7] = "estimate_near_boundary";
        }
        study.headings = headingsOf(study.rawResultsHeaders);
        study.doses = doses;
        study.target = target;
        study.levels = levels;
        study.selecting = false;
    }

    QVector<double> results(bool withErrors)
    {
        seedRandomNumbers(1);
        QVector<double> found = curve(withErrors ? &ofCurve : nullptr);
        if (withErrors) {
            benchmark::DoNotOptimize(monteCarloErrors(study, ofCurve).constData());
        }
        // The other figures of the doses are computed later, when the table shows them.
        found += minimumEffectiveDoses(curve(withErrors ? &ofDoses : nullptr), levels, doses);
        return found;
    }

private:
    QVector<double> curve(Evaluation* evaluation) const
    {
        if (evaluation != nullptr) {
            *evaluation = {}; // the window forgets a result before it makes the next one
        }
        return probabilityCurve(study, 0, nullptr, {}, evaluation).value();
    }

    Study study;
    Evaluation ofCurve; ///< kept until the next results, as by the window
    Evaluation ofDoses; ///< the same
};

/// Weights inside the interval that rise with the dose and leave no clear dose.
Grid hitsOfSamples()
{
    InputNumbers numbers;
    Grid hits(resampledSamples, doses.size());
    for (int sample = 0; sample < resampledSamples; ++sample) {
        const double highest = numbers.between(0.5, 1);
        for (int dose = 0; dose < hits.columns; ++dose) {
            hits.row(sample)[dose] = highest * dose / (doses.size() - 1);
        }
    }
    return hits;
}

/// How often each dose is chosen, [level][dose], with none at the end.
using Chosen = QVector<QVector<int>>;

Chosen byVelmora(const Grid& hits)
{
    Chosen chosen;
    const QVector<double> probability(doses.size(), 0.0);
    const auto stability = doseStability(hits, resampledSamples, probability, levels);
    for (const DoseStability& level : *stability) {
        chosen.append(level.chosen);
    }
    return chosen;
}

Chosen byHand(const Grid& hits)
{
    Chosen chosen(levels.size(), QVector<int>(doses.size() + 1, 0));
    std::mt19937 generator(resamplingSeed);
    QVector<double> sums(doses.size());
    for (int resample = 0; resample < resampleCount; ++resample) {
        sums.fill(0.0);
        for (int drawn = 0; drawn < resampledSamples; ++drawn) {
            const double* row = hits.row(int((quint64(generator()) * resampledSamples) >> 32));
            for (int dose = 0; dose < sums.size(); ++dose) {
                sums[dose] += row[dose];
            }
        }
        for (int level = 0; level < levels.size(); ++level) {
            int dose = sums.size();
            while (dose > 0 && 100 * sums.at(dose - 1) > levels.at(level) * resampledSamples) {
                --dose;
            }
            ++chosen[level][dose];
        }
    }
    return chosen;
}

Comparison compareErrors(const char* name, double bar, Variability variability)
{
    const auto certainty = std::make_shared<Certainty>(variability);
    const auto side = [certainty](bool withErrors) {
        return timed([certainty, withErrors] {
            benchmark::DoNotOptimize(certainty->results(withErrors).constData());
        });
    };
    Comparison comparison;
    comparison.name = name;
    comparison.bar = bar;
    comparison.contests = {{side(true), side(false)}};
    comparison.agree = [certainty] {
        return sameBits(certainty->results(false), certainty->results(true));
    };
    return comparison;
}

Comparison compareResampling()
{
    const auto hits = std::make_shared<Grid>(hitsOfSamples());
    const auto side = [hits](Chosen (*choose)(const Grid&)) {
        return timed([hits, choose] { benchmark::DoNotOptimize(choose(*hits).constData()); });
    };
    Comparison comparison;
    comparison.name = "stability";
    comparison.bar = 1.2;
    comparison.contests = {{side(byVelmora), side(byHand)}};
    comparison.agree = [hits] { return byVelmora(*hits) == byHand(*hits); };
    return comparison;
}

} // namespace

void registerCertainty(Report& report)
{
    registerComparison(report, compareErrors("certainty", 1.05, Variability::TwoEtas));
    registerComparison(report, compareErrors("certainty_plain", 1.15, Variability::None));
    registerComparison(report, compareResampling());
}
