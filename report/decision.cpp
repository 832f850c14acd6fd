// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// The first chapter: which dose, how certain it is, and what speaks against it.

#include "analysis/checkup/wording.h"
#include "analysis/settingtexts.h"
#include "report/firmness.h"
#include "report/manydatasets.h"

#include <algorithm>
#include <cmath>

namespace {

// What the first page holds at most; the later chapters show everything.
constexpr int mostFindings = 10;
constexpr int longestFinding = 300;
const char* const outOfDate = "Out of date: ";
constexpr int mostLevels = 12; ///< rows of a table before what speaks against the dose

/// Remarks on the results as shown: stale, or not calculated to the end.
QStringList statusOf(const ReportInputs& inputs)
{
    const StudyResults& all = inputs.results;
    QStringList texts;
    const auto add = [&texts](const QStringList& remarks, bool isStale) {
        for (int remark = 0; remark < remarks.size(); ++remark) {
            texts.append((isStale && remark == 0 ? outOfDate : "") + remarks.at(remark));
        }
    };
    add(selectionRemarks(all, inputs.now), !selectionChanges(all, inputs.now).isEmpty());
    add(curveRemarks(all, inputs.now), !curveChanges(all, inputs.now).isEmpty());
    add(truthRemarks(all, inputs.now), !truthChanges(all, inputs.now).isEmpty()
                                           || !comparedDosesChanges(all, inputs.now).isEmpty());
    return texts;
}

/// What the chapter lacks, or where its doses come from.
QString originOf(const ReportContext& context)
{
    const StudyResults& all = context.inputs.results;
    if (!all.selection.doses.isEmpty()) {
        return all.selection.isFromProject ? "The doses come from the opened project. How certain "
                                             "they are is not known."
                                           : QString();
    }
    return context.results.isEmpty() ? "No dose was selected and no probability was calculated."
                                     : "No doses were selected. This chapter reads them off the "
                                       "probability curve.";
}

/// The dose of the highest level that any dose reaches, in a sentence.
QString answer(const ReportedResult& result)
{
    const QVector<double>& levels = result.made.levels;
    int highest = -1;
    for (int level = 0; level < qMin(levels.size(), result.meds.size()); ++level) {
        if (!std::isnan(result.meds.at(level))) {
            highest = level;
        }
    }
    if (levels.isEmpty()) {
        return "There is no probability level to select a dose for.";
    }
    if (highest < 0) {
        return QString(
                   "There is no candidate dose at and above which the probability of %1 exceeds "
                   "%2.")
            .arg(intervalText(result.made),
                 levels.size() == 1 ? levelText(levels.first()) : QString("any of the levels"));
    }
    QString text = QString("Dose %1 is the lowest at and above which the probability of %2 exceeds "
                           "%3")
                       .arg(doseText(result.meds.at(highest)), intervalText(result.made),
                            levelText(levels.at(highest)));
    if (levels.size() > 1) {
        text += highest + 1 < levels.size() ? "; there is no such dose for the higher levels"
                                            : ", the highest of the levels";
    }
    return text + ". " + firmness(result, highest);
}

/// The dose of a level and the share of resamples in which it holds, if that is known: "0.7 (62.8
/// %)".
QString withShare(const OtherMethod& method, int level)
{
    QString dose = doseText(method.result->meds.at(level));
    if (level >= method.stability.size()) {
        return dose;
    }
    const DoseStability& found = method.stability.at(level);
    return QString("%1 (%2 %)").arg(dose, calculated(found.share(found.med)));
}

/// The dose of each level, by the chosen method and by the others.
void addMeds(ReportDocument& document, const ReportedResult& result,
             const QVector<OtherMethod>& methods)
{
    ReportTable table{"Minimum effective dose (MED) by probability level",
                      {"Level (%)", "MED", "Held in (% of resamples)"},
                      "rrr",
                      {}};
    if (result.meds.isEmpty()) {
        return;
    }
    for (int level = 0; level < result.meds.size(); ++level) {
        const bool isKnown = level < result.stability.size();
        const DoseStability found = result.stability.value(level);
        table.rows.append({typed(result.made.levels.value(level)), doseText(result.meds.at(level)),
                           isKnown ? calculated(found.share(found.med)) : QString("not known")});
    }
    QStringList missing;
    for (const OtherMethod& method : methods) {
        if (!method.result) {
            missing.append(methodText(method.made));
        } else if (!method.isChosen) {
            table.headings.append("By " + methodText(method.made));
            table.alignment.append('r');
            for (int level = 0; level < table.rows.size(); ++level) {
                table.rows[level].append(withShare(method, level));
            }
        }
    }
    constexpr int ownColumns = 3;
    if (table.headings.size() > ownColumns) {
        table.caption += ". The columns of other methods give in brackets the share of resamples "
                         "in which the dose holds";
    }
    document.add(table);
    if (!missing.isEmpty()) {
        document.say("Not shown, as they need models whose endpoints were not evaluated: "
                     + missing.join("; ")
                     + ". To see more, select the doses with Use cash or by averaging.");
    }
}

/// The doses that resamples choose.
void addResampledDoses(ReportDocument& document, const ReportedResult& result)
{
    if (result.stability.isEmpty()) {
        return;
    }
    ReportTable table{"Doses that resamples of the bootstrap samples choose, by the chosen method",
                      {"Level (%)", "MED", "95 % of resamples choose", "Most often chosen"},
                      "rrrl",
                      {}};
    for (int level = 0; level < result.stability.size(); ++level) {
        const DoseStability& found = result.stability.at(level);
        const QString lower = resampledDose(result, found.lower);
        table.rows.append(
            {typed(result.made.levels.value(level)), doseText(result.meds.value(level)),
             found.lower == found.upper ? lower
                                        : lower + " to " + resampledDose(result, found.upper),
             chosenDoses(result, found)});
    }
    document.add(ReportHeading{"How certain the doses are", 2});
    document.add(table);
}

/// Whether a finding is about a bound that stands for another number, as the text before says.
bool isOfUsedBound(const QString& finding, const QStringList& said)
{
    const QString bound = finding.section(" bound of the target interval: ", 0, 0).toLower();
    return finding.contains(" stands for ")
           && !said.filter("The " + bound + " bound stands for ").isEmpty();
}

/// The findings that do not repeat what was said before.
QStringList unsaid(const QStringList& findings, const QStringList& said)
{
    QStringList others;
    for (const QString& finding : findings) {
        const auto repeats = [&finding](const QString& text) {
            return finding.contains(QString(text).remove(outOfDate));
        };
        // The text before shows how certain each dose is.
        const bool isOfFirmness = finding.contains("Doses that hold in less than ");
        if (!isOfFirmness && !isOfUsedBound(finding, said)
            && std::none_of(said.begin(), said.end(), repeats)) {
            others.append(finding);
        }
    }
    return others;
}

void addObjections(ReportDocument& document, const ReportContext& context,
                   const QStringList& objectionTexts)
{
    const QStringList said = statusOf(context.inputs);
    document.add(ReportHeading{"What speaks against it", 2});
    const StudyResults& all = context.inputs.results;
    QStringList texts = objectionTexts + all.selection.notes + all.curve.notes;
    texts.removeDuplicates();
    const QStringList findings = unsaid(context.inputs.source.findings, said + texts);
    for (const QString& finding : findings.mid(0, mostFindings)) {
        texts.append(documentText(finding, longestFinding));
    }
    if (findings.size() > mostFindings) {
        texts.append(QString("The chapter on data lists %1.")
                         .arg(counted(findings.size() - mostFindings, "further finding")));
    }
    if (texts.isEmpty()) {
        document.say("Nothing was found that speaks against it.");
    }
    document.add(ReportList{texts, Emphasis::Warning});
}

/// Adds a long table after what speaks against the dose, which then stays on the first page.
template <typename AddTable, typename AddObjections>
void addInOrder(int levels, AddTable addTable, AddObjections addObjectionTexts)
{
    if (levels <= mostLevels) {
        addTable();
    }
    addObjectionTexts();
    if (levels > mostLevels) {
        addTable();
    }
}

} // namespace

bool addDecision(ReportDocument& document, const ReportContext& context)
{
    document.add(ReportHeading{"The decision"});
    document.add(ReportList{statusOf(context.inputs), Emphasis::Warning});
    const QString origin = originOf(context);
    if (!origin.isEmpty()) {
        document.add(ReportParagraph{origin, Emphasis::Warning});
    }
    if (context.isSimulation()) {
        addManyAnswer(document, context);
        addInOrder(
            context.inputs.results.selection.levels.size(), [&] { addManyMeds(document, context); },
            [&] { addObjections(document, context, manyObjections(context)); });
        return addManyMethods(document, context);
    }
    if (context.results.isEmpty()) {
        addObjections(document, context, {});
        return true;
    }
    const ReportedResult& result = context.results.first();
    const auto methods = otherMethods(result, context.goesOn);
    if (!methods) {
        return false;
    }
    document.add(ReportParagraph{answer(result), Emphasis::Statement});
    const QString doses = result.made.doses.isEmpty() ? "none" : typed(result.made.doses);
    document.say(QString("Candidate doses: %1. Method: %2. %3")
                     .arg(doses, methodText(result.made), extent(context)));
    addInOrder(
        result.meds.size(), [&] { addMeds(document, result, *methods); },
        [&] { addObjections(document, context, objections(result, *methods)); });
    addResampledDoses(document, result);
    return true;
}
