// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_TYPEDOMEGA_H
#define VELMORA_MODEL_TYPEDOMEGA_H

#include "model/endpoint.h"

#include <optional>

/// Changes the number of ETAs while a user types it. Each digit acts at once, and the 1 of a 12
/// cuts omega down to one element. The cut part comes back when the number grows again, until
/// the typing ends or omega changes in another way.
class TypedOmega
{
public:
    /// Resizes omega as it was before the typing began.
    void resize(endPoint& definition, int size);

    /// Ends the typing of a number and drops the cut part.
    void end() { typing.reset(); }

private:
    struct Omega
    {
        QVector<QVector<double>> values;
        QVector<QVector<int>> columns;
        bool isOf(const endPoint& definition) const
        {
            return values == definition.omega && columns == definition.omegaColumns;
        }
    };
    struct Typing
    {
        Omega before;
        Omega given; ///< the result of the last digit
    };
    std::optional<Typing> typing;
};

#endif
