// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/results.h"

#include "model/randomng.h"

namespace {

void addStale(QStringList& remarks, const QString& what, const Provenance& made,
              const QVector<InputKind>& changed)
{
    if (!changed.isEmpty()) {
        remarks.append(staleText(what, made, changed) + '.');
    }
}

/// None where there is no result: then the current provenance is not taken, as it may need a
/// fingerprint of the results.
template <typename Take>
QVector<InputKind> changesOf(const Provenance& made, Take takeNow)
{
    return made.exists() ? changedKinds(made, takeNow()) : QVector<InputKind>();
}

} // namespace

Circumstances circumstances()
{
    return {randomPosition(), processorCount()};
}

QVector<InputKind> curveChanges(const StudyResults& results, const CurrentInputs& now)
{
    return changesOf(results.curve.made,
                     [&] { return probabilityProvenance(now.study, now.curveDataSet); });
}

QVector<InputKind> selectionChanges(const StudyResults& results, const CurrentInputs& now)
{
    return changesOf(results.selection.made, [&] { return doseProvenance(now.study); });
}

QVector<InputKind> truthChanges(const StudyResults& results, const CurrentInputs& now)
{
    const Provenance& made = results.truth.made;
    if (!made.exists()) {
        return {};
    }
    QVector<InputKind> changed = changedKinds(
        made, truthProvenance(now.study, now.trueRows, now.trueModels, results.selection.doses));
    if (made.trueRows.isEmpty() && !now.trueRows.isEmpty()) {
        changed.append(InputKind::TrueModels); // a file before, simulation models now
    }
    return changed;
}

QVector<InputKind> comparedDosesChanges(const StudyResults& results, const CurrentInputs& now)
{
    return changesOf(results.truth.chosen, [&] { return doseProvenance(now.study); });
}

QStringList typicalCurveRemarks(const StudyResults& results, const CurrentInputs& now)
{
    const Provenance& made = results.typicalCurve;
    QStringList remarks;
    addStale(remarks, "The curve was drawn earlier", made,
             changesOf(made, [&] { return typicalCurveProvenance(now.study, now.typicalModel); }));
    if (results.isTypicalCurveGivenUp) {
        remarks.append("The calculation of the curve was aborted: change an input of this page to "
                       "start it again.");
    }
    return remarks;
}

QStringList weightsRemarks(const StudyResults& results, const CurrentInputs& now)
{
    const Provenance& made = results.weights;
    QStringList remarks;
    addStale(remarks, "The weights were calculated earlier", made,
             changesOf(made, [&] { return weightsProvenance(now.study, now.weightsDataSet); }));
    return remarks;
}

QStringList unfinishedRemarks(const ProbabilityCurve& curve)
{
    return curve.samples < curve.sampleCount ? QStringList(
               QString("The calculation was aborted: the curve holds %1 of %2 samples.")
                   .arg(curve.samples)
                   .arg(curve.sampleCount))
                                             : QStringList();
}

QStringList unfinishedRemarks(const DoseSelection& selection)
{
    return selection.doses.size() < selection.dataSetCount ? QStringList(
               QString("The calculation was aborted: the table holds %1 of %2 data sets.")
                   .arg(selection.doses.size())
                   .arg(selection.dataSetCount))
                                                           : QStringList();
}

QStringList unfinishedRemarks(const TruthComparison& truth)
{
    if (truth.isFailed) {
        return {QString("The comparison failed: a true model number or a suitable file is missing")
                + (truth.hadMeds
                       ? ". The theoretical MEDs in the table are those of an earlier comparison."
                       : ".")};
    }
    return truth.dataSets < truth.dataSetCount ? QStringList(
               QString("The calculation was aborted: %1 of %2 data sets have a theoretical MED.")
                   .arg(truth.dataSets)
                   .arg(truth.dataSetCount))
                                               : QStringList();
}

QStringList missingMedNotes(const TruthComparison& truth)
{
    return truth.withoutMed == 0
               ? QStringList()
               : QStringList(QString("Data sets without a theoretical MED: %1 of %2. They count as "
                                     "under at every level, and a level at which one of them has a "
                                     "dose has no mean absolute error.")
                                 .arg(truth.withoutMed)
                                 .arg(truth.dataSets));
}

Evaluation keptBeside(const Evaluation& evaluation, qint64 otherBytes)
{
    if (evaluation.bytes() + otherBytes <= mostKeptBytes) {
        return evaluation;
    }
    Evaluation none;
    none.missing = QString("the endpoints of all results take more than %1 MB and were not kept")
                       .arg(mostKeptBytes >> 20);
    return none;
}

qint64 keptBytes(const DoseSelection& selection)
{
    qint64 sum = 0;
    for (const Evaluation& evaluation : selection.evaluations) {
        sum += evaluation.bytes();
    }
    return sum;
}

bool resample(DoseSelection& selection, const std::function<bool(int done)>& goesOn,
              const GoesOn& isAwaited)
{
    const Study& made = selection.made.inputs;
    for (int dataSet = selection.stability.size(); dataSet < selection.evaluations.size();
         ++dataSet) {
        const Evaluation& evaluation = selection.evaluations.at(dataSet);
        QVector<DoseStability> ofLevels;
        if (evaluation.exists()) {
            const auto found =
                doseStability(hitWeights(made, evaluation, appliedWeights(made, evaluation)),
                              evaluation.sampleCount, selection.probability.value(dataSet),
                              made.levels, isAwaited);
            if (!found) {
                return false;
            }
            ofLevels = *found;
        }
        selection.stability.append(ofLevels);
        if (!goesOn(dataSet + 1)) {
            return dataSet + 1 == selection.evaluations.size();
        }
    }
    return true;
}

QString missingEvaluation(const ProbabilityCurve& curve)
{
    return curve.evaluation.missing;
}

QString missingEvaluation(const DoseSelection& selection, int dataSet)
{
    if (!selection.made.exists()) {
        return "nothing was calculated";
    }
    if (selection.isFromProject) {
        return "the doses come from a project, which has no endpoints: calculate them again";
    }
    return dataSet < selection.evaluations.size() ? selection.evaluations.at(dataSet).missing
                                                  : QString("the data set was not calculated");
}

QString missingEvaluation(const DoseSelection& selection)
{
    for (int dataSet = 0; dataSet < qMax(1, selection.evaluations.size()); ++dataSet) {
        const QString missing = missingEvaluation(selection, dataSet);
        if (!missing.isEmpty()) {
            return dataSet == 0 ? missing : QString("data set %1: ").arg(dataSet) + missing;
        }
    }
    return {};
}

QString missingCertainty(const DoseSelection& selection, int dataSet)
{
    QString missing = missingEvaluation(selection, dataSet);
    if (!missing.isEmpty()) {
        return missing;
    }
    const QString uncounted = uncountedResamples(selection.made.inputs);
    return uncounted.isEmpty() && dataSet >= selection.stability.size()
               ? "the bootstrap samples were not resampled; \"Copy certainty of doses\" does this"
               : uncounted;
}

QString uncountedResamples(const Study& study)
{
    return canCountResamples(study.levels.size(), study.doses.size())
               ? QString()
               : QString("%1 levels and %2 doses are too many to count resamples")
                     .arg(study.levels.size())
                     .arg(study.doses.size());
}

QStringList curveRemarks(const StudyResults& results, const CurrentInputs& now)
{
    QStringList remarks;
    addStale(remarks, "The curve was calculated", results.curve.made, curveChanges(results, now));
    return remarks + unfinishedRemarks(results.curve);
}

QStringList selectionRemarks(const StudyResults& results, const CurrentInputs& now)
{
    QStringList remarks;
    addStale(remarks,
             results.selection.isFromProject ? "The doses of the project were selected"
                                             : "The doses were selected",
             results.selection.made, selectionChanges(results, now));
    return remarks + unfinishedRemarks(results.selection);
}

QStringList truthRemarks(const StudyResults& results, const CurrentInputs& now)
{
    if (!results.truth.made.exists()) {
        return {};
    }
    QStringList remarks;
    addStale(remarks, "The comparison was made", results.truth.made, truthChanges(results, now));
    addStale(remarks, "The compared doses were selected", results.truth.chosen,
             comparedDosesChanges(results, now));
    return remarks + unfinishedRemarks(results.truth);
}

QString nominalNote(const TruthComparison& truth, double level)
{
    const int index = truth.levels.indexOf(level);
    if (index < 0 || index >= truth.comparison.size()) {
        return {};
    }
    const LevelComparison& counts = truth.comparison.at(index);
    const std::optional<CountRange> range = nominalRange(counts, level);
    if (!range) {
        return {};
    }
    const QString fault = misfit(counts, *range);
    return QString(" (%1 to %2 in 95 % of studies by chance)\n")
               .arg(range->lowest)
               .arg(range->highest)
           + (fault.isEmpty() ? "Compatible with the level"
                              : "Not compatible with the level: " + fault);
}
