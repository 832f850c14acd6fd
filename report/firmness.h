// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_FIRMNESS_H
#define VELMORA_REPORT_FIRMNESS_H

#include "analysis/certainty/othermethods.h"
#include "report/chapters.h"

// How firm the doses of one data set are, and what speaks against them, in words.

/// Doses that hold in fewer resamples, in percent, are told to be not firm.
constexpr double firmShare = 90.0;

/// Levels that a sentence lists; of more it says how many they are.
constexpr int mostLevelsTold = 12;

/// A dose of a resampling by its index, "none" behind the last.
QString resampledDose(const ReportedResult& result, int dose);

/// "0.7 in 65 %, 0.6 in 35 %": the doses that resamples choose, the most frequent first; those
/// of less than 1 % are left out, and at most four are told.
QString chosenDoses(const ReportedResult& result, const DoseStability& stability);

/// Whether the MED of a level is firm, in a sentence; empty where that is not known.
QString firmness(const ReportedResult& result, int level);

/// A result by another method, with how firm it is.
struct OtherMethod
{
    Study made; ///< with the method
    bool isChosen = false;
    std::optional<MethodResult> result; ///< none where it is not at hand
    QVector<DoseStability> stability;
};

/// Of all methods, the chosen one included; empty where endpoints were not kept. None if it is
/// given up.
std::optional<QVector<OtherMethod>> otherMethods(const ReportedResult& result,
                                                 const GoesOn& goesOn);

/// What speaks against the doses, the gravest first: those that are not firm, levels that are
/// met exactly or exceeded by lower doses alone, other doses by other methods and without fits
/// that failed.
QStringList objections(const ReportedResult& result, const QVector<OtherMethod>& methods);

#endif
