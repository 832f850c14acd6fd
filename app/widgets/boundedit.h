// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WIDGETS_BOUNDEDIT_H
#define VELMORA_APP_WIDGETS_BOUNDEDIT_H

#include "analysis/bound.h"

#include <QObject>
#include <QStringList>

class QLineEdit;

/// Keeps what a line edit for a bound of the target interval stands for. Owned by the line
/// edit. A text that it places counts as placed until the user changes it.
class BoundEdit : public QObject
{
public:
    /// Until it is edited the bound has the substitute's value.
    BoundEdit(QLineEdit* lineEdit, const BoundSubstitute& boundSubstitute);

    /// Takes over what was typed; gives the bound's value.
    double takeTyped();

    /// Shows the text of a project file; gives the bound's value.
    double restore(const QString& text);

    const Bound& bound() const { return current; }

    /// What the user should know about the text as it stands.
    QStringList findings() const;

    /// What it means for a result that is made with it.
    QStringList notesOfUse() const;

private:
    QLineEdit* edit;
    BoundSubstitute substitute;
    Bound current; ///< its text is that of the line edit
};

#endif
