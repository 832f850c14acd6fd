// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/endpoint.h"

#include "compat/qtversions.h"
#include "model/percentile.h"
#include "model/randomng.h"

#include <QThread>
#include <QThreadPool>

#include <algorithm>
#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Individuals of the single-dose evaluation.
constexpr int singleDoseSimulations = 100;
/// The most random numbers held at a time: doses are simulated in groups below it.
constexpr int maximalGroupNumbers = 1 << 20;
/// The cost of an evaluation in addition to its expression.
constexpr int operationsPerEvaluation = 10;
/// The most operations in a work item. An evaluation that takes longer keeps all processors
/// busy by itself.
constexpr qint64 maximalPieceOperations = 1 << 22;

template <typename T>
void resizeSquare(QVector<QVector<T>>& matrix, int size, T value)
{
    // New rows share their numbers until one of them changes, so that many ETAs cost little.
    QVector<QVector<T>> resized(size, QVector<T>(size, value));
    for (int row = 0; row < qMin(matrix.size(), size); ++row) {
        std::copy_n(matrix.at(row).begin(), qMin(matrix.at(row).size(), size),
                    resized[row].begin());
    }
    matrix = resized;
}

/// True if the condition holds for all elements. Checks rows that share their numbers once.
template <typename T, typename Predicate>
bool allElements(const QVector<QVector<T>>& matrix, Predicate predicate)
{
    const T* looked = nullptr;
    for (const QVector<T>& row : matrix) {
        if (row.constData() != looked && !std::all_of(row.begin(), row.end(), predicate)) {
            return false;
        }
        looked = row.constData();
    }
    return true;
}

bool isFixed(int column)
{
    return column < 0;
}

int machineProcessors()
{
    return qMax(1, QThread::idealThreadCount());
}

int& usedProcessors()
{
    // Asked once: the answer never changes, and takes longer than drawing a few individuals.
    static int count = machineProcessors();
    return count;
}

} // namespace

int processorCount()
{
    return usedProcessors();
}

void setProcessorCount(int count)
{
    usedProcessors() = count > 0 ? count : machineProcessors();
    QThreadPool::globalInstance()->setMaxThreadCount(usedProcessors());
}

int simulatedIndividuals(int individuals, int processors)
{
    return individuals < 2 ? qMax(0, individuals) : individuals / processors * processors;
}

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
    endPointParserContainer container =
        population(values, {dose}, singleDoseSimulations, MultiNormalSampler(omegaOf(row)));
    container.population.countedIndividuals = singleDoseSimulations;
    evaluateEPParser(container);
    return container.population.endpoints.first();
}

QVector<double> endPoint::evaluateEndpoint(QVector<double> row)
{
    return evaluateEndpoint(row, {}).value_or(QVector<double>());
}

std::optional<QVector<double>> endPoint::evaluateEndpoint(QVector<double> row,
                                                          const GoesOnWithDoses& goesOn)
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
            if (goesOn && !goesOn(endpoints.size())) {
                return std::nullopt;
            }
        }
        return endpoints;
    }
    const std::optional<quint32> start = goesOn ? randomPosition() : std::nullopt;
    const MultiNormalSampler sampler(omegaOf(row));
    const int groupSize = dosesPerGroup(sampler);
    for (int first = 0; first < doses.size(); first += groupSize) {
        const QVector<double> group = doses.mid(first, groupSize);
        const int share = (group.size() + processorCount() - 1) / processorCount();
        QVector<endPointParserContainer> containers;
        for (int dose = 0; dose < group.size(); dose += share) {
            containers.append(
                population(values, group.mid(dose, share), simulatedIndividuals(), sampler));
        }
        evaluateContainers(containers);
        for (const endPointParserContainer& container : qAsConst(containers)) {
            endpoints += container.population.endpoints;
        }
        if (goesOn && !goesOn(endpoints.size())) {
            if (start) {
                setRandomPosition(*start);
            }
            return std::nullopt;
        }
    }
    return endpoints;
}

bool endPoint::evaluatesRows()
{
    bindEndpointNames();
    return !usesEtas && endPointParser.isCompiledFor(endpointBinding.slotCount);
}

QVector<QVector<double>> endPoint::evaluateRows(const QVector<const QVector<double>*>& rows)
{
    bindEndpointNames();
    ValueBlock block;
    block.common = endpointBinding.values({});
    block.count = rows.size();
    QVector<int> sources;
    for (const Binding::FromColumn& source : qAsConst(endpointBinding.columns)) {
        if (source.slot != DoseSlot) {
            block.varyingSlots.append(source.slot);
            sources.append(source.column);
        }
    }
    block.varying.resize(rows.size() * sources.size());
    double* values = block.varying.data();
    for (const QVector<double>* row : rows) {
        double* value = values++;
        for (const int column : qAsConst(sources)) {
            *value = column >= 0 && column < row->size() ? row->at(column) : notANumber;
            value += block.count;
        }
    }
    const int doseCount = doses.size();
    QVector<double> results(rows.size() * doseCount);
    endPointParser.evaluateBlock(block, DoseSlot, doses, results.data());
    QVector<QVector<double>> endpoints(rows.size());
    const double* ofRow = results.constData();
    for (QVector<double>& row : endpoints) {
        row = QVector<double>(doseCount);
        std::copy_n(ofRow, doseCount, row.data());
        ofRow += doseCount;
    }
    return endpoints;
}

qint64 endPoint::operationCount() const
{
    const int individuals = usesEtas ? qMax(1, simulatedIndividuals()) : 1;
    return qint64(doses.size()) * individuals
           * (operationsPerEvaluation + endPointParser.operationCount()
              + endpointBinding.etaSlots.size() * operationsPerEta);
}

bool endPoint::mayDrawRandomNumbers()
{
    bindEndpointNames();
    return usesEtas && !hasBlankOmega();
}

qint64 endPoint::randomNumberCount(const QVector<double>& row)
{
    if (!mayDrawRandomNumbers()) {
        return 0;
    }
    return qint64(doses.size()) * simulatedIndividuals()
           * MultiNormalSampler::numbersPerVector(omegaOf(row));
}

std::optional<endPointParserContainer> endPoint::startEvaluation(const QVector<double>& row)
{
    bindEndpointNames();
    if (!usesEtas || operationCount() > maximalPieceOperations) {
        return std::nullopt;
    }
    const MultiNormalSampler sampler(omegaOf(row));
    if (dosesPerGroup(sampler) < doses.size()) {
        return std::nullopt;
    }
    return population(endpointBinding.values(row), doses, simulatedIndividuals(), sampler);
}

/// The number of individuals simulated per dose: the same for every processor. This is
/// intended: the remainder of the division is dropped.
int endPoint::simulatedIndividuals() const
{
    return ::simulatedIndividuals(numSimulations, processorCount());
}

/// The number of doses whose random numbers and ETAs are held at a time.
int endPoint::dosesPerGroup(const MultiNormalSampler& sampler) const
{
    const int numbersPerIndividual =
        qMax(sampler.numbersPerVector(), endpointBinding.etaSlots.size());
    const qint64 numbersPerDose = qint64(simulatedIndividuals()) * numbersPerIndividual;
    return maximalGroupNumbers
           / int(qBound(qint64(1), numbersPerDose, qint64(maximalGroupNumbers)));
}

/// The individuals at the doses, with newly drawn random numbers.
endPointParserContainer endPoint::population(const QVector<double>& values,
                                             const QVector<double>& populationDoses,
                                             int individuals,
                                             const MultiNormalSampler& sampler) const
{
    endPointParserContainer container;
    container.setParser(endPointParser);
    SimulatedPopulation& simulated = container.population;
    simulated.values = values;
    simulated.doses = populationDoses;
    simulated.individuals = individuals;
    simulated.countedIndividuals = numSimulations;
    simulated.summary = populationSummary;
    simulated.etaSlots = endpointBinding.etaSlots;
    simulated.etaRows = endpointBinding.etaRows;
    simulated.sampler = sampler;
    simulated.numbers = sampler.drawNumbers(qint64(individuals) * populationDoses.size());
    return container;
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

/// Binds the names of the endpoint expression if they have changed, and keeps the ETA
/// bookkeeping.
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

bool endPoint::hasBlankOmega() const
{
    return allElements(omegaColumns, isFixed)
           && allElements(omega, [](double number) { return number == 0; });
}

QString endPoint::omegaText(int row, int column, int digits) const
{
    const int reference = omegaColumns.at(row).at(column);
    return reference >= 0 ? "COL" + QString::number(qint64(reference) + 1)
                          : significantDigits(omega.at(row).at(column), digits);
}

QVector<QVector<double>> endPoint::omegaOf(const QVector<double>& row) const
{
    QVector<QVector<double>> matrix = omega;
    if (allElements(omegaColumns, isFixed)) {
        return matrix;
    }
    const auto set = [&matrix](int i, int j, double value) {
        if (j < matrix.at(i).size()) {
            matrix[i][j] = value;
        }
    };
    for (int i = 0; i < matrix.size() && i < omegaColumns.size(); ++i) {
        const int columnCount = qMin(matrix.size(), omegaColumns.at(i).size());
        for (int j = 0; j < columnCount; ++j) {
            const int column = omegaColumns.at(i).at(j);
            if (column >= 0) {
                const double value = column < row.size() ? row.at(column) : notANumber;
                set(i, j, value);
                set(j, i, value);
            }
        }
    }
    return matrix;
}
