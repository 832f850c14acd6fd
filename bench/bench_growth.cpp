// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/weights.h"
#include "bench/comparison.h"
#include "bench/study.h"
#include "bench/studywindow.h"
#include "bench/subjects.h"

#include <QTableWidget>

#include <algorithm>
#include <memory>

namespace {

constexpr int fewSamples = 1000;
constexpr int manySamples = 10000;
constexpr int fewDataSets = 100;
constexpr int manyDataSets = 1000;

/// One data set, in the window and without it. Each task returns true if it was done.
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

struct SampleTask
{
    bool (SampleStudy::*task)();
    Variability variability;
};

/// Curves with ETAs take so long that the window shows their progress and the growing curve.
const SampleTask sampleTasks[] = {
    {&SampleStudy::weigh, Variability::None},
    {&SampleStudy::select, Variability::None},
    {&SampleStudy::recalculate, Variability::None},
    {&SampleStudy::chooseDoses, Variability::None},
    {&SampleStudy::recalculate, Variability::TwoEtas},
};

/// Adds all tasks, in the window or by computation, with both sizes of study.
void addContests(Comparison& comparison, Variability variability)
{
    const auto few = std::make_shared<SampleStudy>(fewSamples, variability);
    const auto many = std::make_shared<SampleStudy>(manySamples, variability);
    for (const SampleTask& entry : sampleTasks) {
        if (entry.variability == variability) {
            const auto side = [task = entry.task](const std::shared_ptr<SampleStudy>& study) {
                return timed([task, study] {
                    require((study.get()->*task)(), "a task on many samples was not done");
                });
            };
            comparison.contests.push_back({side(many), side(few)});
        }
    }
}

Comparison compareSamples()
{
    Comparison comparison;
    comparison.name = "linear_samples";
    comparison.bar = 10.5;
    comparison.together = Comparison::Together::Worst;
    addContests(comparison, Variability::None);
    addContests(comparison, Variability::TwoEtas);
    comparison.longestSeconds = 60;
    return comparison;
}

Comparison compareDataSets()
{
    const auto open = [](int dataSetCount) {
        auto window =
            std::make_shared<StudyWindow>(makeStudy({3, dataSetCount, 200}, Variability::None));
        window->showPage(DosePage);
        return window;
    };
    const auto perDataSet = [](const std::shared_ptr<StudyWindow>& window, int dataSetCount) {
        const Side all = timed([window] { window->press("_4_pb_startCalculation"); });
        return [all, dataSetCount] { return all() / dataSetCount; };
    };
    const auto few = open(fewDataSets);
    const auto many = open(manyDataSets);
    Comparison comparison;
    comparison.name = "linear_datasets";
    comparison.bar = 1.1;
    comparison.contests = {{perDataSet(many, manyDataSets), perDataSet(few, fewDataSets)}};
    comparison.agree = [few, many] {
        const auto chosenDoses = [](StudyWindow& window) {
            window.press("_4_pb_startCalculation");
            return window.widget<QTableWidget>("_4_tw_doseChoice")->rowCount();
        };
        return chosenDoses(*few) == fewDataSets && chosenDoses(*many) == manyDataSets;
    };
    comparison.longestSeconds = 60;
    return comparison;
}

} // namespace

void registerGrowth(Report& report)
{
    registerComparison(report, compareSamples());
    registerComparison(report, compareDataSets());
}
