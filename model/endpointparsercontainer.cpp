// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/endpointparsercontainer.h"

#include <QtConcurrentMap>

#include <algorithm>

namespace {

/// Operations on individuals from which handing work to other threads takes less time than
/// it saves.
constexpr qint64 parallelThreshold = 50000;

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
    const SimulatedPopulation& population = c.population;
    QVector<ValueBlock> blocks;
    blocks.reserve(population.doses.size());
    const double* uniforms = population.uniforms.constData();
    for (const double dose : population.doses) {
        ValueBlock block;
        block.common = population.values;
        block.common[DoseSlot] = dose;
        block.count = population.individuals;
        block.varyingSlots = population.etaSlots;
        block.varying = population.sampler.columns(uniforms, block.count, population.etaRows);
        uniforms += qptrdiff(population.sampler.uniformsPerVector()) * block.count;
        blocks.append(block);
    }
    const int first = c.results.size();
    c.results.resize(first + blocks.size() * population.individuals);
    c.parser.evaluateBlocks(blocks, c.results.data() + first);
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
