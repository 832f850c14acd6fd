// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/widgets/boundedit.h"

#include "analysis/checkup/inputcheck.h"

#include <QLineEdit>

BoundEdit::BoundEdit(QLineEdit* lineEdit, const BoundSubstitute& boundSubstitute)
    : QObject(lineEdit)
    , edit(lineEdit)
    , substitute(boundSubstitute)
    , current{lineEdit->text(), false, boundSubstitute.value}
{
    connect(edit, &QLineEdit::textChanged, this, [this](const QString& text) {
        current.text = text;
        current.placed = false;
    });
}

double BoundEdit::takeTyped()
{
    const Bound edited = editedBound(current, substitute);
    // Setting the same text would forget the selection and what can be undone.
    if (edited.text != current.text) {
        edit->setText(edited.text);
    }
    current = edited;
    return current.value;
}

double BoundEdit::restore(const QString& text)
{
    edit->setText(text);
    current = storedBound(text, substitute);
    current.text = edit->text(); // which may be cut
    return current.value;
}

QStringList BoundEdit::findings() const
{
    return checkBound(current.text, current.placed, substitute.value);
}

QStringList BoundEdit::notesOfUse() const
{
    const bool isLower = substitute.value < 0;
    return isLower ? checkLowerBoundUsed(current.text, current.placed, substitute.value)
                   : checkUpperBoundUsed(current.text, current.placed, substitute.value);
}
