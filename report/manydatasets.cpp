// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/manydatasets.h"

#include "analysis/certainty/othermethods.h"
#include "analysis/checkup/wording.h"
#include "analysis/settingtexts.h"
#include "model/percentile.h"
#include "report/firmness.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

namespace {

/// A dose of the counts; "none" after the last one.
QString countedDose(const DoseCounts& found, int dose)
{
    return dose < found.doses.size() ? doseText(found.doses.at(dose)) : QString("none");
}

/// The lowest dose that half of the data sets do not exceed; no dose ranks highest. None if
/// nothing was counted.
std::optional<int> medianDose(const QVector<int>& counts)
{
    const int all = std::accumulate(counts.begin(), counts.end(), 0);
    int reached = 0;
    for (int dose = 0; all > 0 && dose < counts.size(); ++dose) {
        reached += counts.at(dose);
        if (2 * reached >= all) {
            return dose;
        }
    }
    return std::nullopt;
}

QString medianText(const DoseCounts& found, int level)
{
    const std::optional<int> median = medianDose(found.counts.at(level));
    return median ? countedDose(found, *median) : QString("not known");
}

/// The candidate doses and the chosen ones, ascending.
QVector<double> dosesOf(const DoseSelection& selection)
{
    QVector<double> doses = selection.made.inputs.doses;
    for (const QVector<double>& dataSet : selection.doses) {
        doses += dataSet;
    }
    std::sort(doses.begin(), doses.end(), ascendingNanLast);
    doses.erase(std::unique(doses.begin(), doses.end()), doses.end());
    while (!doses.isEmpty() && std::isnan(doses.last())) {
        doses.removeLast();
    }
    return doses;
}

/// The index of a dose in a sorted list; its size for NaN.
int doseIndex(const QVector<double>& doses, double dose)
{
    return int(std::lower_bound(doses.begin(), doses.end(), dose, ascendingNanLast)
               - doses.begin());
}

/// The doses of the lowest and of the highest level, in sentences.
QString answer(const DoseSelection& selection)
{
    const DoseCounts found = *doseCounts(selection);
    QString text =
        QString("Doses were selected for %1.").arg(counted(selection.doses.size(), "data set"));
    QVector<int> levels{0};
    if (selection.levels.size() > 1) {
        levels.append(selection.levels.size() - 1);
    }
    for (const int level : levels) {
        const std::optional<int> median = medianDose(found.counts.value(level));
        if (!median) {
            continue;
        }
        const int without = found.counts.at(level).last();
        text +=
            QString(" At %1 ").arg(levelText(selection.levels.at(level)))
            + (*median < found.doses.size() ? "the median dose is " + countedDose(found, *median)
                                            : QString("most data sets have no dose"));
        if (without > 0 && *median < found.doses.size()) {
            text += QString(", and %1 no dose")
                        .arg(counted(without, "data set") + (without == 1 ? " has" : " have"));
        }
        text += '.';
    }
    return text;
}

/// The mean share of resamples in which the doses of a level hold, and the number of data sets
/// whose dose holds in less than firmShare; NaN where nothing is known.
QPair<double, int> firmnessOf(const DoseSelection& selection, int level)
{
    double sum = 0.0;
    int known = 0;
    int unstable = 0;
    for (const QVector<DoseStability>& ofLevels : selection.stability) {
        if (level < ofLevels.size()) {
            const DoseStability& found = ofLevels.at(level);
            sum += found.share(found.med);
            unstable += int(found.share(found.med) < firmShare);
            ++known;
        }
    }
    return {sum / known, unstable};
}

/// The MEDs of a data set by one of allMethods, [level]: the kept ones, or from its evaluation.
std::optional<QVector<double>> medsBy(int method, const DoseSelection& selection, const Study& made,
                                      int dataSet)
{
    auto kept = selection.otherMeds.value(dataSet).value(method);
    const Evaluation evaluation = selection.evaluations.value(dataSet);
    if (kept || !evaluation.exists()) {
        return kept;
    }
    const auto found = resultByMethod(made, evaluation, allMethods[method]);
    return found ? std::make_optional(found->meds) : std::nullopt;
}

/// The levels at which chance does not explain how doses and theoretical MEDs differ.
QStringList misfits(const TruthComparison& truth)
{
    QStringList levels;
    for (int level = 0; level < qMin(truth.comparison.size(), truth.levels.size()); ++level) {
        const LevelComparison& counts = truth.comparison.at(level);
        const auto range = nominalRange(counts, truth.levels.at(level));
        const QString fault = range ? misfit(counts, *range) : QString();
        if (!fault.isEmpty()) {
            levels.append(QString("%1 (%2)").arg(levelText(truth.levels.at(level)), fault));
        }
    }
    return levels.isEmpty() ? levels
                            : QStringList("Compared with the truth, chance does not explain these "
                                          "counts of data sets: "
                                          + enumerated(levels, mostLevelsTold) + '.');
}

/// The doses by one of allMethods, up to the first data set for which they are missing. None if
/// aborted.
std::optional<DoseSelection> selectionBy(int method, const Study& made, const DoseSelection& chosen,
                                         const GoesOn& goesOn)
{
    DoseSelection other;
    other.made = chosen.made;
    other.levels = chosen.levels;
    for (int dataSet = 0; dataSet < chosen.doses.size(); ++dataSet) {
        const auto meds = medsBy(method, chosen, made, dataSet);
        if (!meds) {
            break;
        }
        other.doses.append(*meds);
        if (goesOn && !goesOn()) {
            return std::nullopt;
        }
    }
    return other;
}

/// The number of data sets in which both have the same dose, or none.
int agreement(const DoseSelection& first, const DoseSelection& second, int level)
{
    int count = 0;
    for (int dataSet = 0; dataSet < first.doses.size(); ++dataSet) {
        const double a = first.doses.at(dataSet).value(level);
        const double b = second.doses.value(dataSet).value(level);
        count += int(!ascendingNanLast(a, b) && !ascendingNanLast(b, a));
    }
    return count;
}

} // namespace

std::optional<DoseCounts> doseCounts(const DoseSelection& selection, const GoesOn& goesOn)
{
    DoseCounts found{dosesOf(selection), {}};
    for (int level = 0; level < selection.levels.size(); ++level) {
        QVector<int> counts(found.doses.size() + 1, 0);
        for (const QVector<double>& dataSet : selection.doses) {
            if (level < dataSet.size()) {
                ++counts[doseIndex(found.doses, dataSet.at(level))];
            }
        }
        found.counts.append(counts);
        if (goesOn && !goesOn()) {
            return std::nullopt;
        }
    }
    return found;
}

void addManyAnswer(ReportDocument& document, const ReportContext& context)
{
    const DoseSelection& selection = context.inputs.results.selection;
    const Study& made = selection.made.inputs;
    document.add(ReportParagraph{answer(selection), Emphasis::Statement});
    document.say(
        QString("The dose of a level is the lowest at and above which the probability of %1 "
                "exceeds the level. Candidate doses: %2. Method: %3. %4")
            .arg(intervalText(made), typed(made.doses), methodText(made), extent(context)));
}

void addManyMeds(ReportDocument& document, const ReportContext& context)
{
    const DoseSelection& selection = context.inputs.results.selection;
    const DoseCounts found = *doseCounts(selection);
    ReportTable table{"Minimum effective dose (MED) by probability level, over the data sets",
                      {"Level (%)", "Median", "Most often", "in data sets", "No dose in",
                       "Held in, mean (% of resamples)", "Not certain in"},
                      "rrrrrrr",
                      {}};
    for (int level = 0; level < selection.levels.size(); ++level) {
        const QVector<int>& counts = found.counts.at(level);
        const auto highest = std::max_element(counts.begin(), counts.end() - 1);
        const int most = found.doses.isEmpty() ? 0 : *highest;
        QStringList mostOften;
        for (int dose = 0; most > 0 && dose < found.doses.size(); ++dose) {
            if (counts.at(dose) == most) {
                mostOften.append(countedDose(found, dose));
            }
        }
        const auto [held, unstable] = firmnessOf(selection, level);
        table.rows.append({typed(selection.levels.at(level)), medianText(found, level),
                           enumerated(mostOften), QString::number(most),
                           QString::number(counts.last()),
                           std::isnan(held) ? "not known" : calculated(held),
                           std::isnan(held) ? "not known" : QString::number(unstable)});
    }
    document.add(table);
    document.say("For the median, data sets without a dose count as above the highest dose; of two "
                 "middle doses, the lower one is the median.");
}

bool addManyMethods(ReportDocument& document, const ReportContext& context)
{
    const DoseSelection& selection = context.inputs.results.selection;
    ReportTable table{"Median MED over the data sets by each way to combine the models, with the "
                      "number of data sets whose MED is that of the chosen way",
                      {"Level (%)"},
                      "r",
                      {}};
    for (const double level : selection.levels) {
        table.rows.append({typed(level)});
    }
    Study made = selection.made.inputs;
    made.levels = selection.levels;
    QStringList missing;
    for (int method = 0; method < int(std::size(allMethods)); ++method) {
        const auto other = selectionBy(method, made, selection, context.goesOn);
        const auto found = other ? doseCounts(*other, context.goesOn) : std::nullopt;
        if (!found) {
            return false;
        }
        Study named = made;
        named.selecting = allMethods[method].selecting;
        named.individualOfv = allMethods[method].individualOfv;
        if (other->doses.size() < selection.doses.size()) {
            missing.append(methodText(named));
            continue;
        }
        const bool isChosen = methodText(named) == methodText(made);
        table.headings.append(methodText(named) + (isChosen ? " (chosen)" : ""));
        table.alignment.append('r');
        for (int level = 0; level < table.rows.size(); ++level) {
            table.rows[level].append(QString("%1 (%2)")
                                         .arg(medianText(*found, level))
                                         .arg(agreement(*other, selection, level)));
        }
    }
    document.add(ReportHeading{"By other methods", 2});
    if (table.headings.size() > 1) {
        document.add(table);
    }
    if (!missing.isEmpty()) {
        document.say("Not shown, as they need endpoints that were not evaluated or not kept: "
                     + missing.join("; ") + '.');
    }
    return true;
}

QStringList manyObjections(const ReportContext& context)
{
    const DoseSelection& selection = context.inputs.results.selection;
    QStringList levels;
    for (int level = 0; level < selection.levels.size(); ++level) {
        const auto [held, unstable] = firmnessOf(selection, level);
        if (unstable > 0) {
            levels.append(
                QString("%1 at %2").arg(unstable).arg(levelText(selection.levels.at(level))));
        }
    }
    const TruthComparison& truth = context.inputs.results.truth;
    const QStringList texts = misfits(truth) + missingMedNotes(truth);
    return levels.isEmpty()
               ? texts
               : QStringList(QString("Of %1, some have a dose that holds in less than %2 % of "
                                     "resamples: %3.")
                                 .arg(counted(selection.stability.size(), "data set"),
                                      typed(firmShare), enumerated(levels, mostLevelsTold)))
                     + texts;
}
