// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/endpointparsercontainer.h"

endPointParserContainer::endPointParserContainer() = default;

void endPointParserContainer::setParser(::parser p)
{
    parser = p;
}

void endPointParserContainer::addVariable(QVector<double> v)
{
    variables.append(v);
}

void endPointParserContainer::addBlock(const ValueBlock& block)
{
    blocks.append(block);
}

void endPointParserContainer::clearVariables()
{
    variables.clear();
    blocks.clear();
}

void evaluateEPParser(endPointParserContainer& c)
{
    c.results = c.parser.evaluateAll(c.variables);
    const int first = c.results.size();
    int count = first;
    for (const ValueBlock& block : qAsConst(c.blocks)) {
        count += block.count;
    }
    c.results.resize(count);
    c.parser.evaluateBlocks(c.blocks, c.results.data() + first);
}
