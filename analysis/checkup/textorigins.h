// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_TEXTORIGINS_H
#define VELMORA_ANALYSIS_CHECKUP_TEXTORIGINS_H

#include <QMap>
#include <QStringList>

/// The model for which the text in each row of a table was typed.
///
/// Texts stay in their rows when other files are imported, so that a new model in front of others
/// separates these from their texts. Only names taken from files identify models. Folder imports
/// and projects only have numbers; they pass an empty name, for which there is no finding. Rows
/// count from 0.
class TextOrigins
{
public:
    /// Records that a text was typed or removed in the row, which belongs to a model of this name.
    void typed(int row, const QString& modelName);

    /// Records the number of rows of the table; the texts of other rows are gone.
    void resized(int rowCount);

    /// Reports that the row's text was typed for another model than the one of this name, where it
    /// stands now: "Typed for emax, now stands at betamod." Nothing if the names agree, or if
    /// either is not known.
    QStringList finding(int row, const QString& nameNow) const;

private:
    QMap<int, QString> names; ///< by row; none where the name is not known
};

#endif
