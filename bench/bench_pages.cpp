// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/comparison.h"
#include "bench/inputs.h"
#include "bench/painting.h"
#include "bench/studywindow.h"
#include "bench/subjects.h"
#include "tests/support/dialogdriver.h"
#include "tests/support/studyfiles.h"

#include <memory>

namespace {

/// Seconds that a user does not see as a delay: one frame of a screen that shows 60 a second.
constexpr double oneFrame = 0.016;

/// A window with the results of one model.
class Pages
{
public:
    Pages(int rowCount, int columnCount)
        : paints(window.window())
    {
        InputNumbers numbers;
        Table table = bootstrapTable(numbers, rowCount);
        for (QVector<double>& row : table) {
            row = row.mid(InputColumnCount - columnCount);
        }
        const StudyFiles files;
        DialogDriver dialogs;
        dialogs.answerFiles({files.write("raw_results_model1.csv", rawResultsText(table))});
        window.showPage(ImportPage);
        window.press("__pb_importFbF");
        require(window.widget<QTableWidget>("_1_tw_endPoints")->rowCount() == 1,
                "the results of the model are not there");
    }

    /// Seconds from the click on the page's button, on another page, until the page is painted.
    double turnTo(Page page, Page other)
    {
        secondsUntilSeen(paints, [this, other] { window.showPage(other); });
        return secondsUntilSeen(paints, [this, page] { window.showPage(page); });
    }

private:
    StudyWindow window;
    PaintCounter paints;
};

Contest turn(const std::shared_ptr<Pages>& pages, Page page, Page other)
{
    return {[pages, page, other] { return pages->turnTo(page, other); }, constant(oneFrame)};
}

} // namespace

void registerPages(Report& report)
{
    Comparison comparison;
    comparison.name = "page_switch";
    comparison.bar = 1;
    comparison.together = Comparison::Together::Worst;
    const auto small = std::make_shared<Pages>(1001, 5);
    const auto large = std::make_shared<Pages>(10000, InputColumnCount);
    for (const std::shared_ptr<Pages>& pages : {small, large}) {
        comparison.contests.push_back(turn(pages, WeightPage, ResultsPage));
        comparison.contests.push_back(turn(pages, ResultsPage, WeightPage));
    }
    registerComparison(report, comparison);
}
