// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "expr/spelling.h"

bool isDigit(QChar c)
{
    return c >= '0' && c <= '9';
}

bool isLetter(QChar c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

bool isPartOfName(QChar c)
{
    return isLetter(c) || isDigit(c) || c == '.';
}

int digitsEnd(const QString& text, int position)
{
    while (position < text.size() && isDigit(text.at(position))) {
        ++position;
    }
    return position;
}

int mantissaEnd(const QString& word)
{
    const int whole = digitsEnd(word, 0);
    if (whole == word.size() || word.at(whole) != '.') {
        return whole;
    }
    const int end = digitsEnd(word, whole + 1);
    return end > 1 ? end : 0;
}

bool endsAtExponent(const QString& word)
{
    const int mantissa = mantissaEnd(word);
    return mantissa > 0 && mantissa + 1 == word.size() && word.at(mantissa).toUpper() == 'E';
}

bool isPlainNumber(const QString& word)
{
    const int mantissa = mantissaEnd(word);
    if (mantissa == 0 || mantissa == word.size()) {
        return mantissa > 0;
    }
    return endsAtExponent(word.left(mantissa + 1)) && mantissa + 1 < word.size()
           && digitsEnd(word, mantissa + 1) == word.size();
}

bool convertsToNumber(const QString& word)
{
    bool isNumber = false;
    word.toDouble(&isNumber);
    return isNumber;
}

bool isBinaryOperator(QChar c)
{
    return c == '^' || c == '*' || c == '/' || c == '+' || c == '-';
}

bool endsWord(QChar c)
{
    return isBinaryOperator(c) || c == '(' || c == ')';
}

QString replacement(QChar c)
{
    switch (c.unicode()) {
    case 0x2012: // dashes
    case 0x2013:
    case 0x2212: // minus sign
        return "-";
    case 0x00b7: // middle dot
    case 0x00d7: // multiplication sign
        return "*";
    case 0x00f7: // division sign
        return "/";
    case ',':
        return ".";
    default:
        return {};
    }
}
