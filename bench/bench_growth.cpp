// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/weights.h"
#include "bench/comparison.h"
#include "bench/measurements.h"
#include "bench/report.h"
#include "bench/study.h"
#include "bench/studywindow.h"
#include "bench/subjects.h"

#include <QTableWidget>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

constexpr int fewSamples = 1000;
constexpr int manySamples = 10000;
constexpr int fewDataSets = 100;
constexpr int manyDataSets = 1000;

/// One data set, in the window and beside it. Each work tells whether it was done.
class SampleStudy
{
public:
    SampleStudy(int samples, Variability variability)
        : study(makeStudy({4, 1, samples}, variability))
        , definitions(definitionsOf(study))
        , window(study)
        , sampleCount(samples)
    {
    }

    bool weigh() { return weightsOf(definitions, study.rawResults).size() == sampleCount; }

    bool select()
    {
        return selectedModels(weightValues(inputsOf(definitions, study.rawResults), 0), sampleCount)
                   .size()
               == sampleCount;
    }

    bool recalculate()
    {
        press(ProbabilityPage, "_3_pb_calculatePoS");
        const QVector<double> curve = window.curve("_3_cp_PoS");
        return std::any_of(curve.begin(), curve.end(), [](double percent) { return percent > 0; });
    }

    bool chooseDoses()
    {
        press(DosePage, "_4_pb_startCalculation");
        return window.widget<QTableWidget>("_4_tw_doseChoice")->rowCount() == 1;
    }

private:
    void press(Page page, const char* button)
    {
        window.showPage(page);
        window.press(button);
    }

    ProjectItems study;
    QVector<endPoint> definitions;
    StudyWindow window;
    int sampleCount;
};

struct SampleWork
{
    const char* subject;
    bool (SampleStudy::*work)();
    Variability variability;
};

/// Curves with ETAs take so long that the window shows progress and the growing curve
/// meanwhile.
const SampleWork sampleWorks[] = {
    {"samples/weights", &SampleStudy::weigh, Variability::None},
    {"samples/selection", &SampleStudy::select, Variability::None},
    {"samples/probability", &SampleStudy::recalculate, Variability::None},
    {"samples/doseSelection", &SampleStudy::chooseDoses, Variability::None},
    {"samples/simulatedProbability", &SampleStudy::recalculate, Variability::TwoEtas},
};

void registerSamples(Variability variability, int repetitions)
{
    const auto few = std::make_shared<SampleStudy>(fewSamples, variability);
    const auto many = std::make_shared<SampleStudy>(manySamples, variability);
    for (const SampleWork& entry : sampleWorks) {
        if (entry.variability == variability) {
            const auto run = [work = entry.work](const std::shared_ptr<SampleStudy>& study) {
                return [work, study](benchmark::State& /*state*/) {
                    require((study.get()->*work)(), "a work on many samples was not done");
                };
            };
            Comparison comparison;
            comparison.subject = entry.subject;
            comparison.ways = {{"few", run(few)}, {"many", run(many)}};
            comparison.repetitions = repetitions;
            registerComparison(comparison);
        }
    }
}

double worstSampleGrowth(const Measurements& measurements)
{
    std::vector<double> ratios;
    for (const SampleWork& entry : sampleWorks) {
        const std::string subject = entry.subject;
        ratios.push_back(measurements.ratio(subject + "/many", subject + "/few"));
    }
    // NaN, from a failed benchmark, counts as the worst.
    return *std::max_element(ratios.begin(), ratios.end(), [](double first, double second) {
        return first < second || (std::isnan(second) && !std::isnan(first));
    });
}

void registerDataSets()
{
    const auto open = [](int dataSetCount) {
        auto window =
            std::make_shared<StudyWindow>(makeStudy({3, dataSetCount, 200}, Variability::None));
        window->showPage(DosePage);
        return window;
    };
    const auto choose = [](const std::shared_ptr<StudyWindow>& window) {
        return [window](benchmark::State& /*state*/) { window->press("_4_pb_startCalculation"); };
    };
    const auto few = open(fewDataSets);
    const auto many = open(manyDataSets);
    Comparison comparison;
    comparison.subject = "dataSets/doseSelection";
    comparison.ways = {{"few", choose(few)}, {"many", choose(many)}};
    comparison.agree = [few, many] {
        const auto chosenDoses = [](StudyWindow& window) {
            window.press("_4_pb_startCalculation");
            return window.widget<QTableWidget>("_4_tw_doseChoice")->rowCount();
        };
        return chosenDoses(*few) == fewDataSets && chosenDoses(*many) == manyDataSets;
    };
    comparison.repetitions = 10;
    registerComparison(comparison);
}

} // namespace

void registerGrowth(Report& report)
{
    registerSamples(Variability::None, 20);
    registerSamples(Variability::TwoEtas, 3);
    registerDataSets();
    report.addRow("linear_samples", 11, worstSampleGrowth);
    report.addRow("linear_datasets", 1.1, [](const Measurements& measurements) {
        return measurements.ratio("dataSets/doseSelection/many", "dataSets/doseSelection/few")
               * fewDataSets / manyDataSets;
    });
}
