// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_EXPR_DIAGNOSIS_H
#define VELMORA_EXPR_DIAGNOSIS_H

#include <QString>
#include <QVector>

#include <functional>

/// A place of an expression that does something other than ordinary arithmetic.
struct Diagnosis
{
    int position;    ///< 0-based, of the first character concerned
    int length;      ///< characters concerned; 0 if something is missing there
    QString message; ///< what happens and what to do, in one sentence of plain text
};

/// Returns what is wrong with an expression, ordered by position. Of very many findings it
/// returns the first ones, and a last one that says so.
///
/// parser evaluates an expression without findings as ordinary arithmetic would: powers group
/// from the right, all else from the left, and functions have the values listed in
/// operators.h. The diagnosis has a grammar of its own and does not cut the text as parser
/// does, so it reports everything that parser understands differently.
///
/// nameFault returns the message for a name that has no value or an unexpected one, and an
/// empty text for a good name. It is called once per name of letters, digits, "_" and ".".
QVector<Diagnosis> diagnose(const QString& expression,
                            const std::function<QString(const QString& name)>& nameFault = {});

#endif
