// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/endpointparsercontainer.h"

#include "model/percentile.h"

#include <QtConcurrentMap>

#include <algorithm>

namespace {

/// The number of operations from which sharing work with other threads saves time.
constexpr qint64 parallelThreshold = 50000;

void evaluatePopulation(parser& expression, SimulatedPopulation& population)
{
    const int count = population.individuals;
    ValueBlock block{population.values, population.etaSlots, {}, count};
    block.varying.resize(population.etaSlots.size() * count);
    auto evaluator = expression.blockEvaluator(block.common.size(), block.varyingSlots);
    QVector<double> individuals(count);
    population.endpoints.clear(); // an evaluation may be repeated
    population.endpoints.reserve(population.doses.size());
    RandomNumbers numbers = population.numbers;
    for (const double dose : qAsConst(population.doses)) {
        block.common[DoseSlot] = dose;
        population.sampler.fillColumns(numbers, count, population.etaRows, block.varying.data());
        if (evaluator) {
            evaluator->evaluate(block, individuals.data());
        } else {
            expression.evaluateBlock(block, individuals.data());
        }
        population.endpoints.append(
            summaryOfIndividuals(individuals, population.countedIndividuals, population.summary));
    }
}

} // namespace

endPointParserContainer::endPointParserContainer() = default;

void endPointParserContainer::setParser(::parser p)
{
    parser = p;
}

void endPointParserContainer::addVariable(QVector<double> v)
{
    variables.append(v);
}

void endPointParserContainer::clearVariables()
{
    variables.clear();
    population = SimulatedPopulation();
}

void evaluateEPParser(endPointParserContainer& c)
{
    c.results = c.parser.evaluateAll(c.variables);
    evaluatePopulation(c.parser, c.population);
}

void evaluateContainers(QVector<endPointParserContainer>& containers)
{
    qint64 operations = 0;
    for (const endPointParserContainer& container : qAsConst(containers)) {
        const SimulatedPopulation& population = container.population;
        operations +=
            qint64(population.doses.size()) * population.individuals
            * (container.parser.tree.size() + population.etaSlots.size() * operationsPerEta);
    }
    if (containers.size() > 1 && operations >= parallelThreshold) {
        QtConcurrent::blockingMap(containers, evaluateEPParser);
    } else {
        std::for_each(containers.begin(), containers.end(), evaluateEPParser);
    }
}
