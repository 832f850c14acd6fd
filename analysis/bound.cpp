// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/bound.h"

Bound editedBound(const Bound& bound, const BoundSubstitute& substitute)
{
    if (bound.placed) {
        return bound;
    }
    bool isNumber = false;
    const double number = bound.text.toDouble(&isNumber);
    return isNumber ? Bound{bound.text, false, number}
                    : Bound{substitute.text, true, substitute.value};
}

Bound storedBound(const QString& text, const BoundSubstitute& substitute)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    const bool placed = text == substitute.text;
    return {text, placed, isNumber && !placed ? number : substitute.value};
}
