// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_RANDOMNUMBERS_H
#define VELMORA_TESTS_SUPPORT_RANDOMNUMBERS_H

#include "compat/qtversions.h"

#include <QtGlobal>

// The random sequence of the program, for the calling thread.
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

inline void seedRandomNumbers(unsigned seed)
{
    qsrand(seed);
}

/// A number in [0, 1], as the program draws it.
inline double nextUniform()
{
    return qrand() / 2147483647.0;
}

QT_WARNING_POP

#endif
