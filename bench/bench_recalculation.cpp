// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/comparison.h"
#include "bench/inputs.h"
#include "bench/study.h"
#include "bench/studywindow.h"
#include "bench/subjects.h"
#include "tests/support/randomnumbers.h"

#include <algorithm>
#include <memory>

namespace {

/// The curve of a study, by a click in the window and by the computation alone.
class Recalculation
{
public:
    Recalculation()
        : study(makeStudy({}, Variability::TwoEtas))
        , definitions(definitionsOf(study))
        , weights(weightsOf(definitions, study.rawResults))
        , window(study)
    {
        window.showPage(ProbabilityPage);
    }

    QVector<double> compute()
    {
        seedRandomNumbers(1);
        return computeCurve(definitions, study.rawResults, weights, true).probability;
    }

    void click()
    {
        seedRandomNumbers(1);
        window.press("_3_pb_calculatePoS");
    }

    bool agree()
    {
        click();
        const QVector<double> computed = compute();
        return *std::max_element(computed.begin(), computed.end()) > 0
               && sameBits(window.curve("_3_cp_PoS"), computed);
    }

private:
    ProjectItems study;
    QVector<endPoint> definitions;
    Table weights;
    StudyWindow window;
};

} // namespace

void registerRecalculation(Report& report)
{
    const auto recalculation = std::make_shared<Recalculation>();
    Comparison comparison;
    comparison.name = "recalculate";
    comparison.bar = 1.3;
    comparison.contests = {
        {timed([recalculation] { recalculation->click(); }), timed([recalculation] {
             benchmark::DoNotOptimize(recalculation->compute().constData());
         })}};
    comparison.agree = [recalculation] { return recalculation->agree(); };
    registerComparison(report, comparison);
}
