// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_STUDYCHECK_H
#define VELMORA_ANALYSIS_CHECKUP_STUDYCHECK_H

#include "analysis/study.h"

#include <QStringList>

// What the user should know about a study before results are made from it: what would make
// probabilities 0 or lower than they look. Each check gives sentences for a tooltip, the
// gravest first; none if there is nothing to say. The study may be uneven, and none of the
// checks changes it or draws a random number.

/// That no model has a weight expression that is not blank. Nothing without models.
QStringList checkAnyWeight(const Study& study);

/// Of the samples of a data set without a usable weight, which count as misses: how many
/// they are and the probability in percent that they leave possible. With one
/// OFV per model it is the first sample alone that counts. With model averaging a sample
/// has no weight where no relative weight is above 0, with model selection where no model
/// is selected.
///
/// Evaluates the weights of the data set, unless values has them, as of weightValues. Nothing where
/// there are no samples, where checkAnyWeight or checkShownModel tells why nothing has a weight,
/// and where a weight expression is malformed, which its diagnosis tells.
QStringList checkUsableWeights(const Study& study, int dataSet, const Table& values = {});

/// The same of all data sets in one sentence, which names the worst. Looks at the first data
/// set and at as many more as take no time that one would notice; if these are not all, a
/// finding says how many they are.
QStringList checkUsableWeightsOfAll(const Study& study);

/// checkUsableWeights and checkUsableWeightsOfAll, evaluated again only when something that
/// they depend on has changed.
class UsableWeights
{
public:
    QStringList ofDataSet(const Study& study, int dataSet);
    QStringList ofAll(const Study& study);

    /// To be told when the study has other bootstrap results.
    void forget() { *this = UsableWeights(); }

private:
    struct Answer
    {
        QStringList inputs;
        QStringList findings;
    };
    Answer dataSetAnswer;
    Answer allAnswer;
};

/// That the model shown on page "0" lacks data sets that model 0 has, so that model averaging
/// finds no weights for them. Nothing with model selection, which does not ask.
QStringList checkShownModel(const Study& study);

/// Of models that have a weight: that their endpoint expression is blank, so that the
/// endpoint is 0 at every dose.
QStringList checkEndpointsGiven(const Study& study);

/// Of a project that was opened: that the number of individuals is none of its items and
/// stands as it was in the window. Nothing where no endpoint has ETAs.
QStringList checkIndividualsAfterOpening(const Study& study, bool opened);

/// That files of simulation models, true models or true MEDs of these names could not be read to
/// their end, and count as empty. Nothing without files.
QStringList checkReadToEnd(const QStringList& files);

/// That simulation models from files of these names are still held although they were
/// imported before the present results. Nothing without files.
QStringList checkSimulationModels(const QStringList& files, bool importedBeforeResults);

#endif
