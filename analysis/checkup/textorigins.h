// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_TEXTORIGINS_H
#define VELMORA_ANALYSIS_CHECKUP_TEXTORIGINS_H

#include <QMap>
#include <QStringList>

/// For which model the text in each row of a table was typed.
///
/// Texts stay in their rows when other files are imported, so that a model which comes in
/// front of others moves all of them away from their texts. Only names taken from files tell
/// models apart: numbers, as folder imports and projects give them, are passed as an empty
/// name, with which nothing is said. Rows count from 0.
class TextOrigins
{
public:
    /// A text was typed or removed in the row, which stands at a model of this name.
    void typed(int row, const QString& modelName);

    /// The table has so many rows now; what stood in others is gone.
    void resized(int rowCount);

    /// That the row's text was typed for another model than the one of this name, at which
    /// it stands now: "Typed for emax, now stands at betamod." Nothing if the names agree,
    /// or if either is not known.
    QStringList finding(int row, const QString& nameNow) const;

private:
    QMap<int, QString> names; ///< by row; none where the name is not known
};

#endif
