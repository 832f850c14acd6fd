// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/summary.h"

#include "model/percentile.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

namespace {

QString typed(double number)
{
    return QString::number(number, 'g', std::numeric_limits<double>::digits10);
}

QString typed(const QVector<double>& numbers)
{
    QStringList texts;
    for (const double number : numbers) {
        texts.append(typed(number));
    }
    return texts.join(", ");
}

QString calculated(double number)
{
    return QString::number(number, 'g', 6);
}

QString line(const QStringList& cells)
{
    return cells.join('\t') + '\n';
}

QString countRange(const QVector<int>& counts)
{
    if (counts.isEmpty()) {
        return "0";
    }
    const auto [fewest, most] = std::minmax_element(counts.begin(), counts.end());
    return *fewest == *most ? QString::number(*fewest)
                            : QString("%1 to %2").arg(*fewest).arg(*most);
}

QString choices(const AnalysisSummary& summary)
{
    const bool hasEtas =
        std::any_of(summary.models.begin(), summary.models.end(),
                    [](const ModelSummary& model) { return !model.omega.isEmpty(); });
    QString text = QString("%1, Qt %2\n").arg(summary.program, summary.qtVersion);
    text += "Directory: " + summary.directory + '\n';
    text +=
        QString("Columns: OFV %1, THETA1 %2\n").arg(summary.colNumOFV).arg(summary.colNumTHETA1);
    text += "Doses: " + typed(summary.doses) + '\n';
    if (hasEtas) {
        text += QString("Population: %1, %2 individuals\n")
                    .arg(summary.populationSummary)
                    .arg(summary.individuals);
    }
    text += QString("Target: %1 < endpoint <= %2\n")
                .arg(typed(summary.target.lower), typed(summary.target.upper));
    text += QString("Weights: %1\n").arg(summary.logScale ? "in log scale" : "not in log scale");
    text += QString("Method: %1, %2\n").arg(summary.method, summary.ofvUse);
    text += "Levels (%): " + typed(summary.levels) + '\n';
    return text;
}

QString models(const AnalysisSummary& summary)
{
    QString text =
        "\nModels\n" + line({"Model", "File", "Data sets", "Samples", "Endpoint", "Weight"});
    for (const ModelSummary& model : summary.models) {
        text += line({model.name, model.file, QString::number(model.sampleCounts.size()),
                      countRange(model.sampleCounts), model.endpointExpression,
                      model.weightExpression});
    }
    for (const ModelSummary& model : summary.models) {
        if (!model.omega.isEmpty()) {
            text += "\nOmega of " + model.name + '\n';
            for (const QStringList& row : model.omega) {
                text += line(row);
            }
        }
    }
    return text;
}

/// The model's mean weight over the samples that have weights, NaN without any.
double meanWeight(const Table& weights, int model)
{
    double sum = 0.0;
    int count = 0;
    for (const QVector<double>& sample : weights) {
        const double weight = sample.value(model, std::numeric_limits<double>::quiet_NaN());
        if (!std::isnan(weight)) {
            sum += weight;
            ++count;
        }
    }
    return count > 0 ? sum / count : std::numeric_limits<double>::quiet_NaN();
}

QString weights(const AnalysisSummary& summary)
{
    if (summary.relativeWeights.isEmpty()) {
        return {};
    }
    QString text = QString("\nRelative weights, data set %1\n").arg(summary.weightsDataSet)
                   + line({"Model", "Mean", "Samples in which it is selected"});
    for (int model = 0; model < summary.models.size(); ++model) {
        text += line({summary.models.at(model).name,
                      calculated(meanWeight(summary.relativeWeights, model)),
                      QString::number(summary.selectedModels.count(model))});
    }
    return text;
}

QString probability(const AnalysisSummary& summary)
{
    if (summary.probability.isEmpty()) {
        return {};
    }
    QString text = QString("\nProbability of achieving the target as last calculated, %1\n")
                       .arg(summary.probabilityName)
                   + line({"Dose", "Probability (%)"});
    for (int dose = 0; dose < summary.probability.size(); ++dose) {
        text += line({typed(summary.probabilityDoses.value(dose)),
                      calculated(summary.probability.at(dose))});
    }
    return text;
}

/// How often each dose was chosen, level by level.
QString doses(const AnalysisSummary& summary)
{
    if (summary.doseChoice.isEmpty()) {
        return {};
    }
    QString text =
        QString("\nDose selection as last calculated, %1\n").arg(summary.doseChoiceOrigin)
        + line({"Level (%)", "Dose", "Data sets"});
    for (int level = 0; level < summary.levels.size(); ++level) {
        std::map<double, int, decltype(&ascendingNanLast)> counts(&ascendingNanLast);
        for (const QVector<double>& dataSet : summary.doseChoice) {
            if (level < dataSet.size()) {
                ++counts[dataSet.at(level)];
            }
        }
        for (const auto& [dose, count] : counts) {
            text +=
                line({typed(summary.levels.at(level)),
                      std::isnan(dose) ? QString("none") : typed(dose), QString::number(count)});
        }
    }
    return text;
}

QString comparison(const AnalysisSummary& summary)
{
    if (summary.comparison.isEmpty()) {
        return {};
    }
    QString text = "\nComparison with the truth as last calculated\n"
                   + line({"Level (%)", "Over", "Equal", "Under", "Mean absolute error"});
    for (int level = 0; level < qMin(summary.comparison.size(), summary.comparedLevels.size());
         ++level) {
        const LevelComparison& counts = summary.comparison.at(level);
        text += line({typed(summary.comparedLevels.at(level)), QString::number(counts.over),
                      QString::number(counts.equal), QString::number(counts.under),
                      calculated(counts.meanAbsoluteError)});
    }
    return text;
}

} // namespace

QString summaryText(const AnalysisSummary& summary)
{
    return choices(summary) + models(summary) + weights(summary) + probability(summary)
           + doses(summary) + comparison(summary);
}
