// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// The chapters on probabilities: by dose, and without failed fits.

#include "analysis/certainty/sensitivity.h"
#include "analysis/settingtexts.h"
#include "report/chapters.h"

#include <cmath>

namespace {

constexpr int mostGuides = 12; ///< the most levels that the chart shows

ReportChart probabilityChart(const ReportedResult& result)
{
    const QVector<double>& doses = result.made.doses;
    ReportChart chart{
        QString("Probability of %1, by dose; %2, %3.")
            .arg(intervalText(result.made), methodText(result.made), dataSetText(result.dataSet)),
        "Curve of the probability in percent over the candidate doses. The table below lists its "
        "values.",
        doseName(result.made.endPoints), "Probability (%)"};
    if (!result.errors.isEmpty()) {
        chart.caption += " Error bars: two Monte Carlo errors to either side.";
    }
    QVector<double> doubled;
    for (const double error : result.errors) {
        doubled.append(2 * error);
    }
    ChartCurve meds{"MED of a level", {}, {}, {}, ChartRole::Points};
    for (int level = 0; level < result.made.levels.size() && !doses.isEmpty(); ++level) {
        const double percent = result.made.levels.at(level);
        if (result.made.levels.size() <= mostGuides) {
            chart.curves.append({QString::number(percent, 'g', 5) + " %",
                                 {doses.first(), doses.last()},
                                 {percent, percent},
                                 {},
                                 ChartRole::Guide});
        }
        if (!std::isnan(result.meds.value(level))) {
            meds.keys.append(result.meds.value(level));
            meds.values.append(percent);
        }
    }
    chart.curves.append({"Probability", doses, result.probability, doubled, ChartRole::Main});
    if (!meds.keys.isEmpty()) {
        chart.curves.append(meds);
    }
    chart.valueRange = {0, 102};
    return chart;
}

void addProbabilityTable(ReportDocument& document, const ReportedResult& result)
{
    ReportTable table{"Probability of achieving the target, " + dataSetText(result.dataSet),
                      {"Dose", "Probability (%)", "Monte Carlo error"},
                      "rrr",
                      {}};
    for (int dose = 0; dose < result.probability.size(); ++dose) {
        table.rows.append({typed(result.made.doses.value(dose)),
                           calculated(result.probability.at(dose)),
                           dose < result.errors.size() ? calculated(result.errors.at(dose))
                                                       : QString("not known")});
    }
    document.add(table);
    if (result.errors.isEmpty()) {
        document.say("Monte Carlo errors are not known: " + result.evaluation.missing + '.');
    }
}

/// Why figures that need endpoints are missing; empty if they are not.
QString missingEndpoints(const ReportContext& context)
{
    return context.results.isEmpty() ? "Nothing was calculated."
           : context.results.first().evaluation.exists()
               ? QString()
               : "Not known: " + context.results.first().evaluation.missing + '.';
}

/// A row of MEDs for a choice of fits; it begins with the fits and what their removed weight does.
QStringList medRow(const Sensitivity& found, const QString& removedWeight,
                   const QVector<double>& meds, bool isKnown)
{
    QStringList row{fitChoiceName(found.fits), removedWeight};
    for (const double med : meds) {
        row.append(isKnown ? doseText(med) : QString("not known"));
    }
    return row;
}

void addSensitivityTables(ReportDocument& document, const ReportedResult& result)
{
    const QVector<Sensitivity> choices = sensitivityToFits(result.made, result.evaluation);
    ReportTable counts{"Fits and samples",
                       {"Fits", "Samples", "Removed fits with a weight", "Samples without a model"},
                       "lrrr",
                       {}};
    ReportTable meds{"MED by level", {"Fits", "Removed weight"}, "ll", {}, 2};
    for (const double level : result.made.levels) {
        meds.headings.append(levelText(level));
        meds.alignment.append('r');
    }
    ReportTable probabilities{
        "Probability (%) by dose, with renormalised weights", {"Dose"}, "r", {}};
    for (const double dose : result.made.doses) {
        probabilities.rows.append({typed(dose)});
    }
    for (const Sensitivity& found : choices) {
        const bool isKnown = found.unknown.isEmpty();
        counts.rows.append({fitChoiceName(found.fits), QString::number(found.samples),
                            QString::number(found.removedFits),
                            QString::number(found.samplesWithoutModel)});
        const bool isBounded = found.removedFits > 0;
        meds.rows.append(medRow(found, isBounded ? "goes to the other models" : "",
                                found.renormalised.meds, isKnown));
        if (isBounded) {
            meds.rows.append(medRow(found, "misses the target", found.ifMissed.meds, true));
            meds.rows.append(medRow(found, "hits the target", found.ifHit.meds, true));
        }
        probabilities.headings.append(fitChoiceName(found.fits));
        probabilities.alignment.append('r');
        for (int dose = 0; dose < probabilities.rows.size(); ++dose) {
            probabilities.rows[dose].append(calculated(found.renormalised.probability.at(dose)));
        }
        if (!isKnown) {
            document.say(fitChoiceName(found.fits) + ": not known, as " + found.unknown + '.');
        }
    }
    document.add(meds);
    document.add(counts);
    document.add(probabilities);
}

} // namespace

void addProbability(ReportDocument& document, const ReportContext& context)
{
    document.add(ReportHeading{"Probability by dose"});
    bool isAny = false;
    for (const ReportedResult& result : context.results) {
        if (result.probability.isEmpty()) {
            continue;
        }
        isAny = true;
        if (context.results.size() > 1) {
            document.add(ReportHeading{result.name, 2});
        }
        document.add(probabilityChart(result));
        addProbabilityTable(document, result);
    }
    if (!isAny) {
        document.say("No probability was calculated, or it is not kept.");
    }
}

void addSensitivity(ReportDocument& document, const ReportContext& context)
{
    document.add(ReportHeading{"Sensitivity to failed fits"});
    const QString missing = missingEndpoints(context);
    if (!missing.isEmpty()) {
        document.say(missing);
        return;
    }
    const ReportedResult& result = context.results.first();
    document.say(QString("%1. Leaving out a fit removes its model from that sample; the weights of "
                         "the other models in it are renormalised, and a sample without any model "
                         "left counts as a miss. Two bounds follow: all removed weight misses the "
                         "target, or all of it hits.")
                     .arg(result.name));
    if (!result.evaluation.tellsFailures && !result.evaluation.tellsBoundaries) {
        document.say("The headings of the files name no column that shows how the fits ended.");
    }
    addSensitivityTables(document, result);
}
