// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_EXPR_PARSER_TOKEN_H
#define VELMORA_EXPR_PARSER_TOKEN_H

#include <QString>
#include <QVector>

/// One element of an arithmetic expression: a number, a variable, an operator (functions
/// and parentheses included) or a piece of text that is not classified yet.
class parser_token
{
public:
    /// The kinds of token held in type.
    enum Kind : qint32 { Error = -2, Unresolved = -1, Number = 0, Variable = 1, Operator = 2 };

    qint32 type = Unresolved;
    /// The number; of a variable its index into the value vector; of an operator its code.
    double value = 0.0;
    /// Precedence of an operator; higher binds tighter.
    qint32 priority = 0;
    /// Source text; of a function with its opening parenthesis, as in "Sqrt(".
    QString text;
    bool leftAssociative = true;
    /// Display text: a number with 6 significant digits, an operator's text, or one
    /// character whose code is the variable's index.
    QString label;

    parser_token();

    /// Cuts the text at every occurrence of op into pieces and operator tokens of kind
    /// opType and code opCode, in text order. Pieces that convert to a double are numbers.
    /// Without an occurrence the result is this token, and without text it is empty.
    /// Leaves in text what follows the last operator. A "$" in the text is cut as op is.
    QVector<parser_token> split(QString op, int opType, double opCode);

    /// Applies this one-operand operator; the result replaces this token as a number.
    /// On a token that is no such operator, or an operand that is one, logs why and becomes
    /// an error. A variable beyond values is logged and counts as 0.0.
    void operate(parser_token operand, QVector<double> values);

    /// The same for this binary operator, first being the left operand.
    void operate(parser_token first, parser_token second, QVector<double> values);
};
Q_DECLARE_TYPEINFO(parser_token, Q_MOVABLE_TYPE);

#endif
