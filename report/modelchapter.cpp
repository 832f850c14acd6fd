// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// The chapters on the endpoint and its models: dose-response, and what each model contributes.

#include "analysis/certainty/averagedendpoint.h"
#include "analysis/certainty/contributions.h"
#include "analysis/settingtexts.h"
#include "report/chapters.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace {

constexpr int mostCurves = 9; ///< typical curves that one chart can hold

/// The typical curve of each model, [model][dose]; empty for a model with ETAs, which would draw
/// random numbers, and for one without results.
QVector<QVector<double>> typicalCurves(const ReportContext& context, const Study& made, int dataSet)
{
    QVector<QVector<double>> curves;
    QVector<endPoint> definitions = made.endPoints;
    for (int model = 0; model < definitions.size(); ++model) {
        endPoint& definition = definitions[model];
        const Table samples = context.inputs.now.study.rawResults.value(model).value(dataSet);
        definition.checkETA();
        const bool isDrawless = definition.highestEta == 0 && !samples.isEmpty();
        if (isDrawless) {
            definition.bringUpToDate(made.doses);
        }
        curves.append(isDrawless ? definition.evaluateEndpoint(samples.first())
                                 : QVector<double>());
    }
    return curves;
}

bool areResultsThose(const ReportContext& context, const Study& made)
{
    return made.fingerprint == context.inputs.now.study.fingerprint;
}

/// The models by weight, the highest first; in their own order if weights are not known.
QVector<int> byWeight(const ReportedResult& result)
{
    QVector<int> models(result.made.endPoints.size());
    std::iota(models.begin(), models.end(), 0);
    if (result.evaluation.exists()) {
        const QVector<double> weights = contributionsOf(result.made, result.evaluation).meanWeights;
        std::stable_sort(models.begin(), models.end(), [&weights](int first, int second) {
            return weights.value(first) > weights.value(second);
        });
    }
    return models;
}

void addBands(ReportChart& chart, const ReportedResult& result)
{
    const AveragedEndpoint found = averagedEndpoint(result.made, result.evaluation);
    QVector<QVector<double>> quantiles(endpointQuantileCount);
    for (const EndpointDistribution& here : found.all) {
        for (int quantile = 0; quantile < endpointQuantileCount; ++quantile) {
            quantiles[quantile].append(here.quantiles.at(quantile));
        }
    }
    const QVector<double>& doses = result.made.doses;
    chart.bands = {{"5 to 95 %", doses, quantiles.at(0), quantiles.at(4)},
                   {"25 to 75 %", doses, quantiles.at(1), quantiles.at(3)}};
    chart.curves.append({"Median of all models", doses, quantiles.at(2), {}, ChartRole::Main});
}

/// Adds the bounds of the target interval, except those so far away that the curves would be
/// flat.
void addTargetGuides(ReportChart& chart, const Study& made)
{
    double lowest = qInf();
    double highest = -qInf();
    const auto see = [&](const QVector<double>& values) {
        for (const double value : values) {
            if (std::isfinite(value)) {
                lowest = qMin(lowest, value);
                highest = qMax(highest, value);
            }
        }
    };
    for (const ChartBand& band : qAsConst(chart.bands)) {
        see(band.lower);
        see(band.upper);
    }
    for (const ChartCurve& curve : qAsConst(chart.curves)) {
        see(curve.values);
    }
    const double room = highest - lowest;
    for (const double bound : {made.target.lower, made.target.upper}) {
        if (lowest - room <= bound && bound <= highest + room && made.doses.size() > 1) {
            chart.curves.append({"target",
                                 {made.doses.first(), made.doses.last()},
                                 {bound, bound},
                                 {},
                                 ChartRole::Guide});
        }
    }
}

/// Adds the numbers behind the typical curves of a chart.
void addTypicalTable(ReportDocument& document, const ReportChart& chart,
                     const QVector<double>& doses)
{
    ReportTable table{"Typical curves: the endpoint for the first row of each model's results. The "
                      "model with the highest mean weight comes first",
                      {"Dose"},
                      "r",
                      {}};
    for (const double dose : doses) {
        table.rows.append({typed(dose)});
    }
    for (const ChartCurve& curve : chart.curves) {
        if (curve.role == ChartRole::Line) {
            table.headings.append(curve.name);
            table.alignment.append('r');
            for (int dose = 0; dose < doses.size(); ++dose) {
                table.rows[dose].append(calculated(curve.values.at(dose)));
            }
        }
    }
    if (table.headings.size() > 1) {
        document.add(table);
    }
}

void addResponseChart(ReportDocument& document, const ReportContext& context,
                      const ReportedResult& result)
{
    ReportChart chart{"Endpoint by dose over bootstrap samples and models, each with its weight, "
                      "and typical curves: those of the first row of each model's results.",
                      "Bands show quantiles of the endpoint over the candidate doses; lines show "
                      "its median and the typical curve of each model.",
                      doseName(result.made.endPoints), "Endpoint"};
    if (result.evaluation.exists()) {
        addBands(chart, result);
    }
    QStringList withEtas;
    int drawn = 0;
    const QVector<QVector<double>> typical =
        areResultsThose(context, result.made) ? typicalCurves(context, result.made, result.dataSet)
                                              : QVector<QVector<double>>();
    for (const int model : byWeight(result)) {
        const QVector<double> values = typical.value(model);
        if (values.isEmpty()) {
            withEtas.append(modelName(result.made.endPoints, model));
        } else if (drawn++ < mostCurves) {
            chart.curves.append(
                {modelName(result.made.endPoints, model), result.made.doses, values});
        }
    }
    addTargetGuides(chart, result.made);
    document.add(chart);
    addTypicalTable(document, chart, result.made.doses);
    if (drawn > mostCurves) {
        document.say(QString("The chart shows the typical curves of the %1 models with the highest "
                             "mean weight, of %2.")
                         .arg(mostCurves)
                         .arg(drawn));
    }
    if (typical.isEmpty()) {
        document.say("Typical curves are left out: other results have been imported since.");
    } else if (!withEtas.isEmpty()) {
        document.say("Typical curves are left out for models that would need newly simulated "
                     "individuals or have no results: "
                     + withEtas.join(", ") + '.');
    }
}

void addResponseTable(ReportDocument& document, const ReportedResult& result)
{
    ReportTable table{"Model-averaged endpoint by dose: mean and quantiles over samples and models",
                      {"Dose", "Mean", levelText(5), levelText(25), levelText(50), levelText(75),
                       levelText(95), "Excluded (%)"},
                      "rrrrrrrr",
                      {}};
    const AveragedEndpoint found = averagedEndpoint(result.made, result.evaluation);
    for (int dose = 0; dose < found.all.size(); ++dose) {
        const EndpointDistribution& here = found.all.at(dose);
        QStringList row{typed(result.made.doses.at(dose)), calculated(here.mean)};
        for (const double quantile : here.quantiles) {
            row.append(calculated(quantile));
        }
        // Rounding leaves a trace where the weights add up to all.
        const double excluded = here.excluded < 1e-9 ? 0.0 : here.excluded;
        table.rows.append(row + QStringList(calculated(excluded)));
    }
    document.add(table);
    document.say("Excluded is the share of the weight whose endpoint is not finite or not known. "
                 "Samples without a weight count, too.");
}

void addDefinitions(ReportDocument& document, const Study& study)
{
    ReportTable table{"Models and their expressions", {"Model", "Endpoint", "Weight"}, "lll", {}};
    for (int model = 0; model < study.endPoints.size(); ++model) {
        const endPoint& definition = study.endPoints.at(model);
        table.rows.append({modelName(study.endPoints, model), definition.endPointParser.expression,
                           definition.weightParser.expression});
    }
    document.add(table);
    document.say(study.logScale ? "Weights are on the log scale."
                                : "Weights are not on the log scale.");
    for (int model = 0; model < study.endPoints.size(); ++model) {
        const endPoint& definition = study.endPoints.at(model);
        const QString name = modelName(study.endPoints, model);
        if (definition.highestEta == 0) {
            continue; // a matrix left over from earlier ETAs has no effect
        }
        if (definition.hasBlankOmega()) {
            document.say(
                QString("Omega of %1: %2 x %2 elements, all 0.").arg(name).arg(definition.numEtas));
        } else {
            ReportTable omega{"Omega of " + name, {"ETA"}, "l", {}};
            for (int row = 0; row < definition.numEtas; ++row) {
                omega.headings.append(QString::number(row + 1));
                omega.alignment.append('r');
                omega.rows.append({QString::number(row + 1)});
                for (int column = 0; column < definition.numEtas; ++column) {
                    omega.rows.last().append(
                        definition.omegaText(row, column, std::numeric_limits<double>::digits10));
                }
            }
            document.add(omega);
        }
    }
}

void addContributions(ReportDocument& document, const ReportedResult& result)
{
    const Contributions found = contributionsOf(result.made, result.evaluation);
    ReportTable weights{"Weights over the bootstrap samples, " + dataSetText(result.dataSet),
                        {"Model", "Mean weight", "Best in (% of samples)"},
                        "lrr",
                        {}};
    ReportTable parts{"Parts of the probability (%) by model", {"Dose"}, "r", {}};
    for (const double dose : result.made.doses) {
        parts.rows.append({typed(dose)});
    }
    for (int model = 0; model < found.meanWeights.size(); ++model) {
        const QString name = modelName(result.made.endPoints, model);
        weights.rows.append({name, calculated(found.meanWeights.at(model)),
                             calculated(found.bestShares.at(model))});
        parts.headings.append(name);
        parts.alignment.append('r');
        for (int dose = 0; dose < parts.rows.size(); ++dose) {
            parts.rows[dose].append(calculated(found.parts.at(dose).at(model)));
        }
    }
    parts.headings.append("All models");
    parts.alignment.append('r');
    for (int dose = 0; dose < parts.rows.size(); ++dose) {
        parts.rows[dose].append(calculated(result.probability.value(dose)));
    }
    document.add(weights);
    document.say(QString("%1 of %2 samples have weights. The effective number of models, 1 / "
                         "sum(w^2), is %3 on average; in %4 % of these samples one model has more "
                         "than 0.9 of the weight.")
                     .arg(found.weighedSamples)
                     .arg(result.evaluation.sampleCount)
                     .arg(calculated(found.effectiveModels), calculated(found.dominatedShare)));
    document.add(parts);
}

} // namespace

void addDoseResponse(ReportDocument& document, const ReportContext& context)
{
    document.add(ReportHeading{"Dose-response"});
    if (context.results.isEmpty()) {
        document.say("Nothing was calculated.");
        return;
    }
    const ReportedResult& result = context.results.first();
    addResponseChart(document, context, result);
    if (result.evaluation.exists()) {
        addResponseTable(document, result);
    } else {
        document.say("The model-averaged endpoint is not known: " + result.evaluation.missing
                     + '.');
    }
}

void addModels(ReportDocument& document, const ReportContext& context)
{
    document.add(ReportHeading{"Models"});
    if (context.results.isEmpty()) {
        addDefinitions(document, context.inputs.now.study);
        document.say("Weights and contributions are left out: nothing was calculated.");
        return;
    }
    const ReportedResult& result = context.results.first();
    addDefinitions(document, result.made);
    if (result.evaluation.exists()) {
        addContributions(document, result);
    } else {
        document.say("Weights and contributions are not known: " + result.evaluation.missing + '.');
    }
}
