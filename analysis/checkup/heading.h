// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_HEADING_H
#define VELMORA_ANALYSIS_CHECKUP_HEADING_H

#include "model/tables.h"

#include <QStringList>
#include <QVector>

// Headings of raw_results files. They are kept cut at every comma, so that names with commas, such
// as "OMEGA(2,1)", are split and the pieces after them stand above the wrong columns.

/// A heading once read, kept because reading one of a million names takes long.
struct Heading
{
    QStringList names;      ///< of the columns, as returned by columnNames
    QChar foreignSeparator; ///< as returned by the function of that name
    bool isNumeric = false; ///< whether a row of data stands in its place
    int firstCut = 0;       ///< column of the first name with a comma, which is cut at it where
                            ///< pieces are shown; the number of names if there is none
};

Heading headingOf(const QStringList& pieces);

/// The headings of all models. One that repeats the heading before shares its memory.
QVector<Heading> headingsOf(const QVector<QStringList>& pieces);

/// The true names of the columns, [column]: the pieces joined again, cut at the commas
/// outside of quotes, without quotes and outer blanks. A quote that does not close before a
/// comma or the end counts as a letter. Empty for an empty heading.
QStringList columnNames(const QStringList& headingPieces);

/// The separator of a heading with semicolons or tabs rather than commas, as a spreadsheet may
/// write it; null for any other heading.
QChar foreignSeparator(const QStringList& headingPieces);

/// 0-based column of that name, in any case; -1 if there is none. The first of several.
int columnNamed(const QStringList& names, const QString& name);

/// The content of a column that is, by its name, a parameter other than a THETA or belongs behind
/// the parameters: "an OMEGA", "a SIGMA", "a standard error", "a shrinkage", "an eigenvalue". Empty
/// for other names and labels, and beyond the names. 0-based.
QString otherThanTheta(const QStringList& names, int column);

/// The content of each of the first count columns and the names of expressions that read it, for
/// tooltips, [column]: "COL21, read as THETA1, named CL, first value 12.3". THETAs extend up to the
/// first column that is, by its name, another kind of parameter or a standard error; labels chosen
/// by the model's author do not show where the OMEGAs begin. Column settings are 1-based.
QStringList describeColumns(int count, const QStringList& names, const Table& rows, int colNumOFV,
                            int colNumTHETA1);

#endif
