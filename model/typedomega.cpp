// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/typedomega.h"

void TypedOmega::resize(endPoint& definition, int size)
{
    if (!typing || !typing->given.isOf(definition)) {
        typing = Typing{{definition.omega, definition.omegaColumns}, {}};
    }
    definition.omega = typing->before.values;
    definition.omegaColumns = typing->before.columns;
    definition.resizeOmega(size);
    typing->given = {definition.omega, definition.omegaColumns};
}
