// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/certainty/certaintytables.h"

#include "analysis/certainty/averagedendpoint.h"
#include "analysis/certainty/contributions.h"
#include "analysis/certainty/sensitivity.h"

#include <cmath>
#include <numeric>

namespace {

/// Writes numbers and doses with so many digits.
struct Writer
{
    int digits;

    QString operator()(double number) const { return QString::number(number, 'g', digits); }

    QString dose(const QVector<double>& doses, int index) const
    {
        return index < doses.size() ? (*this)(doses.at(index)) : QString("none");
    }

    QString med(double dose) const { return std::isnan(dose) ? QString("none") : (*this)(dose); }
};

double sumOf(const QVector<double>& numbers)
{
    return std::accumulate(numbers.begin(), numbers.end(), 0.0);
}

QStringList modelNames(const QVector<endPoint>& models)
{
    QStringList names;
    for (const endPoint& model : models) {
        names.append(model.name);
    }
    return names;
}

TextRows doseRows(const JudgedResult& result, const Writer& text)
{
    const QVector<double>& doses = result.made.doses;
    const QVector<double> errors = monteCarloErrors(result.made, result.evaluation);
    TextRows rows;
    for (int level = 0; level < result.stability.size(); ++level) {
        const DoseStability& found = result.stability.at(level);
        QStringList ties;
        for (const int dose : found.ties) {
            ties.append(text.dose(doses, dose));
        }
        const QStringList ofLevel{QString::number(result.dataSet),
                                  text(result.made.levels.at(level)),
                                  text.dose(doses, found.med),
                                  text(found.share(found.med)),
                                  text.dose(doses, found.mostOften),
                                  text.dose(doses, found.lower),
                                  text.dose(doses, found.upper),
                                  text(std::ceil(found.samplesNeeded)),
                                  ties.join(' ')};
        for (int dose = 0; dose < found.chosen.size(); ++dose) {
            const bool isDose = dose < doses.size();
            rows.append(ofLevel
                        + QStringList{text.dose(doses, dose),
                                      isDose ? text(result.probability.at(dose)) : QString(),
                                      isDose ? text(errors.at(dose)) : QString(),
                                      text(found.share(dose))});
        }
    }
    return rows;
}

TextRows contributionRows(const JudgedResult& result, const Writer& text)
{
    const Contributions found = contributionsOf(result.made, result.evaluation);
    TextRows rows;
    const auto add = [&](const QString& figure, const QString& dose,
                         const QVector<double>& ofModels, double all) {
        QStringList row{QString::number(result.dataSet), figure, dose};
        for (int model = 0; model < found.meanWeights.size(); ++model) {
            row.append(ofModels.isEmpty() ? QString() : text(ofModels.at(model)));
        }
        row.append(text(all));
        rows.append(row);
    };
    const double samples = result.evaluation.sampleCount;
    add("Mean weight", QString(), found.meanWeights, sumOf(found.meanWeights));
    add("Best (% of samples)", QString(), found.bestShares, sumOf(found.bestShares));
    add("Effective number of models", QString(), {}, found.effectiveModels);
    add("One model above 0.9 (% of samples)", QString(), {}, found.dominatedShare);
    add("Samples with weights (%)", QString(), {}, 100.0 * found.weighedSamples / samples);
    for (int dose = 0; dose < found.parts.size(); ++dose) {
        add("Part of the probability (%)", text.dose(result.made.doses, dose), found.parts.at(dose),
            result.probability.at(dose));
    }
    return rows;
}

TextRows endpointRows(const JudgedResult& result, const Writer& text)
{
    const AveragedEndpoint found = averagedEndpoint(result.made, result.evaluation);
    QVector<QVector<EndpointDistribution>> distributions = found.byModel;
    distributions.prepend(found.all);
    QStringList names = modelNames(result.made.endPoints);
    names.prepend("all models");
    TextRows rows;
    for (int dose = 0; dose < result.made.doses.size(); ++dose) {
        for (int model = 0; model < distributions.size(); ++model) {
            const EndpointDistribution& here = distributions.at(model).at(dose);
            QStringList row{QString::number(result.dataSet), text.dose(result.made.doses, dose),
                            names.value(model), text(here.mean)};
            for (const double quantile : here.quantiles) {
                row.append(text(quantile));
            }
            rows.append(row + QStringList(text(here.excluded)));
        }
    }
    return rows;
}

TextRows sensitivityRows(const JudgedResult& result, const Writer& text)
{
    TextRows rows;
    for (const Sensitivity& found : sensitivityToFits(result.made, result.evaluation)) {
        const QStringList ofFits{QString::number(result.dataSet), fitChoiceName(found.fits),
                                 QString::number(found.samples), QString::number(found.removedFits),
                                 QString::number(found.samplesWithoutModel)};
        for (int dose = 0; dose < result.made.doses.size(); ++dose) {
            rows.append(ofFits
                        + QStringList{"Probability (%)", text.dose(result.made.doses, dose),
                                      text(found.renormalised.probability.at(dose)),
                                      text(found.ifMissed.probability.at(dose)),
                                      text(found.ifHit.probability.at(dose)), found.unknown});
        }
        for (int level = 0; level < result.made.levels.size(); ++level) {
            const double med = found.renormalised.meds.at(level);
            rows.append(ofFits
                        + QStringList{"MED", text(result.made.levels.at(level)),
                                      found.unknown.isEmpty() ? text.med(med) : text(med),
                                      text.med(found.ifMissed.meds.at(level)),
                                      text.med(found.ifHit.meds.at(level)), found.unknown});
        }
    }
    return rows;
}

} // namespace

JudgedResult judgedResult(const ProbabilityCurve& curve, const QVector<double>& levels)
{
    JudgedResult result{
        qMax(0, curve.made.dataSet), curve.made.inputs, curve.probability, curve.evaluation, {}};
    result.made.levels = levels;
    return result;
}

JudgedResult judgedResult(const DoseSelection& selection, int dataSet)
{
    return {dataSet, selection.made.inputs, selection.probability.value(dataSet),
            selection.evaluations.value(dataSet), selection.stability.value(dataSet)};
}

QStringList certaintyHeadings(CertaintyTable table, const QVector<endPoint>& models)
{
    switch (table) {
    case CertaintyTable::Doses:
        return {"Data set",
                "Level (%)",
                "MED",
                "Held in (% of resamples)",
                "Chosen most often",
                "2.5 % quantile",
                "97.5 % quantile",
                "Samples needed",
                "Probability equals level at",
                "Dose",
                "Probability (%)",
                "Monte Carlo error",
                "Chosen in (% of resamples)"};
    case CertaintyTable::Contributions:
        return QStringList{"Data set", "Quantity", "Dose"} + modelNames(models)
               + QStringList("All models");
    case CertaintyTable::Endpoint:
        return {"Data set", "Dose", "Model", "Mean", "5 %",
                "25 %",     "50 %", "75 %",  "95 %", "Excluded (%)"};
    case CertaintyTable::Sensitivity:
        return {"Data set",
                "Fits",
                "Samples",
                "Removed fits with a weight",
                "Samples without a model",
                "Quantity",
                "Dose or level (%)",
                "Renormalised",
                "If removed weight misses",
                "If removed weight hits",
                "Why not known"};
    }
    return {};
}

TextRows certaintyRows(CertaintyTable table, const JudgedResult& result, int digits)
{
    switch (table) {
    case CertaintyTable::Doses:
        return doseRows(result, {digits});
    case CertaintyTable::Contributions:
        return contributionRows(result, {digits});
    case CertaintyTable::Endpoint:
        return endpointRows(result, {digits});
    case CertaintyTable::Sensitivity:
        return sensitivityRows(result, {digits});
    }
    return {};
}

TextRows probabilityRows(const DoseSelection& selection, int digits)
{
    const Writer text{digits};
    TextRows rows{{"Data set"}};
    for (const double dose : selection.made.inputs.doses) {
        rows.first().append(text(dose));
    }
    for (int dataSet = 0; dataSet < selection.probability.size(); ++dataSet) {
        QStringList row(QString::number(dataSet));
        for (const double probability : selection.probability.at(dataSet)) {
            row.append(text(probability));
        }
        rows.append(row);
    }
    return rows;
}
