// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// The chapter on simulation studies: the doses by level, compared with the truth.

#include "analysis/settingtexts.h"
#include "report/manydatasets.h"

namespace {

constexpr int mostDoseTicks = 25;

void addDistribution(ReportDocument& document, const DoseSelection& selection)
{
    const DoseCounts found = *doseCounts(selection);
    const QVector<double>& doses = found.doses;
    ReportChart chart{"Minimum effective doses of the data sets by probability level. Areas and "
                      "numbers are counts of data sets.",
                      "Circles over levels and doses. Their areas are counts of data sets, which "
                      "the table below lists.",
                      "Probability level (%)",
                      "MED (" + doseName(selection.made.inputs.endPoints) + ')'};
    ReportTable table{"Data sets by dose and level", {"Dose"}, "r", {}};
    const int step = doses.size() / mostDoseTicks + 1;
    for (int dose = 0; dose <= doses.size(); ++dose) {
        const QString text = dose < doses.size() ? doseText(doses.at(dose)) : QString("none");
        table.rows.append({text});
        if (dose % step == 0 || dose == doses.size()) {
            chart.valueTicks.append({double(dose), text});
        }
    }
    for (int level = 0; level < selection.levels.size(); ++level) {
        const QVector<int>& counts = found.counts.at(level);
        table.headings.append(levelText(selection.levels.at(level)));
        table.alignment.append('r');
        for (int dose = 0; dose < counts.size(); ++dose) {
            table.rows[dose].append(QString::number(counts.at(dose)));
            if (counts.at(dose) > 0) {
                chart.spots.append({selection.levels.at(level), double(dose), counts.at(dose)});
            }
        }
    }
    chart.valueRange = {-0.7, doses.size() + 0.7};
    document.add(ReportHeading{"Doses by level", 2});
    document.add(chart);
    document.add(table);
}

/// Compares the counts of each level with the nominal one.
void addComparison(ReportDocument& document, const TruthComparison& truth)
{
    const int levelCount = qMin(truth.comparison.size(), truth.levels.size());
    ReportTable table{"Data sets by how their MED compares with the theoretical one",
                      {"Level (%)", "Over", "Equal", "Under", "Over or equal", "Nominal",
                       "By chance in 95 % of studies", "Compatible", "Mean absolute error"},
                      "rrrrrrrlr",
                      {}};
    ChartBars over{"Above the theoretical MED", {}, {}};
    ChartBars equal{"Equal to it", {}, {}};
    ChartBars under{"Below it, or none", {}, {}};
    ChartCurve lowest{"Fewest by chance", {}, {}};
    ChartCurve highest{"Most by chance", {}, {}};
    ChartCurve nominal{"Nominal count, at or above it", {}, {}, {}, ChartRole::Main};
    for (int level = 0; level < levelCount; ++level) {
        const LevelComparison& counts = truth.comparison.at(level);
        const double percent = truth.levels.at(level);
        for (ChartBars* bars : {&over, &equal, &under}) {
            bars->keys.append(percent);
        }
        over.values.append(counts.over);
        equal.values.append(counts.equal);
        under.values.append(counts.under);
        nominal.keys.append(percent);
        nominal.values.append(nominalCount(counts, percent));
        const std::optional<CountRange> range = nominalRange(counts, percent);
        const QString fault = range ? misfit(counts, *range) : QString();
        if (range) {
            lowest.keys.append(percent);
            lowest.values.append(range->lowest);
            highest.keys.append(percent);
            highest.values.append(range->highest);
        }
        table.rows.append(
            {typed(percent), QString::number(counts.over), QString::number(counts.equal),
             QString::number(counts.under), QString::number(counts.over + counts.equal),
             calculated(nominalCount(counts, percent)),
             range ? QString("%1 to %2").arg(range->lowest).arg(range->highest) : QString(),
             !range            ? QString()
             : fault.isEmpty() ? QString("yes")
                               : "no, " + fault,
             calculated(counts.meanAbsoluteError)});
    }
    ReportChart chart{"Estimated and theoretical MEDs by level. With an unbiased method the "
                      "nominal line runs within the part of equal MEDs. Chance explains a level "
                      "where this part meets the range from fewest to most, which holds 95 % of "
                      "studies.",
                      "Stacked bars of the data sets whose estimated MED is above, equal to and "
                      "below the theoretical one, with a line of nominal counts.",
                      "Probability level (%)", "Data sets"};
    chart.bars = {over, equal, under};
    chart.curves = {nominal, lowest, highest};
    document.add(chart);
    document.add(table);
    document.say(
        "The mean absolute error is the mean distance between estimated and theoretical MED, in "
        "dose units, over the data sets with a dose that differs from the theoretical one. A data "
        "set without a dose counts as under. With an unbiased method, counts lie within the range "
        "of chance in 95 % of studies (binomial distribution). A level is not compatible if the "
        "count over lies above the range, or the count over or equal lies below it.");
}

void addTruth(ReportDocument& document, const TruthComparison& truth)
{
    document.add(ReportHeading{"Comparison with the truth", 2});
    if (!truth.made.exists()) {
        document.say("The doses were not compared with theoretical ones.");
        return;
    }
    document.add(ReportList{unfinishedRemarks(truth) + missingMedNotes(truth), Emphasis::Warning});
    if (truth.isFailed || truth.comparison.isEmpty()) {
        document.say("There is no comparison.");
        return;
    }
    document.say(
        truth.made.trueRows.isEmpty()
            ? QString("The theoretical MEDs come from a file, each rounded up to the next "
                      "candidate dose.")
            : QString("The theoretical MED of a data set is the lowest candidate dose at and above "
                      "which its true model gives %1. The true models are %2.")
                  .arg(intervalText(truth.made.inputs), truth.made.trueModels.join(", ")));
    addComparison(document, truth);
}

} // namespace

void addSimulations(ReportDocument& document, const ReportContext& context)
{
    const StudyResults& all = context.inputs.results;
    if (!context.isSimulation() && !all.truth.made.exists()) {
        return;
    }
    document.add(ReportHeading{"Simulation study"});
    if (!all.selection.doses.isEmpty()) {
        addDistribution(document, all.selection);
    }
    addTruth(document, all.truth);
}
