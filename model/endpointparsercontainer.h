// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_ENDPOINTPARSERCONTAINER_H
#define VELMORA_MODEL_ENDPOINTPARSERCONTAINER_H

#include "expr/parser.h"
#include "model/randomng.h"

#include <QVector>

/// What an ETA of an individual costs: logarithm, root and cosine.
constexpr int operationsPerEta = 10;

/// Individuals simulated at several doses. Their random numbers are taken out of the sequence
/// beforehand; numbers, ETAs and individual values are made dose by dose during the evaluation.
struct SimulatedPopulation
{
    QVector<double> values;     ///< value vector; dose and ETAs are filled in
    QVector<double> doses;      ///< [dose]
    int individuals = 0;        ///< per dose
    int countedIndividuals = 0; ///< that the summary counts, at least as many
    int summary = -1;           ///< percentile of the individuals, negative for the mean
    QVector<int> etaSlots;      ///< slots that ETAs fill
    QVector<int> etaRows;       ///< the ETA of each, as 0-based row of omega
    MultiNormalSampler sampler; ///< of omega
    RandomNumbers numbers;      ///< those of the first dose's individuals, and so on
    QVector<double> endpoints;  ///< [dose], by the evaluation
};

/// One work item of a parallel evaluation: an expression and the individuals on which it
/// is evaluated. Owns all its data, so that any number of items run at once.
/// Individuals are given as single value vectors, or as a simulated population, of which only
/// the endpoints are kept.
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

/// Evaluates all containers, on the global thread pool where that takes less time.
/// Returns when all are done.
void evaluateContainers(QVector<endPointParserContainer>& containers);

#endif
