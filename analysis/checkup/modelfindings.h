// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_MODELFINDINGS_H
#define VELMORA_ANALYSIS_CHECKUP_MODELFINDINGS_H

#include "analysis/study.h"

#include <QStringList>

// What the user should know about the definition of one model of a study, as its cells tell
// it: sentences, the gravest first; none if there is nothing to say. None of them changes the
// study, draws a random number or writes to the debug log.

/// Of the endpoint expression: its form, its names, and THETAs that read something else.
QStringList endpointFindings(const Study& study, int model);

/// Of the weight expression: its form and names; a K that no longer fits, if the expression is
/// still the one that the program placed, empty for none; values that do not fit the scale.
QStringList weightFindings(const Study& study, int model, const QString& placed);

/// Of the covariance matrix where the endpoint uses it: that it is none, ETAs without
/// variance, elements that come from columns of other kinds. Where it comes from columns, as
/// many bootstrap samples are looked at as take no time that one would notice.
QStringList omegaFindings(const Study& study, int model);

/// Of the elements of the covariance matrix where the endpoint uses it, each told once.
QStringList omegaElementFindings(const Study& study, int model);

/// Columns of the longest row of the model's first data set.
int widestRow(const Study& study, int model);

#endif
