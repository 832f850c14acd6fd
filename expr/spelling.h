// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_EXPR_SPELLING_H
#define VELMORA_EXPR_SPELLING_H

#include <QString>

// The spelling of well-formed numbers, names and operators. The parser accepts more texts as
// numbers and names than these.

bool isDigit(QChar c);

/// True if names may start with the character: ASCII letters and "_".
bool isLetter(QChar c);

/// True if names may contain the character: letters, digits and ".".
bool isPartOfName(QChar c);

/// The end of the digits at the position; the position itself if there are none.
int digitsEnd(const QString& text, int position);

/// The end of the number that the word starts with, without its exponent; 0 if none.
int mantissaEnd(const QString& word);

/// True if the word is a number that breaks off after the "e" of its exponent.
bool endsAtExponent(const QString& word);

/// True if the word is a number without a sign, such as 2, 0.5, .5 and 1e3.
bool isPlainNumber(const QString& word);

/// True if the parser takes the word for a number.
bool convertsToNumber(const QString& word);

/// True for ^ * / + -.
bool isBinaryOperator(QChar c);

/// True if the character is a binary operator or a parenthesis.
bool endsWord(QChar c);

/// What to write instead of a character that looks like one of the language, such as a dash;
/// empty if there is nothing.
QString replacement(QChar c);

#endif
