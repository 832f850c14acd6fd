// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_ENDPOINTPARSERCONTAINER_H
#define VELMORA_MODEL_ENDPOINTPARSERCONTAINER_H

#include "expr/parser.h"
#include "model/randomng.h"

#include <QVector>

/// What an ETA of an individual costs: logarithm, root and cosine.
constexpr int operationsPerEta = 10;

/// Individuals simulated at several doses. Their random numbers are drawn beforehand, and
/// the ETAs are made of them during the evaluation.
struct SimulatedPopulation
{
    QVector<double> values;     ///< value vector; dose and ETAs are filled in
    QVector<double> doses;      ///< [dose]
    int individuals = 0;        ///< per dose
    QVector<int> etaSlots;      ///< slots that ETAs fill
    QVector<int> etaRows;       ///< the ETA of each, as 0-based row of omega
    MultiNormalSampler sampler; ///< of omega
    QVector<double> uniforms;   ///< those of the first dose's individuals, and so on
};

/// One work item of a parallel evaluation: an expression and the individuals on which it
/// is evaluated. Owns all its data, so that any number of items run at once.
/// Individuals are given as single value vectors, or as a simulated population, which is
/// faster.
class endPointParserContainer
{
public:
    ::parser parser;
    QVector<QVector<double>> variables; ///< [individual][slot]
    SimulatedPopulation population;
    /// One value per individual: those of variables, then those of the population, dose by
    /// dose.
    QVector<double> results;

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
