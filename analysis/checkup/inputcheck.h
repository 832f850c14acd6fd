// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_INPUTCHECK_H
#define VELMORA_ANALYSIS_CHECKUP_INPUTCHECK_H

#include <QStringList>
#include <QVector>

// What the user should know about typed inputs, which all are taken as far as they can be
// read. Each check gives sentences for a tooltip, the gravest first; none if there is
// nothing to say.

/// Of the dose list (see parseNumberList): why it is empty, parts that were left out or
/// count once, doses that are no numbers, a range whose last dose lies beyond its end.
QStringList checkDoses(const QString& text);

/// The same of the target levels in percent, levels that every or no probability exceeds,
/// and levels that all lie below 1 %, as though typed as shares.
QStringList checkLevels(const QString& text);

/// Of a bound of the target interval: that its text, placed by the program or no number,
/// stands for the substitute, from when it is taken over; NaN.
QStringList checkBound(const QString& text, bool placed, double substitute);

/// Of a bound with which results are about to be made: that its text, placed by the program
/// or no number, stands for the substitute, and which endpoints that leaves out.
QStringList checkLowerBoundUsed(const QString& text, bool placed, double substitute);
QStringList checkUpperBoundUsed(const QString& text, bool placed, double substitute);

/// Of the target interval, lower < endpoint <= upper: that nothing can lie in it.
QStringList checkInterval(double lower, double upper);

/// Of a cell of omega: a text that is neither number nor column, a column beyond the
/// columnCount columns of a bootstrap row.
QStringList checkOmegaElement(const QString& text, int columnCount);

/// Of omega, [row][column]: that it is not symmetric, and the ETAs that it does not define
/// because it is not positive definite. ETAs without variance are no fault.
QStringList checkCovariance(const QVector<QVector<double>>& omega);

/// Of the number of simulated individuals: those that the processors do not divide.
QStringList checkIndividuals(int individuals, int processors);

/// Whether a table shows all of its rows and columns.
QStringList checkShown(int rows, int shownRows, int columns, int shownColumns);

#endif
