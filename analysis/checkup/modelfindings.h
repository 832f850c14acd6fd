// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_MODELFINDINGS_H
#define VELMORA_ANALYSIS_CHECKUP_MODELFINDINGS_H

#include "analysis/study.h"

#include <QStringList>

// Findings on the definition of one model of a study, as its cells show them: sentences, the most
// serious first; none if all is well. None of the functions changes the study, draws a random
// number or writes to the debug log.

/// Findings on the endpoint expression: its form, its names, and THETAs that read something else.
QStringList endpointFindings(const Study& study, int model);

/// Findings on the weight expression: its form and names; a K that no longer fits, if the
/// expression is still placed, the one proposed by the program (empty for none); values that do not
/// fit the scale.
QStringList weightFindings(const Study& study, int model, const QString& placed);

/// Findings on the covariance matrix where the endpoint uses it: it is not a covariance matrix,
/// ETAs without variance, elements from columns of other kinds. Where it comes from columns, only
/// as many bootstrap samples are checked as take no noticeable time.
QStringList omegaFindings(const Study& study, int model);

/// Findings on the elements of the covariance matrix where the endpoint uses it, each reported
/// once.
QStringList omegaElementFindings(const Study& study, int model);

/// Columns of the longest row of the model's first data set.
int widestRow(const Study& study, int model);

#endif
