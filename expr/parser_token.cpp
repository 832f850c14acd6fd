// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "expr/parser_token.h"

#include "expr/operators.h"

#include <QDebug>

namespace {

/// Makes the token a number if its whole text is one.
void classify(parser_token& token)
{
    bool isNumber = false;
    const double number = token.text.toDouble(&isNumber);
    if (isNumber) {
        token.type = parser_token::Number;
        token.value = number;
        token.label = QString::number(number, 'g', 6);
    }
}

parser_token pieceToken(const QString& text)
{
    parser_token piece;
    piece.text = text;
    classify(piece);
    return piece;
}

bool isOperatorOrError(const parser_token& token)
{
    return token.type == parser_token::Operator || token.type == parser_token::Error;
}

/// False if the token is a variable that values does not hold.
bool resolve(const parser_token& token, const QVector<double>& values, double& number)
{
    if (token.type != parser_token::Variable) {
        number = token.value;
        return true;
    }
    // -1 < value, as a fraction above -1 truncates to the index 0; NaN is in no range.
    const bool inRange = token.value > -1.0 && token.value < values.size();
    number = inRange ? values.at(static_cast<int>(token.value)) : 0.0;
    return inRange;
}

} // namespace

parser_token::parser_token() = default;

QVector<parser_token> parser_token::split(QString op, int opType, double opCode)
{
    parser_token operatorToken;
    operatorToken.type = opType;
    operatorToken.value = opCode;
    operatorToken.text = op;
    operatorToken.label = op;

    const QChar mark('$');
    text.replace(op, mark);
    QVector<parser_token> pieces;
    if (text.isEmpty()) {
        return pieces;
    }
    int position = 0;
    for (int cut = text.indexOf(mark); cut >= 0; cut = text.indexOf(mark, position)) {
        if (cut > position) {
            pieces.append(pieceToken(text.mid(position, cut - position)));
        }
        pieces.append(operatorToken);
        position = cut + 1;
    }
    text.remove(0, position);
    if (pieces.isEmpty()) {
        classify(*this);
        pieces.append(*this);
    } else if (!text.isEmpty()) {
        pieces.append(pieceToken(text));
    }
    return pieces;
}

void parser_token::operate(parser_token operand, QVector<double> values)
{
    // Written so that a code of NaN passes: every comparison with it is false.
    if (type != Operator || value < OpeningParenthesis || value == ClosingParenthesis) {
        qDebug("This token is not an operator");
        type = Error;
        return;
    }
    if (isOperatorOrError(operand)) {
        qDebug("Cannot operate on operator");
        type = Error;
        return;
    }
    double number = 0.0;
    if (!resolve(operand, values, number)) {
        qDebug("not enough variable values");
    }
    value = visitUnaryOperator(operatorCode(value), [number](auto apply) { return apply(number); });
    type = Number;
}

void parser_token::operate(parser_token first, parser_token second, QVector<double> values)
{
    if (type != Operator || value > OpeningParenthesis) {
        qDebug("This token is not an operator");
        type = Error;
        return;
    }
    if (isOperatorOrError(first) || isOperatorOrError(second)) {
        qDebug("Cannot operate on operator");
        type = Error;
        return;
    }
    double left = 0.0;
    double right = 0.0;
    if (!resolve(second, values, right)) {
        qDebug("not enough variable values");
    }
    if (!resolve(first, values, left)) {
        qDebug("not enough variable values");
    }
    value = visitBinaryOperator(operatorCode(value),
                                [left, right](auto apply) { return apply(left, right); });
    type = Number;
}
