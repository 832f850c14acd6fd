// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_MANYDATASETS_H
#define VELMORA_REPORT_MANYDATASETS_H

#include "report/chapters.h"

#include <optional>

// The decision of a simulation study, over the doses of many data sets.

/// The number of data sets with each dose, for each level.
struct DoseCounts
{
    QVector<double> doses;        ///< candidate doses, and others that a project has chosen
    QVector<QVector<int>> counts; ///< [level][dose], with none at the end
};

/// None if aborted.
std::optional<DoseCounts> doseCounts(const DoseSelection& selection, const GoesOn& goesOn = {});

/// Adds the answer: the median doses, in a sentence or two.
void addManyAnswer(ReportDocument& document, const ReportContext& context);

/// Adds the doses by level over the data sets, and how certain they are.
void addManyMeds(ReportDocument& document, const ReportContext& context);

/// Adds the doses by other methods. Returns false if aborted.
bool addManyMethods(ReportDocument& document, const ReportContext& context);

/// Returns what speaks against the doses.
QStringList manyObjections(const ReportContext& context);

#endif
