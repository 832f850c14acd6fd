// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WIDGETS_BOUNDEDIT_H
#define VELMORA_APP_WIDGETS_BOUNDEDIT_H

#include "analysis/bound.h"

#include <QObject>
#include <QStringList>

class QLineEdit;

/// The value of a line edit for a bound of the target interval. Owned by the line edit. A text that
/// it places counts as placed until the user changes it.
class BoundEdit : public QObject
{
public:
    /// Until it is edited the bound has the substitute's value.
    BoundEdit(QLineEdit* lineEdit, const BoundSubstitute& boundSubstitute);

    /// Takes over the typed text; returns the bound's value.
    double takeTyped();

    /// Shows the text of a project file; returns the bound's value.
    double restore(const QString& text);

    const Bound& bound() const { return current; }

    /// Findings on the current text.
    QStringList findings() const;

    /// Findings on results that are calculated with it.
    QStringList notesOfUse() const;

private:
    QLineEdit* edit;
    BoundSubstitute substitute;
    Bound current; ///< its text is that of the line edit
};

#endif
