// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/modelfindings.h"

#include "analysis/checkup/definitioncheck.h"
#include "analysis/checkup/inputcheck.h"
#include "model/diagnosis.h"

#include <algorithm>
#include <cmath>

namespace {

/// Characters of expressions that are evaluated to compare weights with the scale.
constexpr int mostEvaluated = 500'000;

QStringList lines(const QVector<Diagnosis>& diagnoses)
{
    QStringList texts;
    for (const Diagnosis& diagnosis : diagnoses) {
        texts.append(
            QString("Character %1: %2").arg(diagnosis.position + 1).arg(diagnosis.message));
    }
    return texts;
}

const Table& firstDataSet(const Study& study, int model)
{
    static const Table none{};
    const bool exists =
        model >= 0 && model < study.rawResults.size() && !study.rawResults.at(model).isEmpty();
    return exists ? study.rawResults.at(model).first() : none;
}

RowColumns columnsOf(const Study& study, int model)
{
    return {widestRow(study, model), study.colNumTHETA1, study.colNumOFV};
}

QVector<double> weightsOf(endPoint definition, const Table& samples)
{
    definition.weightParser.generate_tree();
    QVector<double> values;
    const int most = 1 + mostEvaluated / qMax(1, definition.weightParser.expression.size());
    for (const QVector<double>& sample : samples.mid(0, most)) {
        values.append(definition.evaluateWeight(sample));
    }
    return values;
}

bool comesFromColumns(const endPoint& definition)
{
    return std::any_of(definition.omegaColumns.begin(), definition.omegaColumns.end(),
                       [](const QVector<int>& row) {
                           return std::any_of(row.begin(), row.end(), [](int c) { return c >= 0; });
                       });
}

/// The faults of omega, checked for as many bootstrap samples as take no time that one would notice
/// where it comes from their columns.
QStringList covarianceFindings(const endPoint& definition, const Table& samples)
{
    constexpr double products = 2e6;
    const bool varies = comesFromColumns(definition);
    const double most = products / std::pow(definition.numEtas, 3);
    const int looked = varies ? int(qBound(1.0, most, double(samples.size()))) : 1;
    QStringList found;
    int faulty = 0;
    for (int sample = 0; sample < looked; ++sample) {
        const QStringList ofSample = checkCovariance(definition.omegaOf(samples.at(sample)));
        found = found.isEmpty() ? ofSample : found;
        faulty += ofSample.isEmpty() ? 0 : 1;
    }
    if (varies && faulty > 0) {
        found.first().prepend(QString("In %1 of the first %2 samples: ").arg(faulty).arg(looked));
    }
    return found;
}

} // namespace

int widestRow(const Study& study, int model)
{
    int width = 0;
    for (const QVector<double>& row : firstDataSet(study, model)) {
        width = qMax(width, row.size());
    }
    return width;
}

QStringList endpointFindings(const Study& study, int model)
{
    const QString& expression = study.endPoints.at(model).endPointParser.expression;
    const RowColumns columns = columnsOf(study, model);
    return lines(diagnoseEndpoint(expression, columns))
           + lines(diagnoseThetas(expression, study.columnNamesOf(model), columns));
}

QStringList weightFindings(const Study& study, int model, const QString& placed)
{
    const endPoint& definition = study.endPoints.at(model);
    const QString& expression = definition.weightParser.expression;
    QStringList found = lines(diagnoseWeight(expression, columnsOf(study, model)));
    if (found.isEmpty()) {
        found += checkDefaultWeight(placed, expression, definition.endPointParser);
    }
    // The evaluation of a malformed expression writes to the debug log.
    if (found.isEmpty() && !study.selecting) {
        found += checkWeightScale(expression, weightsOf(definition, firstDataSet(study, model)),
                                  study.logScale);
    }
    return found;
}

QStringList omegaFindings(const Study& study, int model)
{
    const endPoint& definition = study.endPoints.at(model);
    const Table& samples = firstDataSet(study, model);
    if (definition.highestEta == 0 || samples.isEmpty()) {
        return {};
    }
    if (definition.hasBlankOmega()) {
        return checkEtaVariances(definition);
    }
    return covarianceFindings(definition, samples) + checkEtaVariances(definition)
           + checkOmegaColumns(definition, study.columnNamesOf(model), widestRow(study, model));
}

QStringList omegaElementFindings(const Study& study, int model)
{
    const endPoint& definition = study.endPoints.at(model);
    QStringList found;
    if (definition.highestEta == 0 || firstDataSet(study, model).isEmpty()
        || definition.hasBlankOmega()) {
        return found;
    }
    const int width = widestRow(study, model);
    for (int row = 0; row < definition.numEtas; ++row) {
        for (int column = 0; column <= row; ++column) {
            found += checkOmegaElement(definition.omegaText(row, column, 6), width);
        }
    }
    found.removeDuplicates();
    return found;
}
