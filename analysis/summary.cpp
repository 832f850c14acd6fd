// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/summary.h"

#include "analysis/certainty/certaintytables.h"
#include "analysis/settingtexts.h"
#include "analysis/weights.h"
#include "model/percentile.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

QString line(const QStringList& cells)
{
    return cells.join('\t') + '\n';
}

QString columnsLine(const Study& study)
{
    return QString("Columns: OFV %1, THETA1 %2\n").arg(study.colNumOFV).arg(study.colNumTHETA1);
}

QString dosesLine(const Study& study)
{
    return "Doses: " + typed(study.doses) + '\n';
}

QString populationLine(const Study& study)
{
    const QString text = populationText(study);
    return text.isEmpty() ? text : "Population: " + text + '\n';
}

QString scaleLine(const Study& study)
{
    return QString("Weights: %1\n").arg(study.logScale ? "in log scale" : "not in log scale");
}

QString choices(const Study& study, const StudySource& source)
{
    return QString("%1, Qt %2\n").arg(source.program, source.qtVersion)
           + "Folder: " + source.directory + '\n' + columnsLine(study) + dosesLine(study)
           + populationLine(study) + "Target: " + intervalText(study) + '\n' + scaleLine(study)
           + "Method: " + methodText(study) + '\n' + "Levels (%): " + typed(study.levels) + '\n';
}

/// The omega matrices as page "1" shows them, with all digits.
QString omegas(const QVector<endPoint>& endPoints)
{
    QString text;
    for (const endPoint& definition : endPoints) {
        if (definition.numEtas > 0) {
            text += "\nOmega of " + definition.name + '\n';
        }
        if (definition.numEtas > 0 && definition.hasBlankOmega()) {
            text += QString("%1 x %1 elements, all 0\n").arg(definition.numEtas);
            continue;
        }
        for (int row = 0; row < definition.numEtas; ++row) {
            QStringList cells;
            for (int column = 0; column < definition.numEtas; ++column) {
                cells.append(
                    definition.omegaText(row, column, std::numeric_limits<double>::digits10));
            }
            text += line(cells);
        }
    }
    return text;
}

QString models(const Study& study, const StudySource& source)
{
    QString text =
        "\nModels\n" + line({"Model", "File", "Data sets", "Samples", "Endpoint", "Weight"});
    for (int model = 0; model < study.endPoints.size(); ++model) {
        const endPoint& definition = study.endPoints.at(model);
        const QVector<Table> dataSets = study.rawResults.value(model);
        text += line({definition.name, source.files.value(model), QString::number(dataSets.size()),
                      countRange(dataSets), definition.endPointParser.expression,
                      definition.weightParser.expression});
    }
    return text + omegas(study.endPoints);
}

/// The expressions of a result that was made with others.
QString expressionsThen(const QVector<endPoint>& endPoints)
{
    QString text = line({"Model", "Endpoint", "Weight"});
    for (const endPoint& definition : endPoints) {
        text += line({definition.name, definition.endPointParser.expression,
                      definition.weightParser.expression});
    }
    return text;
}

/// The inputs of a stale result that have changed and are not in its heading.
QString inputsThen(const Provenance& made, const QVector<InputKind>& changed,
                   const QString& madeWith)
{
    if (changed.isEmpty()) {
        return {};
    }
    const auto has = [&changed](InputKind kind) { return changed.contains(kind); };
    const Study& then = made.inputs;
    QString text;
    if (has(InputKind::Results)) {
        text += "Results of an earlier import\n";
    }
    if (has(InputKind::Doses)) {
        text += dosesLine(then);
    }
    if (has(InputKind::Individuals) || has(InputKind::Endpoints)) {
        text += populationLine(then);
    }
    if (has(InputKind::Weights)) {
        text += scaleLine(then);
    }
    if (has(InputKind::Endpoints) || has(InputKind::Weights)) {
        text += columnsLine(then) + expressionsThen(then.endPoints);
    }
    if (has(InputKind::Endpoints)) {
        text += omegas(then.endPoints);
    }
    const QString stale = "Out of date; since changed: " + kindNames(changed) + '.';
    return text.isEmpty() ? stale + '\n' : stale + ' ' + madeWith + ":\n" + text;
}

QString remarkLines(const QStringList& remarks)
{
    return remarks.isEmpty() ? QString() : remarks.join('\n') + '\n';
}

/// The model's mean weight over the samples that have weights, NaN without any.
double meanWeight(const Table& weights, int model)
{
    double sum = 0.0;
    int count = 0;
    for (const QVector<double>& sample : weights) {
        const double weight = sample.value(model, notANumber);
        if (!std::isnan(weight)) {
            sum += weight;
            ++count;
        }
    }
    return count > 0 ? sum / count : notANumber;
}

QString weights(const StudyResults& results, const CurrentInputs& now, int dataSet)
{
    const QStringList remarks = weightsRemarks(results, now);
    if (!remarks.isEmpty()) {
        return "\nRelative weights\n" + remarkLines(remarks); // the page shows others
    }
    const Study& study = now.study;
    const Table relative = dataSet < 0 ? Table() : relativeWeights(study, dataSet);
    if (relative.isEmpty()) {
        return {};
    }
    const QVector<int> selected = selectedModels(study, dataSet);
    QString text = QString("\nRelative weights, data set %1\n").arg(dataSet)
                   + line({"Model", "Mean", "Samples in which it is selected"});
    for (int model = 0; model < study.endPoints.size(); ++model) {
        text += line({study.endPoints.at(model).name, calculated(meanWeight(relative, model)),
                      QString::number(selected.count(model))});
    }
    return text;
}

QString probability(const StudyResults& results, const CurrentInputs& now)
{
    const ProbabilityCurve& curve = results.curve;
    if (!curve.made.exists()) {
        return {};
    }
    QString text = QString("\nProbability of achieving the target as last calculated, data set "
                           "%1, %2, %3\n")
                       .arg(curve.made.dataSet)
                       .arg(methodText(curve.made.inputs), intervalText(curve.made.inputs));
    text += inputsThen(curve.made, curveChanges(results, now), "It was made with")
            + remarkLines(unfinishedRemarks(curve) + curve.notes)
            + line({"Dose", "Probability (%)"});
    for (int dose = 0; dose < curve.probability.size(); ++dose) {
        text += line({typed(curve.doses.value(dose)), calculated(curve.probability.at(dose))});
    }
    return text + certaintySummary(curve, now.study.levels);
}

/// How often each dose was chosen, level by level.
QString doses(const StudyResults& results, const CurrentInputs& now)
{
    const DoseSelection& selection = results.selection;
    if (!selection.made.exists()) {
        return {};
    }
    const Study& then = selection.made.inputs;
    QString text =
        QString("\nDose selection as last calculated, %1, %2\n")
            .arg((selection.isFromProject ? "from the project, " : "") + methodText(then),
                 intervalText(then));
    text += inputsThen(selection.made, selectionChanges(results, now), "It was made with")
            + remarkLines(unfinishedRemarks(selection) + selection.notes)
            + line({"Level (%)", "Dose", "Data sets"});
    for (int level = 0; level < selection.levels.size(); ++level) {
        std::map<double, int, decltype(&ascendingNanLast)> counts(&ascendingNanLast);
        for (const QVector<double>& dataSet : selection.doses) {
            if (level < dataSet.size()) {
                ++counts[dataSet.at(level)];
            }
        }
        for (const auto& [dose, count] : counts) {
            text +=
                line({typed(selection.levels.at(level)),
                      std::isnan(dose) ? QString("none") : typed(dose), QString::number(count)});
        }
    }
    return text + certaintySummary(selection);
}

/// The inputs of the comparison that are not in its headings.
QString truthInputs(const TruthComparison& truth)
{
    const Provenance& made = truth.made;
    QString text;
    if (truth.chosen.exists()) {
        text += QString("Doses by %1, %2\n")
                    .arg(methodText(truth.chosen.inputs), intervalText(truth.chosen.inputs));
    }
    if (!made.trueRows.isEmpty()) {
        text += QString("Theoretical MEDs by true models %1, %2\n")
                    .arg(made.trueModels.join(", "), intervalText(made.inputs));
    }
    return text;
}

/// Whether chance explains the counts of each level.
QString nominalCounts(const TruthComparison& truth)
{
    QString lines;
    for (int level = 0; level < qMin(truth.comparison.size(), truth.levels.size()); ++level) {
        const LevelComparison& counts = truth.comparison.at(level);
        const double percent = truth.levels.at(level);
        if (const std::optional<CountRange> range = nominalRange(counts, percent)) {
            const QString fault = misfit(counts, *range);
            lines += line({typed(percent), calculated(nominalCount(counts, percent)),
                           QString("%1 to %2").arg(range->lowest).arg(range->highest),
                           fault.isEmpty() ? QString("yes") : "no, " + fault});
        }
    }
    return lines.isEmpty() ? lines
                           : line({"Level (%)", "Nominal", "By chance in 95 % of studies",
                                   "Compatible with the level"})
                                 + lines;
}

QString comparison(const StudyResults& results, const CurrentInputs& now)
{
    const TruthComparison& truth = results.truth;
    if (!truth.made.exists()) {
        return {};
    }
    QString text = "\nComparison with the truth as last calculated\n" + truthInputs(truth)
                   + inputsThen(truth.made, truthChanges(results, now), "It was made with")
                   + inputsThen(truth.chosen, comparedDosesChanges(results, now),
                                "The doses were selected with")
                   + remarkLines(unfinishedRemarks(truth) + missingMedNotes(truth));
    if (truth.isFailed) {
        return text;
    }
    text += line({"Level (%)", "Over", "Equal", "Under", "Mean absolute error"});
    for (int level = 0; level < qMin(truth.comparison.size(), truth.levels.size()); ++level) {
        const LevelComparison& counts = truth.comparison.at(level);
        text += line({typed(truth.levels.at(level)), QString::number(counts.over),
                      QString::number(counts.equal), QString::number(counts.under),
                      calculated(counts.meanAbsoluteError)});
    }
    return text + nominalCounts(truth);
}

} // namespace

QString summaryText(const CurrentInputs& now, const StudyResults& results, int weightsDataSet,
                    const StudySource& source, const QStringList& findings)
{
    QString text = choices(now.study, source) + models(now.study, source)
                   + weights(results, now, weightsDataSet) + probability(results, now)
                   + doses(results, now) + comparison(results, now);
    if (!findings.isEmpty()) {
        text += "\nFindings\n" + findings.join('\n') + '\n';
    }
    return text;
}
