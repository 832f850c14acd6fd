// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_MANYDATASETS_H
#define VELMORA_REPORT_MANYDATASETS_H

#include "report/chapters.h"

// The decision of a simulation study, whose doses are those of many data sets.

/// The candidate doses and those that a project has chosen from others.
QVector<double> dosesToCount(const DoseSelection& selection);

/// In how many data sets a level has each dose: [dose of dosesToCount], with none at the end.
QVector<int> doseCounts(const DoseSelection& selection, int level);

/// Which doses, in a sentence or two.
void addManyAnswer(ReportDocument& document, const ReportContext& context);

/// The doses by level over the data sets, and how firm they are.
void addManyMeds(ReportDocument& document, const ReportContext& context);

/// The doses that other methods give; false if it is given up.
bool addManyMethods(ReportDocument& document, const ReportContext& context);

/// What speaks against the doses.
QStringList manyObjections(const ReportContext& context);

#endif
