// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_EXPR_PARSER_TOKEN_H
#define VELMORA_EXPR_PARSER_TOKEN_H

#include <QString>
#include <QVector>

/// An element of an arithmetic expression: a number, a variable, an operator (including
/// functions and parentheses), or a piece of text that is not classified yet.
class parser_token
{
public:
    /// The kinds of token held in type.
    enum Kind : qint32 { Error = -2, Unresolved = -1, Number = 0, Variable = 1, Operator = 2 };

    qint32 type = Unresolved;
    /// The number; for a variable its index into the value vector; for an operator its code.
    double value = 0.0;
    /// Precedence of an operator; higher binds tighter.
    qint32 priority = 0;
    /// Source text; for a function with its opening parenthesis, as in "Sqrt(".
    QString text;
    bool leftAssociative = true;
    /// Display text: a number with 6 significant digits, an operator's text, or one
    /// character whose code is the variable's index.
    QString label;

    parser_token();

    /// Cuts the text at every occurrence of op into pieces and operator tokens of kind
    /// opType and code opCode, in text order. Pieces that convert to a double are numbers.
    /// Without an occurrence the result is this token, and without text it is empty.
    /// What follows the last operator stays in text. A "$" in the text is cut like op.
    QVector<parser_token> split(QString op, int opType, double opCode);

    /// Applies this one-operand operator; the result replaces this token as a number. If this
    /// token is no such operator, or the operand is an operator, the token logs why and becomes
    /// an error. A variable beyond values is logged and counts as 0.0.
    void operate(parser_token operand, QVector<double> values);

    /// The same for this binary operator; first is the left operand.
    void operate(parser_token first, parser_token second, QVector<double> values);
};
Q_DECLARE_TYPEINFO(parser_token, Q_MOVABLE_TYPE);

#endif
