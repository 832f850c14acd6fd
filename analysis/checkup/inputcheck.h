// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_INPUTCHECK_H
#define VELMORA_ANALYSIS_CHECKUP_INPUTCHECK_H

#include <QStringList>
#include <QVector>

// Checks of typed inputs, all of which are used as far as they can be read. Each check returns
// sentences for a tooltip, the most serious first; none if all is well.

/// Remarks on the dose list (see parseNumberList): why it is empty, parts that are left out or
/// counted once, doses that are not numbers, a range whose last dose lies beyond its end.
QStringList checkDoses(const QString& text);

/// Remarks on the probability levels in percent: the same, levels that every or no probability
/// exceeds, and levels that all lie below 1 %, as if typed as shares.
QStringList checkLevels(const QString& text);

/// Remarks on a bound of the target interval: a text that is placed by the program or is not a
/// number, and stands for the substitute as soon as it is used; NaN.
QStringList checkBound(const QString& text, bool placed, double substitute);

/// Remarks on a bound before a calculation: a text that is placed by the program or is not a
/// number, and stands for the substitute, and the endpoints that this leaves out.
QStringList checkLowerBoundUsed(const QString& text, bool placed, double substitute);
QStringList checkUpperBoundUsed(const QString& text, bool placed, double substitute);

/// Remarks on the target interval, lower < endpoint <= upper: nothing can lie in it.
QStringList checkInterval(double lower, double upper);

/// Remarks on a cell of omega: a text that is neither a number nor a column, a column beyond the
/// columnCount columns of a bootstrap row.
QStringList checkOmegaElement(const QString& text, int columnCount);

/// Remarks on omega, [row][column]: it is not symmetric, or does not define some ETAs because it is
/// not positive definite. ETAs without variance are no fault.
QStringList checkCovariance(const QVector<QVector<double>>& omega);

/// Remarks on the number of simulated individuals: some are not simulated, as the number of
/// processors does not divide it.
QStringList checkIndividuals(int individuals, int processors);

/// Remarks on a table that does not show all of its rows and columns.
QStringList checkShown(int rows, int shownRows, int columns, int shownColumns);

#endif
