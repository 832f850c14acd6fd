// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_ENDPOINTPARSERCONTAINER_H
#define VELMORA_MODEL_ENDPOINTPARSERCONTAINER_H

#include "expr/parser.h"
#include "model/randomng.h"

#include <QVector>

/// The cost of an ETA of an individual: logarithm, root and cosine.
constexpr int operationsPerEta = 10;

/// Individuals simulated at several doses. Their random numbers leave the sequence beforehand;
/// the evaluation makes numbers, ETAs and individual values dose by dose.
struct SimulatedPopulation
{
    QVector<double> values;     ///< value vector; dose and ETAs are filled in
    QVector<double> doses;      ///< [dose]
    int individuals = 0;        ///< per dose
    int countedIndividuals = 0; ///< individuals that the summary counts, at least as many
    int summary = -1;           ///< percentile of the individuals; negative for the mean
    QVector<int> etaSlots;      ///< slots that ETAs fill
    QVector<int> etaRows;       ///< the ETA of each, as 0-based row of omega
    MultiNormalSampler sampler; ///< of omega
    RandomNumbers numbers;      ///< of the first dose's individuals, then of the next dose's
    QVector<double> endpoints;  ///< [dose], filled by the evaluation
};

/// A work item of a parallel evaluation: an expression and its individuals. It owns all its data,
/// so any number of items can run at once. The individuals are single value vectors, or a
/// simulated population, of which only the endpoints are kept.
class endPointParserContainer
{
public:
    ::parser parser;
    QVector<QVector<double>> variables; ///< [individual][slot]
    SimulatedPopulation population;
    QVector<double> results; ///< one value per individual of variables

    endPointParserContainer();

    void setParser(::parser p);
    void addVariable(QVector<double> v);

    /// Removes all individuals; the results stay.
    void clearVariables();
};

/// Evaluates the container's expression on all its individuals.
void evaluateEPParser(endPointParserContainer& c);

/// Evaluates all containers, on the global thread pool if that takes less time.
/// Returns when all are done.
void evaluateContainers(QVector<endPointParserContainer>& containers);

#endif
