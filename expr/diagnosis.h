// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_EXPR_DIAGNOSIS_H
#define VELMORA_EXPR_DIAGNOSIS_H

#include <QString>
#include <QVector>

#include <functional>

/// One place of an expression that does something else than ordinary arithmetic would.
struct Diagnosis
{
    int position;    ///< 0-based, of the first character concerned
    int length;      ///< characters concerned, 0 where something is missing
    QString message; ///< what happens, and the repair; one sentence of plain text
};

/// What is wrong with an expression, ordered by position; of very many findings the first
/// ones, and a last one that says so.
///
/// An expression without findings is evaluated by parser as ordinary arithmetic would:
/// powers group from the right, all else from the left, and functions have the values
/// listed in operators.h. The text is read on its own, against the grammar of such
/// expressions and not as parser cuts it, so that nothing which parser understands
/// differently passes.
///
/// nameFault gives the message for a name that has no value or an unexpected one, and an
/// empty text for a good name. It is asked once per name of letters, digits, "_" and ".".
QVector<Diagnosis> diagnose(const QString& expression,
                            const std::function<QString(const QString& name)>& nameFault = {});

#endif
