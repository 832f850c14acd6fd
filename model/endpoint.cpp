// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/endpoint.h"

#include "model/endpointparsercontainer.h"
#include "model/percentile.h"
#include "model/randomng.h"

#include <QThread>
#include <QtConcurrentMap>

#include <algorithm>
#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Individuals of the single-dose evaluation.
constexpr int singleDoseSimulations = 100;
/// Bound on the deviates held at a time: doses are simulated in groups below it.
constexpr qint64 maximalGroupDeviates = 1 << 20;
/// Tokens times individuals from which handing work to other threads takes less time than
/// it saves.
constexpr qint64 parallelThreshold = 50000;

template <typename T>
void resizeSquare(QVector<QVector<T>>& matrix, int size, T value)
{
    matrix.resize(size);
    for (QVector<T>& row : matrix) {
        const int filled = qMin(row.size(), size);
        row.resize(size);
        std::fill(row.begin() + filled, row.end(), value);
    }
}

void evaluateContainers(QVector<endPointParserContainer>& containers, qint64 individuals)
{
    const qint64 tokens = containers.constFirst().parser.tree.size();
    if (individuals * tokens >= parallelThreshold) {
        QtConcurrent::blockingMap(containers, evaluateEPParser);
    } else {
        for (endPointParserContainer& container : containers) {
            evaluateEPParser(container);
        }
    }
}

/// count individuals with the given values and newly drawn ETAs.
ValueBlock drawBlock(const QVector<double>& values, const Binding& binding,
                     MultiNormalSampler& sampler, int count)
{
    ValueBlock block;
    block.common = values;
    block.count = count;
    block.varyingSlots = binding.etaSlots;
    block.varying = sampler.drawColumns(binding.etaRows, count);
    return block;
}

} // namespace

double endPoint::evaluateEndpoint(double dose, QVector<double> row)
{
    bindEndpointNames();
    QVector<double> values = endpointBinding.values(row);
    if (values.size() > DoseSlot) {
        values[DoseSlot] = dose;
    }
    if (!usesEtas) {
        return endPointParser.evaluate_tree(values);
    }
    MultiNormalSampler sampler(omegaOf(row));
    const ValueBlock block = drawBlock(values, endpointBinding, sampler, singleDoseSimulations);
    QVector<double> individuals(singleDoseSimulations);
    endPointParser.evaluateBlock(block, individuals.data());
    return summary(individuals, singleDoseSimulations);
}

QVector<double> endPoint::evaluateEndpoint(QVector<double> row)
{
    bindEndpointNames();
    QVector<double> values = endpointBinding.values(row);
    QVector<double> endpoints;
    endpoints.reserve(doses.size());
    if (!usesEtas) {
        for (const double dose : qAsConst(doses)) {
            if (values.size() > DoseSlot) {
                values[DoseSlot] = dose;
            }
            endpoints.append(endPointParser.evaluate_tree(values));
        }
        return endpoints;
    }
    MultiNormalSampler sampler(omegaOf(row));
    if (numSimulations >= 2) {
        appendSimulated(endpoints, values, sampler);
        return endpoints;
    }
    for (const double dose : qAsConst(doses)) {
        values[DoseSlot] = dose;
        QVector<double> individuals;
        if (numSimulations == 1) {
            individuals.append(simulateOne(values, sampler));
        }
        endpoints.append(summary(individuals, numSimulations));
    }
    return endpoints;
}

/// Appends the endpoint of every dose, the individuals of each spread over one container
/// per processor. Several doses share a parallel section.
void endPoint::appendSimulated(QVector<double>& endpoints, const QVector<double>& values,
                               MultiNormalSampler& sampler)
{
    const int processors = qMax(1, QThread::idealThreadCount());
    // The rest of the division is dropped by intent.
    const int perProcessor = numSimulations / processors;
    const qint64 perDose = qint64(perProcessor) * processors;
    const qint64 deviatesPerDose = qMax(qint64(1), perDose * endpointBinding.etaSlots.size());
    const int groupSize = int(
        qBound(qint64(1), maximalGroupDeviates / deviatesPerDose, qint64(qMax(1, doses.size()))));

    endPointParserContainer empty;
    empty.setParser(endPointParser);
    QVector<double> doseValues = values;
    QVector<double> individuals;
    for (int first = 0; first < doses.size(); first += groupSize) {
        const int doseCount = qMin(groupSize, doses.size() - first);
        QVector<endPointParserContainer> containers(processors, empty);
        for (int dose = first; dose < first + doseCount; ++dose) {
            doseValues[DoseSlot] = doses.at(dose);
            for (endPointParserContainer& container : containers) {
                container.addBlock(drawBlock(doseValues, endpointBinding, sampler, perProcessor));
            }
        }
        evaluateContainers(containers, perDose * doseCount);
        for (int dose = 0; dose < doseCount; ++dose) {
            individuals.clear();
            for (const endPointParserContainer& container : qAsConst(containers)) {
                individuals += container.results.mid(dose * perProcessor, perProcessor);
            }
            endpoints.append(summary(individuals, numSimulations));
        }
    }
}

double endPoint::simulateOne(QVector<double> values, MultiNormalSampler& sampler)
{
    const ValueBlock block = drawBlock(values, endpointBinding, sampler, 1);
    double result = 0.0;
    endPointParser.evaluateBlock(block, &result);
    return result;
}

/// The endpoint of the population. individualCount may exceed the individuals simulated.
double endPoint::summary(const QVector<double>& individuals, int individualCount) const
{
    if (populationSummary >= 0) {
        return percentileOfIndividuals(individuals, individualCount, populationSummary);
    }
    double sum = 0.0;
    for (const double value : individuals) {
        sum += value;
    }
    return sum / individualCount;
}

double endPoint::evaluateWeight(QVector<double> row)
{
    if (weightParser.expression.trimmed().isEmpty()) {
        return notANumber;
    }
    bindWeightNames();
    return weightParser.evaluate_tree(weightBinding.values(row));
}

void endPoint::checkETA()
{
    const QStringList names = endPointParser.extract_variables();
    highestEta = 0;
    for (const QString& variable : names) {
        if (const std::optional<int> number = etaNumber(variable)) {
            usesEtas = true;
            highestEta = qMax(highestEta, *number);
        }
    }
    if (highestEta > numEtas) {
        resizeOmega(highestEta);
    }
}

void endPoint::resizeOmega(int size)
{
    resizeSquare(omega, size, 0.0);
    resizeSquare(omegaColumns, size, -1);
    numEtas = size;
}

void endPoint::bringUpToDate(const QVector<double>& currentDoses)
{
    doses = currentDoses;
    if (!endPointParser.treeIsCurrent()) {
        endPointParser.generate_tree();
    }
}

/// Binds the names of the endpoint expression, anew only if they have changed, and keeps
/// the ETA bookkeeping.
void endPoint::bindEndpointNames()
{
    if (boundEndpointNames != endPointParser.variables || boundColNumTHETA1 != colNumTHETA1) {
        endpointBinding = bindEndpoint(endPointParser.variables, colNumTHETA1);
        boundEndpointNames = endPointParser.variables;
        boundColNumTHETA1 = colNumTHETA1;
    }
    highestEta = endpointBinding.highestEta();
    usesEtas = highestEta > 0;
    if (highestEta > numEtas) {
        resizeOmega(highestEta);
    }
}

void endPoint::bindWeightNames()
{
    if (boundWeightExpression != weightParser.expression || boundColNumOFV != colNumOFV) {
        weightBinding = bindWeight(weightParser.extract_variables(), colNumOFV);
        boundWeightExpression = weightParser.expression;
        boundColNumOFV = colNumOFV;
    }
}

/// Omega for one bootstrap row: elements that come from a column take the row's value, in
/// a copy, so that the definition keeps what was entered.
QVector<QVector<double>> endPoint::omegaOf(const QVector<double>& row) const
{
    QVector<QVector<double>> matrix = omega;
    for (int i = 0; i < matrix.size() && i < omegaColumns.size(); ++i) {
        const int columnCount = qMin(matrix.size(), omegaColumns.at(i).size());
        for (int j = 0; j < columnCount; ++j) {
            const int column = omegaColumns.at(i).at(j);
            if (column >= 0) {
                const double value = column < row.size() ? row.at(column) : notANumber;
                matrix[i][j] = value;
                matrix[j][i] = value;
            }
        }
    }
    return matrix;
}
