// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_DEFINITIONCHECK_H
#define VELMORA_ANALYSIS_CHECKUP_DEFINITIONCHECK_H

#include "model/diagnosis.h"
#include "model/endpoint.h"

#include <QStringList>
#include <QVector>

// What the user should know about one model's endpoint and weight beyond the form of their
// expressions. Each check gives sentences for a tooltip, the gravest first; none if there
// is nothing to say.

/// Of an endpoint expression: that it is blank, typed or not, and thus 0 at every dose.
QStringList checkEndpointGiven(const QString& expression);

/// Of THETAs in an endpoint expression: those whose column the heading names as something
/// else, such as an OMEGA or a standard error. names are those of the columns (columnNames).
/// Nothing where there are not as many names as columns, since names may then stand apart
/// from their columns; with columns.count 0 they are taken to fit.
QVector<Diagnosis> diagnoseThetas(const QString& expression, const QStringList& names,
                                  const RowColumns& columns);

/// Of the ETAs in the endpoint expression: those that are 0 for every individual since
/// their row of omega holds zeros alone.
QStringList checkEtaVariances(const endPoint& definition);

/// Of the elements of omega that ETAs of the endpoint expression use: those that come from a
/// column whose name is that of a standard error, a standard deviation, a shrinkage or an
/// eigenvalue. names and columnCount as for diagnoseThetas.
QStringList checkOmegaColumns(const endPoint& definition, const QStringList& names,
                              int columnCount);

/// Of a weight expression that still is the text that the program placed: that K has become
/// another with the endpoint since. placed is empty where the user typed the weight. Nothing
/// while the endpoint is blank.
QStringList checkDefaultWeight(const QString& placed, const QString& weightExpression,
                               const parser& endPointParser);

/// Of a weight expression and its values for the samples: that it looks like an exponential
/// though weights are taken for logarithms, or has values below 0 though they are not. NaN
/// is ignored. Concerns model averaging alone, as model selection takes weights as they are.
QStringList checkWeightScale(const QString& expression, const QVector<double>& values,
                             bool logScale);

#endif
