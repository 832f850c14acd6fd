// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_ENDPOINTPARSERCONTAINER_H
#define VELMORA_MODEL_ENDPOINTPARSERCONTAINER_H

#include "expr/parser.h"

#include <QVector>

/// One work item of a parallel evaluation: an expression and the individuals on which it
/// is evaluated. Owns all its data, so that any number of items run at once.
/// Individuals are given as single value vectors, or as blocks of them that differ in a
/// few slots only, which is faster.
class endPointParserContainer
{
public:
    ::parser parser;
    QVector<QVector<double>> variables; ///< [individual][slot]
    QVector<ValueBlock> blocks;
    /// One value per individual: those of variables, then those of the blocks in order.
    QVector<double> results;

    endPointParserContainer();

    void setParser(::parser p);
    void addVariable(QVector<double> v);
    void addBlock(const ValueBlock& block);

    /// Removes all individuals; the results stay.
    void clearVariables();
};

/// Evaluates the container's expression on all its individuals.
void evaluateEPParser(endPointParserContainer& c);

#endif
