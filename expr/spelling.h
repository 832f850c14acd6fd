// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_EXPR_SPELLING_H
#define VELMORA_EXPR_SPELLING_H

#include <QString>

// How well-formed numbers, names and operators are spelt. The parser takes more for numbers
// and names than these.

bool isDigit(QChar c);

/// Whether names may start with the character: ASCII letters and "_".
bool isLetter(QChar c);

/// Whether names may hold the character: letters, digits and ".".
bool isPartOfName(QChar c);

/// Where the digits end that stand at the position; the position itself if none do.
int digitsEnd(const QString& text, int position);

/// Where the number ends that the word starts with, its exponent left out; 0 if none.
int mantissaEnd(const QString& word);

/// Whether the word is a number up to the "e" of its exponent, and no further.
bool endsAtExponent(const QString& word);

/// Whether the word is a number without a sign, such as 2, 0.5, .5 and 1e3.
bool isPlainNumber(const QString& word);

/// Whether the parser takes the word for a number.
bool convertsToNumber(const QString& word);

/// One of ^ * / + -.
bool isBinaryOperator(QChar c);

/// Whether the character is a binary operator or a parenthesis.
bool endsWord(QChar c);

/// What to write for a character that looks like one of the language, such as a dash; empty
/// if there is nothing.
QString replacement(QChar c);

#endif
