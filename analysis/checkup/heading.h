// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_HEADING_H
#define VELMORA_ANALYSIS_CHECKUP_HEADING_H

#include "model/tables.h"

#include <QStringList>
#include <QVector>

// Headings of raw_results files. They are kept cut at every comma, so that names that hold
// commas, such as "OMEGA(2,1)", fall apart and the pieces drift away from their columns.

/// What a heading says, kept since one of a million names takes its time to read.
struct Heading
{
    QStringList names;      ///< of the columns, as columnNames gives them
    QChar foreignSeparator; ///< as the function of that name gives it
    bool isNumeric = false; ///< whether a row of data stands in its place
    int firstCut = 0;       ///< column of the first name with a comma, which is cut at it where
                            ///< pieces are shown; the number of names if there is none
};

Heading headingOf(const QStringList& pieces);

/// The same of each model. One that repeats the heading before shares its memory.
QVector<Heading> headingsOf(const QVector<QStringList>& pieces);

/// The true names of the columns, [column]: the pieces joined again, cut at the commas
/// outside of quotes, without quotes and outer blanks. A quote that does not close before a
/// comma or the end counts as a letter. Empty for an empty heading.
QStringList columnNames(const QStringList& headingPieces);

/// The separator of a heading that is parted by semicolons or tabs rather than commas, as
/// a spreadsheet may write it; null for any other heading.
QChar foreignSeparator(const QStringList& headingPieces);

/// 0-based column of that name, in any case; -1 if there is none. The first of several.
int columnNamed(const QStringList& names, const QString& name);

/// What a column holds that by its name is another kind of parameter than a THETA or belongs
/// behind the parameters: "an OMEGA", "a SIGMA", "a standard error", "a shrinkage", "an
/// eigenvalue". Empty for other names and labels, and beyond the names. 0-based.
QString otherThanTheta(const QStringList& names, int column);

/// What stands in each of so many columns and which names of expressions read it, for
/// tooltips, [column]: "COL21, read as THETA1, named CL, first value 12.3". THETAs are told
/// up to the first column that by its name is another kind of parameter or a standard error;
/// labels that the model's author chose do not show where the OMEGAs begin. Column settings
/// are 1-based.
QStringList describeColumns(int count, const QStringList& names, const Table& rows, int colNumOFV,
                            int colNumTHETA1);

#endif
