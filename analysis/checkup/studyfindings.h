// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_STUDYFINDINGS_H
#define VELMORA_ANALYSIS_CHECKUP_STUDYFINDINGS_H

#include "analysis/checkup/checkup.h"
#include "analysis/study.h"

#include <QStringList>

// Findings as lines of a list, each led by what it is found on.

/// The names of all models that have results or a definition.
QStringList checkedNames(const Study& study);

/// How a model's texts came about, which a study does not tell.
struct TextHistory
{
    bool isEndpointTyped;             ///< be it that nothing was typed
    QString placedWeight;             ///< that the program proposed; empty for none
    QStringList endpointRemarks = {}; ///< that stand before what is found on the text itself
    QStringList weightRemarks = {};   ///< the same
};

/// Everything that is found on a model: "emax, weight: ...".
QStringList modelFindings(const Study& study, const ImportCheckUp& checkUp, int model,
                          const TextHistory& history);

/// Inputs as they were typed, of which a study has the numbers.
struct TypedInputs
{
    QString doses;
    QString levels;
    Bound lower;
    Bound upper;
};

/// Everything that is found on all models and on the other inputs of a study, as a window lists
/// it. What looks through the samples of all data sets, as for weights and random numbers, is left
/// out: of the samples, those of each model's first data set are looked at.
QStringList studyFindings(const Study& study, const ImportCheckUp& checkUp,
                          const TypedInputs& typed);

#endif
