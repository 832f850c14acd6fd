// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_DEFINITIONCHECK_H
#define VELMORA_ANALYSIS_CHECKUP_DEFINITIONCHECK_H

#include "model/diagnosis.h"
#include "model/endpoint.h"

#include <QStringList>
#include <QVector>

// Checks of one model's endpoint and weight beyond the form of their expressions. Each returns
// sentences for a tooltip, the most serious first; none if all is well.

/// Reports an endpoint expression that is blank, typed or not, and thus 0 at every dose.
QStringList checkEndpointGiven(const QString& expression);

/// Reports THETAs in an endpoint expression whose column has another name in the heading, such as
/// that of an OMEGA or a standard error. names are those of the columns (columnNames). Nothing if
/// the numbers of names and columns differ, since names may then stand above other columns; with
/// columns.count 0 they are assumed to fit.
QVector<Diagnosis> diagnoseThetas(const QString& expression, const QStringList& names,
                                  const RowColumns& columns);

/// Reports the ETAs in the endpoint expression that are 0 for every individual because their row of
/// omega holds only zeros.
QStringList checkEtaVariances(const endPoint& definition);

/// Reports the elements of omega used by ETAs of the endpoint expression that come from a column
/// with the name of a standard error, a standard deviation, a shrinkage or an eigenvalue. names and
/// columnCount as for diagnoseThetas.
QStringList checkOmegaColumns(const endPoint& definition, const QStringList& names,
                              int columnCount);

/// Reports a weight expression that is still the text proposed by the program although K has
/// changed with the endpoint since. placed is empty where the user typed the weight. Nothing while
/// the endpoint is blank.
QStringList checkDefaultWeight(const QString& placed, const QString& weightExpression,
                               const parser& endPointParser);

/// Reports a weight expression that looks like an exponential although weights are read as
/// logarithms, or that has values below 0 although they are not; values are those of the samples.
/// NaN is ignored. Only model averaging is concerned, as model selection takes weights as they are.
QStringList checkWeightScale(const QString& expression, const QVector<double>& values,
                             bool logScale);

#endif
