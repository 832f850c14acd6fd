// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/studyfindings.h"

#include "analysis/checkup/definitioncheck.h"
#include "analysis/checkup/inputcheck.h"
#include "analysis/checkup/modelfindings.h"
#include "analysis/checkup/studycheck.h"

namespace {

int checkedCount(const Study& study)
{
    return qMax(study.rawResults.size(), study.endPoints.size());
}

QString checkedName(const Study& study, int model)
{
    return model < study.endPoints.size() ? study.endPoints.at(model).name
                                          : QString("model %1").arg(model);
}

} // namespace

QStringList checkedNames(const Study& study)
{
    QStringList names;
    for (int model = 0; model < checkedCount(study); ++model) {
        names.append(checkedName(study, model));
    }
    return names;
}

QStringList modelFindings(const Study& study, const ImportCheckUp& checkUp, int model,
                          const TextHistory& history)
{
    QStringList lines;
    const QString name = checkedName(study, model);
    const auto add = [&](const QString& input, const QStringList& found) {
        for (const QString& finding : found) {
            lines.append(name + ", " + input + ": " + finding);
        }
    };
    add("bootstrap results", checkUp.models.value(model).findings);
    if (model >= study.endPoints.size()) {
        return lines; // of an aborted import
    }
    add("endpoint", history.isEndpointTyped
                        ? history.endpointRemarks + endpointFindings(study, model)
                        : checkEndpointGiven({}));
    add("omega", omegaFindings(study, model) + omegaElementFindings(study, model));
    add("weight", history.weightRemarks + weightFindings(study, model, history.placedWeight));
    return lines;
}

QStringList studyFindings(const Study& study, const ImportCheckUp& checkUp,
                          const TypedInputs& typed)
{
    QStringList lines;
    for (int model = 0; model < checkedCount(study); ++model) {
        const QString endpoint = study.endPoints.value(model).endPointParser.expression;
        lines += modelFindings(study, checkUp, model, {!endpoint.trimmed().isEmpty(), {}});
    }
    QStringList reported;
    const auto add = [&](const QString& input, const QStringList& found) {
        for (const QString& finding : found) {
            if (!reported.contains(finding)) {
                reported.append(finding);
                lines.append(input + ": " + finding);
            }
        }
    };
    const TargetInterval& target = study.target;
    add("Candidate doses", checkDoses(typed.doses));
    add("Probability levels", checkLevels(typed.levels));
    add("Lower bound of the target interval",
        checkBound(typed.lower.text, typed.lower.placed, lowerSubstitute.value)
            + checkInterval(target.lower, target.upper));
    add("Upper bound of the target interval",
        checkBound(typed.upper.text, typed.upper.placed, upperSubstitute.value));
    add("Number of simulated individuals", checkIndividuals(study.individuals, processorCount()));
    add("Weight of each model", checkAnyWeight(study));
    add("Model shown", checkShownModel(study));
    add("Endpoint of each model", checkEndpointsGiven(study));
    return lines;
}
