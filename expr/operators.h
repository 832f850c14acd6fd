// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_EXPR_OPERATORS_H
#define VELMORA_EXPR_OPERATORS_H

#include <cmath>

// The arithmetic of the expression language, in one place for all ways of evaluating.

/// Codes of the operators. Codes from 100 on take one operand.
enum OperatorCode {
    PowerOperator = 0,
    TimesOperator = 1,
    DivideOperator = 2,
    PlusOperator = 3,
    MinusOperator = 4,
    OpeningParenthesis = 100,
    ClosingParenthesis = 101,
    ExpFunction = 102,
    LogFunction = 103,
    Log10Function = 104,
    AbsFunction = 105,
    SignFunction = 106,
    SqrtFunction = 107,
    SinFunction = 108,
    CosFunction = 109,
    TanFunction = 110,
    ASinFunction = 111,
    ACosFunction = 112,
    ATanFunction = 113
};

/// The code of a token as an integer; -1, which has no meaning, for any other number.
inline int operatorCode(double value)
{
    return value >= 0 && value <= ATanFunction ? static_cast<int>(value) : -1;
}

/// Calls the visitor with the function of a binary operator, double(double, double).
/// Codes without a meaning give 0.0 for all operands.
template <typename Visitor>
auto visitBinaryOperator(int code, Visitor visitor)
{
    switch (code) {
    case PowerOperator:
        return visitor([](double a, double b) { return std::pow(a, b); });
    case TimesOperator:
        return visitor([](double a, double b) { return a * b; });
    case DivideOperator:
        return visitor([](double a, double b) { return a / b; });
    case PlusOperator:
        return visitor([](double a, double b) { return a + b; });
    case MinusOperator:
        return visitor([](double a, double b) { return a - b; });
    default:
        return visitor([](double, double) { return 0.0; });
    }
}

/// Calls the visitor with the function of a one-operand operator, double(double).
/// Codes without a meaning give 0.0 for all operands.
template <typename Visitor>
auto visitUnaryOperator(int code, Visitor visitor)
{
    switch (code) {
    case OpeningParenthesis:
        return visitor([](double x) { return x; });
    case ExpFunction:
        return visitor([](double x) { return std::exp(x); });
    case LogFunction:
        return visitor([](double x) { return std::log(x); });
    case Log10Function:
        // Deliberately a quotient of natural logarithms: log10(1000) is just below 3.
        return visitor([](double x) { return std::log(x) / 2.302585092994046; });
    case AbsFunction:
        // Keeps -0.0, unlike fabs.
        return visitor([](double x) { return x < 0 ? -x : x; });
    case SignFunction:
        // Deliberately positive for 0 and NaN.
        return visitor([](double x) { return x < 0 ? -1.0 : 1.0; });
    case SqrtFunction:
        // pow and sqrt differ in the last bit, at -0.0 and at minus infinity.
        return visitor([](double x) { return std::pow(x, 0.5); });
    case SinFunction:
        return visitor([](double x) { return std::sin(x); });
    case CosFunction:
        return visitor([](double x) { return std::cos(x); });
    case TanFunction:
        return visitor([](double x) { return std::tan(x); });
    case ASinFunction:
        return visitor([](double x) { return std::asin(x); });
    case ACosFunction:
        return visitor([](double x) { return std::acos(x); });
    case ATanFunction:
        return visitor([](double x) { return std::atan(x); });
    default:
        return visitor([](double) { return 0.0; });
    }
}

#endif
