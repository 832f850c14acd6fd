// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_STUDYFINDINGS_H
#define VELMORA_ANALYSIS_CHECKUP_STUDYFINDINGS_H

#include "analysis/checkup/checkup.h"
#include "analysis/study.h"

#include <QStringList>

// Findings as lines of a list, each beginning with the model and input that it concerns.

/// The names of all models that have results or a definition.
QStringList checkedNames(const Study& study);

/// The history of a model's texts, which a study does not hold.
struct TextHistory
{
    bool isEndpointTyped;             ///< even if the text is empty
    QString placedWeight;             ///< that the program proposed; empty for none
    QStringList endpointRemarks = {}; ///< that precede the findings on the text itself
    QStringList weightRemarks = {};   ///< the same
};

/// All findings on a model: "emax, weight: ...".
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

/// All findings on the models and the other inputs of a study, as a window lists them. Checks that
/// read the samples of all data sets, as for weights and random numbers, are left out: only each
/// model's first data set is read.
QStringList studyFindings(const Study& study, const ImportCheckUp& checkUp,
                          const TypedInputs& typed);

#endif
