// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_STUDYCHECK_H
#define VELMORA_ANALYSIS_CHECKUP_STUDYCHECK_H

#include "analysis/study.h"

#include <QStringList>

// Checks of a study before results are calculated from it: what would make probabilities 0 or lower
// than they seem. Each returns sentences for a tooltip, the most serious first; none if all is
// well. The study may be uneven, and none of the checks changes it or draws a random number.

/// Reports that no model has a weight expression. Nothing without models.
QStringList checkAnyWeight(const Study& study);

/// Reports the samples of a data set without a usable weight, which count as misses: their number
/// and the highest probability in percent that remains possible. With one OFV per model only the
/// first sample counts. With model averaging a sample has no weight where no relative weight is
/// above 0, with model selection where no model is selected.
///
/// Evaluates the weights of the data set, unless values has them (see weightValues). Nothing where
/// there are no samples, where checkAnyWeight or checkShownModel reports why nothing has a weight,
/// and where a weight expression is malformed, which its diagnosis reports.
QStringList checkUsableWeights(const Study& study, int dataSet, const Table& values = {});

/// The same for all data sets in one sentence, which names the worst. Checks the first data set and
/// as many more as take no noticeable time; if these are not all, the sentence says how many they
/// are.
QStringList checkUsableWeightsOfAll(const Study& study);

/// checkUsableWeights and checkUsableWeightsOfAll, evaluated again only when something that
/// they depend on has changed.
class UsableWeights
{
public:
    QStringList ofDataSet(const Study& study, int dataSet);
    QStringList ofAll(const Study& study);

    /// To be called when the study has other bootstrap results.
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

/// Reports that the model shown on page "0" lacks data sets that model 0 has, so that model
/// averaging finds no weights for them. Nothing with model selection, which does not depend on this
/// model.
QStringList checkShownModel(const Study& study);

/// Reports models with a weight but a blank endpoint expression: their endpoint is 0 at every dose.
QStringList checkEndpointsGiven(const Study& study);

/// Reports, after a project was opened, that it does not keep the number of individuals, which is
/// still that of the window. Nothing if no endpoint has ETAs.
QStringList checkIndividualsAfterOpening(const Study& study, bool opened);

/// Reports files of simulation models, true models or true MEDs that could not be read to their end
/// and count as empty. Nothing without files.
QStringList checkReadToEnd(const QStringList& files);

/// Reports that simulation models from these files are still used although they were imported
/// before the current results. Nothing without files.
QStringList checkSimulationModels(const QStringList& files, bool importedBeforeResults);

#endif
