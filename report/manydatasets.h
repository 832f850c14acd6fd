// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_MANYDATASETS_H
#define VELMORA_REPORT_MANYDATASETS_H

#include "report/chapters.h"

#include <optional>

// The decision of a simulation study, whose doses are those of many data sets.

/// In how many data sets each level has each dose.
struct DoseCounts
{
    QVector<double> doses;        ///< candidates and those that a project has chosen from others
    QVector<QVector<int>> counts; ///< [level][dose], with none at the end
};

/// None if it is given up.
std::optional<DoseCounts> doseCounts(const DoseSelection& selection, const GoesOn& goesOn = {});

/// Which doses, in a sentence or two.
void addManyAnswer(ReportDocument& document, const ReportContext& context);

/// The doses by level over the data sets, and how firm they are.
void addManyMeds(ReportDocument& document, const ReportContext& context);

/// The doses that other methods give; false if it is given up.
bool addManyMethods(ReportDocument& document, const ReportContext& context);

/// What speaks against the doses.
QStringList manyObjections(const ReportContext& context);

#endif
