// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Sentences about certainty: tooltips, a finding and sections of the summary.

#include "analysis/certainty/certaintytables.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double firm = 90.0; ///< percent of resamples in which a dose should hold
constexpr int mostTold = 4;   ///< doses with their shares
constexpr double manyErrors = 100;

QString number(double value)
{
    return QString::number(value, 'g', 6);
}

QString percent(double value)
{
    return QString::number(value, 'f', 0) + " %";
}

QString doseText(const QVector<double>& doses, int index)
{
    return index < doses.size() ? number(doses.at(index)) : QString("none");
}

QString levelText(const DoseSelection& selection, int level)
{
    return number(selection.made.inputs.levels.value(level)) + " %";
}

/// "0.7 in 65 %, 0.6 in 35 %", the most frequent first.
QString sharesText(const DoseStability& found, const QVector<double>& doses)
{
    QVector<int> order;
    for (int dose = 0; dose < found.chosen.size(); ++dose) {
        if (found.chosen.at(dose) > 0) {
            order.append(dose);
        }
    }
    std::stable_sort(order.begin(), order.end(),
                     [&found](int a, int b) { return found.chosen.at(a) > found.chosen.at(b); });
    QStringList parts;
    double others = 100.0;
    for (const int dose : order.mid(0, mostTold)) {
        const double share = found.share(dose);
        others -= share;
        parts.append(doseText(doses, dose) + " in "
                     + (share < 0.5 ? QString("less than 1 %") : percent(share)));
    }
    if (order.size() > mostTold) {
        parts.append("others in " + percent(others));
    }
    return parts.join(", ");
}

/// The probability that decides: "0.6 misses the level by 0.4 errors".
QString nearestText(const JudgedResult& result, const DoseStability& found, double level)
{
    const QString dose = doseText(result.made.doses, found.nearest);
    if (found.ties.contains(found.nearest)) {
        return "the probability at " + dose + " equals the level but has to exceed it";
    }
    const double error = monteCarloErrors(result.made, result.evaluation).value(found.nearest, 0.0);
    if (!(error > 0)) {
        return "all samples agree";
    }
    const double distance = result.probability.value(found.nearest) - level;
    const double errors = std::fabs(distance) / error;
    const QString size = errors < 0.1          ? QString("less than 0.1")
                         : errors > manyErrors ? QString("more than %1").arg(manyErrors)
                                               : QString::number(errors, 'f', 1);
    return dose + (distance < 0 ? " misses" : " exceeds") + " the level by " + size + " errors";
}

QString samplesText(const DoseStability& found, int sampleCount)
{
    const double needed = found.samplesNeeded;
    if (!std::isfinite(needed) || needed <= sampleCount) {
        return {};
    }
    return QString("\nAbout %1 bootstrap samples instead of %2 would put it two errors from the "
                   "level.")
        .arg(samplesToPlan(needed))
        .arg(sampleCount);
}

} // namespace

QString samplesToPlan(double needed)
{
    const double unit = std::pow(10.0, qMax(0.0, std::floor(std::log10(needed)) - 1));
    return QString::number(std::ceil(needed / unit) * unit, 'f', 0);
}

QString errorText(const ProbabilityCurve& curve, double dose)
{
    if (curve.errors.isEmpty()) {
        return "\nNo Monte Carlo error: " + missingEvaluation(curve) + '.';
    }
    const int index = curve.doses.indexOf(dose);
    return index < 0 || index >= curve.errors.size()
               ? QString()
               : ", Monte Carlo error " + QString::number(curve.errors.at(index), 'g', 2);
}

QString stabilityText(const DoseSelection& selection, int dataSet, int level)
{
    const QString missing = missingCertainty(selection, dataSet);
    if (!missing.isEmpty()) {
        return "The certainty of the dose is not known: " + missing + '.';
    }
    const JudgedResult result = judgedResult(selection, dataSet);
    if (level < 0 || level >= result.stability.size()) {
        return {};
    }
    const DoseStability& found = result.stability.at(level);
    return levelText(selection, level) + ": " + sharesText(found, result.made.doses)
           + " of resamples; " + nearestText(result, found, result.made.levels.at(level))
           + samplesText(found, result.evaluation.sampleCount);
}

QString stabilityText(const DoseSelection& selection, int level)
{
    const int dataSetCount = selection.dataSetCount;
    if (dataSetCount == 1) {
        return stabilityText(selection, 0, level);
    }
    double sum = 0.0;
    int known = 0;
    int shaky = 0;
    int worst = -1;
    double least = std::numeric_limits<double>::infinity();
    for (int dataSet = 0; dataSet < selection.stability.size(); ++dataSet) {
        const QVector<DoseStability>& ofLevels = selection.stability.at(dataSet);
        if (level < 0 || level >= ofLevels.size()) {
            continue;
        }
        const double share = ofLevels.at(level).share(ofLevels.at(level).med);
        ++known;
        sum += share;
        shaky += int(share < firm);
        if (share < least) {
            least = share;
            worst = dataSet;
        }
    }
    if (known == 0) {
        return stabilityText(selection, 0, level);
    }
    const QString some = known < dataSetCount ? QString("%1 of %2").arg(known).arg(dataSetCount)
                                              : QString::number(known);
    return QString("%1: the dose holds in %2 of resamples, the mean over %3 data sets; the lowest "
                   "share is %5, in data set %4; below %6 in %7 of them")
        .arg(levelText(selection, level), percent(sum / known), some)
        .arg(worst)
        .arg(percent(least), percent(firm))
        .arg(shaky);
}

QStringList unstableDoses(const DoseSelection& selection)
{
    const QVector<DoseStability> stability = selection.stability.value(0);
    if (selection.dataSetCount != 1) {
        return {};
    }
    QStringList doses;
    for (int level = 0; level < stability.size(); ++level) {
        const DoseStability& found = stability.at(level);
        if (found.share(found.med) < firm) {
            doses.append(QString("%1 at level %2 (%3)")
                             .arg(doseText(selection.made.inputs.doses, found.med),
                                  levelText(selection, level),
                                  number(found.share(found.med)) + " %"));
        }
    }
    return doses.isEmpty()
               ? doses
               : QStringList(
                   QString("Doses that hold in less than %1 of resamples: ").arg(percent(firm))
                   + doses.join(", "));
}

namespace {

QString lines(const TextRows& rows)
{
    return tabSeparated(rows) + '\n';
}

QString dataSetText(const Evaluation& evaluation, int dataSet)
{
    return QString("data set %1, %2 samples").arg(dataSet).arg(evaluation.sampleCount);
}

} // namespace

QString certaintySummary(const ProbabilityCurve& curve, const QVector<double>& levels)
{
    if (!curve.made.exists()) {
        return {};
    }
    if (!curve.evaluation.exists()) {
        return "No figures of certainty: " + missingEvaluation(curve) + ".\n";
    }
    constexpr int digits = 6;
    const JudgedResult result = judgedResult(curve, levels);
    TextRows errors{{"Dose", "Monte Carlo error"}};
    for (int dose = 0; dose < curve.errors.size(); ++dose) {
        errors.append({number(curve.doses.value(dose)), number(curve.errors.at(dose))});
    }
    QString text = "\nMonte Carlo errors of the probability, "
                   + dataSetText(curve.evaluation, result.dataSet) + '\n' + lines(errors);
    const std::pair<CertaintyTable, const char*> sections[]{
        {CertaintyTable::Contributions, "Contributions of the models"},
        {CertaintyTable::Endpoint, "Averaged endpoint"},
        {CertaintyTable::Sensitivity, "Sensitivity to failed fits"}};
    for (const auto& [table, heading] : sections) {
        text += QString("\n%1\n").arg(heading)
                + lines(TextRows{certaintyHeadings(table, result.made.endPoints)}
                        + certaintyRows(table, result, digits));
    }
    return text;
}

QString certaintySummary(const DoseSelection& selection)
{
    if (!selection.made.exists() || selection.made.inputs.levels.isEmpty()) {
        return {};
    }
    if (selection.stability.isEmpty() || !uncountedResamples(selection.made.inputs).isEmpty()) {
        return "The certainty of the doses is not known: " + missingCertainty(selection, 0) + ".\n";
    }
    QString text = QString("\nCertainty of doses, %1 resamples of the bootstrap samples, separate "
                           "random numbers with seed %2\n")
                       .arg(resampleCount)
                       .arg(resamplingSeed);
    for (int level = 0; level < selection.made.inputs.levels.size(); ++level) {
        text += stabilityText(selection, level) + '\n';
    }
    return text;
}
