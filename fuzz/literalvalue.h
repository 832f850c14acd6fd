// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_FUZZ_LITERALVALUE_H
#define VELMORA_FUZZ_LITERALVALUE_H

#include "expr/operators.h"
#include "expr/parser.h"

#include <algorithm>
#include <cmath>
#include <cstring>

/// The value of a postfix sequence by shortening it: again and again the next operator
/// replaces its operands. It is slow, and every faster way is compared with it. It logs what
/// the tokens log.
inline double literalValue(QVector<parser_token> tokens, const QVector<double>& values)
{
    for (int next = 0; tokens.size() > 1 && next < tokens.size();) {
        const auto found =
            std::find_if(tokens.constBegin() + next, tokens.constEnd(),
                         [](const parser_token& t) { return t.type == parser_token::Operator; });
        const int place = int(std::min(found, tokens.constEnd() - 1) - tokens.constBegin());
        parser_token token = tokens.at(place);
        const bool isBinary = token.value < OpeningParenthesis || place < 1;
        if (isBinary && place < 2) {
            break;
        }
        isBinary ? token.operate(tokens.at(place - 2), tokens.at(place - 1), values)
                 : token.operate(tokens.at(place - 1), values);
        const int operands = isBinary ? 2 : 1;
        tokens[place] = token;
        tokens.remove(place - operands, operands);
        next = place - operands + 1;
    }
    const bool isValue = tokens.size() == 1 && tokens.constFirst().type != parser_token::Error;
    return isValue ? tokens.constFirst().value : 0.0;
}

/// The bits of a number, the same for all NaNs; 0 and -0 differ.
inline quint64 bitsOf(double number)
{
    quint64 bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return std::isnan(number) ? ~quint64(0) : bits;
}

/// True if two numbers agree in every bit; all NaNs agree.
inline bool sameBits(double a, double b)
{
    return bitsOf(a) == bitsOf(b);
}

inline bool sameBits(const QVector<double>& a, const QVector<double>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](double first, double second) { return sameBits(first, second); });
}

#endif
