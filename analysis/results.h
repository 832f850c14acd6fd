// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_RESULTS_H
#define VELMORA_ANALYSIS_RESULTS_H

#include "analysis/certainty/othermethods.h"
#include "analysis/certainty/stability.h"
#include "analysis/provenance.h"
#include "analysis/truth.h"

#include <optional>

// Results as they are shown, each with its provenance. If nothing is calculated yet, made.exists()
// is false.

/// What a calculation with ETAs depends on in addition to its inputs, as it was when it began.
struct Circumstances
{
    std::optional<quint32> randomPosition; ///< none where it is not known
    int processors = 0;                    ///< 0 where nothing was calculated
};

/// The current circumstances.
Circumstances circumstances();

/// A probability curve.
struct ProbabilityCurve
{
    QVector<double> doses;
    QVector<double> probability; ///< in percent, per entry of doses
    int samples = 0;             ///< that it holds
    int sampleCount = 0;         ///< of the data set; more than samples if aborted
    QStringList notes;           ///< on the inputs as they were typed
    Provenance made;
    Evaluation evaluation = {};  ///< of the samples that it holds
    QVector<double> errors = {}; ///< Monte Carlo errors in percent points, per entry of doses
    Circumstances before = {};
};

/// The doses chosen for all data sets.
struct DoseSelection
{
    Table doses;            ///< MED in dose units, [dataSet][level]; NaN for none
    QVector<double> levels; ///< in percent
    int dataSetCount = 0;   ///< of the study; more than in doses if aborted
    bool isFromProject = false;
    QStringList notes; ///< on the inputs as they were typed
    Provenance made;
    Table probability = {};               ///< behind the doses, in percent, [dataSet][dose]
    QVector<Evaluation> evaluations = {}; ///< [dataSet]; none after Open
    /// [dataSet][level]; fewer data sets if resampling was aborted, empty where there is no
    /// evaluation.
    QVector<QVector<DoseStability>> stability = {};
    Circumstances before = {};
    /// The doses by other methods where evaluations are not kept: [dataSet], as returned by
    /// medsOfAllMethods. Data sets may be missing.
    QVector<MethodMeds> otherMeds = {};
    bool usedCache = false;     ///< so that with selection all models were evaluated
    bool tookFromCache = false; ///< endpoints may have been there before
};

/// The comparison of chosen doses with theoretical MEDs.
struct TruthComparison
{
    QVector<LevelComparison> comparison; ///< [level]
    QVector<double> levels;              ///< in percent
    int dataSets = 0;                    ///< whose theoretical MED was looked for
    int dataSetCount = 0;                ///< of the study; more than dataSets if aborted
    bool isFailed = false;               ///< there are no theoretical MEDs
    bool hadMeds = false;                ///< the table showed earlier theoretical MEDs
    int withoutMed = 0;                  ///< data sets whose theoretical MED is NaN
    Provenance made;                     ///< of the theoretical MEDs; the doses compared are in it
    Provenance chosen;                   ///< of the doses compared
    Circumstances before = {};           ///< of the theoretical MEDs
};

/// Everything that is shown.
struct StudyResults
{
    Provenance typicalCurve;
    bool isTypicalCurveGivenUp = false; ///< in place of a curve
    Provenance weights;
    ProbabilityCurve curve;
    DoseSelection selection;
    TruthComparison truth;

    bool isEmpty() const
    {
        return !typicalCurve.exists() && !weights.exists() && !curve.made.exists()
               && !selection.made.exists() && !truth.made.exists();
    }
};

/// Memory that the evaluations of all results may take together, in bytes.
constexpr qint64 mostKeptBytes = qint64(256) << 20;

/// An evaluation as it is kept next to others that take otherBytes: only a reason where all would
/// take more than mostKeptBytes together.
Evaluation keptBeside(const Evaluation& evaluation, qint64 otherBytes);

/// The memory of the evaluations of a selection, in bytes.
qint64 keptBytes(const DoseSelection& selection);

/// Resamples the bootstrap samples of a selection's data sets. False if aborted; the data sets that
/// are done stay.
bool resample(DoseSelection& selection, const std::function<bool(int done)>& goesOn,
              const GoesOn& isAwaited = {});

/// Why the endpoints of a curve, of a data set of a selection, or of any data set of it, are
/// not kept; empty where they are.
QString missingEvaluation(const ProbabilityCurve& curve);
QString missingEvaluation(const DoseSelection& selection, int dataSet);
QString missingEvaluation(const DoseSelection& selection);

/// The same of the stability of the doses of a data set.
QString missingCertainty(const DoseSelection& selection, int dataSet);

/// Why the bootstrap samples are never resampled for a study; empty if they are.
QString uncountedResamples(const Study& study);

/// The inputs that a calculation would use now, for comparison.
struct CurrentInputs
{
    Study study;
    int weightsDataSet = 0;
    int curveDataSet = 0;
    int typicalModel = -1; ///< whose curve would be drawn
    Table trueRows;        ///< as in Provenance
    QStringList trueModels;
};

/// How much of a result was calculated, if not all of it.
QStringList unfinishedRemarks(const ProbabilityCurve& curve);
QStringList unfinishedRemarks(const DoseSelection& selection);
QStringList unfinishedRemarks(const TruthComparison& truth);

/// Remarks on a result: it is stale, and what has changed since; how much of it was calculated.
/// None if all is well or if there is no result.
QStringList typicalCurveRemarks(const StudyResults& results, const CurrentInputs& now);
QStringList weightsRemarks(const StudyResults& results, const CurrentInputs& now);
QStringList curveRemarks(const StudyResults& results, const CurrentInputs& now);
QStringList selectionRemarks(const StudyResults& results, const CurrentInputs& now);

/// The same for the comparison; it is also stale if the chosen doses are no longer those compared
/// or are stale themselves.
QStringList truthRemarks(const StudyResults& results, const CurrentInputs& now);

/// How many data sets have no theoretical MED, and what that does to the comparison.
QStringList missingMedNotes(const TruthComparison& truth);

/// The note behind the nominal count of a level: the range that chance explains, " (12 to 19 in 95
/// % of studies by chance)", and in a separate line whether the counts are compatible with the
/// level. Empty without a range or such a level.
QString nominalNote(const TruthComparison& truth, double level);

/// The kinds of inputs that have changed since the curve or the selection was made.
QVector<InputKind> curveChanges(const StudyResults& results, const CurrentInputs& now);
QVector<InputKind> selectionChanges(const StudyResults& results, const CurrentInputs& now);

/// The same for the comparison itself, with its theoretical MEDs, and for the doses that were
/// compared.
QVector<InputKind> truthChanges(const StudyResults& results, const CurrentInputs& now);
QVector<InputKind> comparedDosesChanges(const StudyResults& results, const CurrentInputs& now);

#endif
