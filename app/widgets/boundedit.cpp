// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/widgets/boundedit.h"

#include "analysis/checkup/inputcheck.h"

#include <QLineEdit>

BoundEdit::BoundEdit(QLineEdit* lineEdit, const BoundSubstitute& boundSubstitute)
    : QObject(lineEdit)
    , edit(lineEdit)
    , substitute(boundSubstitute)
    , bound{lineEdit->text(), false, boundSubstitute.value}
{
    connect(edit, &QLineEdit::textChanged, this, [this](const QString& text) {
        bound.text = text;
        bound.placed = false;
    });
}

double BoundEdit::takeTyped()
{
    const Bound edited = editedBound(bound, substitute);
    // Setting the same text would forget the selection and what can be undone.
    if (edited.text != bound.text) {
        edit->setText(edited.text);
    }
    bound = edited;
    return bound.value;
}

double BoundEdit::restore(const QString& text)
{
    edit->setText(text);
    bound = storedBound(text, substitute);
    bound.text = edit->text(); // which may be cut
    return bound.value;
}

QStringList BoundEdit::findings() const
{
    return checkBound(bound.text, bound.placed, substitute.value);
}
