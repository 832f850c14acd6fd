// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_FIRMNESS_H
#define VELMORA_REPORT_FIRMNESS_H

#include "analysis/certainty/othermethods.h"
#include "report/chapters.h"

// How certain the doses of one data set are, and what speaks against them, in words.

/// A dose that holds in a smaller share of resamples, in percent, is reported as not certain.
constexpr double firmShare = 90.0;

/// The most levels that a sentence lists; it counts the others.
constexpr int mostLevelsTold = 12;

/// A dose that resamples choose, by its index; "none" after the last one.
QString resampledDose(const ReportedResult& result, int dose);

/// "0.7 in 65 %, 0.6 in 35 %": the doses that resamples choose, the most frequent first. At most
/// four are listed, and none below 1 %.
QString chosenDoses(const ReportedResult& result, const DoseStability& stability);

/// Whether the MED of a level is certain, in a sentence; empty if not known.
QString firmness(const ReportedResult& result, int level);

/// A result by another method, and how certain it is.
struct OtherMethod
{
    Study made; ///< with the method
    bool isChosen = false;
    std::optional<MethodResult> result; ///< none if its endpoints are missing
    QVector<DoseStability> stability;
};

/// The results by all methods, including the chosen one; empty if endpoints were not kept. None
/// if aborted.
std::optional<QVector<OtherMethod>> otherMethods(const ReportedResult& result,
                                                 const GoesOn& goesOn);

/// What speaks against the doses, the gravest first: doses that are not certain, levels that are
/// met exactly or exceeded only by lower doses, other doses by other methods and without failed
/// fits.
QStringList objections(const ReportedResult& result, const QVector<OtherMethod>& methods);

#endif
