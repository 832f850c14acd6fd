// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/firmness.h"

#include "analysis/certainty/certaintytables.h"
#include "analysis/certainty/sensitivity.h"
#include "analysis/checkup/wording.h"
#include "analysis/settingtexts.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

/// How far the deciding dose is from the level, and how many samples would settle it.
QString distance(const ReportedResult& result, int level)
{
    const DoseStability& found = result.stability.at(level);
    const double percent = result.made.levels.at(level);
    if (found.nearest < 0 || found.nearest >= result.errors.size()
        || !(result.errors.at(found.nearest) > 0)) {
        return {};
    }
    const double probability = result.probability.at(found.nearest);
    const double errors = (probability - percent) / result.errors.at(found.nearest);
    QString text =
        QString(" The probability at dose %1, %2 %, is %3 Monte Carlo errors %4 the level")
            .arg(doseText(result.made.doses.at(found.nearest)), calculated(probability),
                 QString::number(std::fabs(errors), 'f', 1), errors > 0 ? "above" : "below");
    if (std::isfinite(found.samplesNeeded) && found.samplesNeeded > result.evaluation.sampleCount) {
        text += QString("; about %1 bootstrap samples would put it two errors from the level")
                    .arg(samplesToPlan(found.samplesNeeded));
    }
    return text + '.';
}

QStringList unstableLevels(const ReportedResult& result)
{
    QStringList texts;
    for (int level = 0; level < result.stability.size(); ++level) {
        const DoseStability& found = result.stability.at(level);
        if (found.share(found.med) < firmShare) {
            texts.append(
                QString("%1: not certain. Resamples of the bootstrap samples choose %2.")
                    .arg(levelText(result.made.levels.at(level)), chosenDoses(result, found))
                + distance(result, level));
        }
        for (const int dose : found.ties) {
            texts.append(QString("%1: the probability at dose %2 equals the level but must exceed "
                                 "it.")
                             .arg(levelText(result.made.levels.at(level)),
                                  doseText(result.made.doses.at(dose))));
        }
    }
    return texts;
}

/// The first texts of many, and how many others there are.
QStringList shortened(const QStringList& texts)
{
    constexpr int most = 6;
    const int others = texts.size() - most;
    return others > 0 ? texts.mid(0, most)
                            + QStringList(QString("The same kind of remark applies to %1.")
                                              .arg(counted(others, "further level")))
                      : texts;
}

/// Doses that exceed a level although a higher one does not.
QStringList dips(const ReportedResult& result)
{
    QStringList texts;
    for (int level = 0; level < result.meds.size(); ++level) {
        const double percent = result.made.levels.value(level);
        QStringList doses;
        for (int dose = 0; dose < result.probability.size(); ++dose) {
            const bool isBelowMed = !(result.made.doses.value(dose) >= result.meds.at(level));
            if (isBelowMed && result.probability.at(dose) > percent) {
                doses.append(doseText(result.made.doses.value(dose)));
            }
        }
        if (!doses.isEmpty()) {
            texts.append(QString("%1: also exceeded at dose %2, but not at every higher dose.")
                             .arg(levelText(percent), doses.join(", ")));
        }
    }
    return texts;
}

/// "By ... the MED is 0.6 instead of 0.7 at 80 %", in one sentence for all levels.
QString differences(const QString& lead, const ReportedResult& result, const QVector<double>& meds)
{
    QStringList texts;
    for (int level = 0; level < qMin(meds.size(), result.meds.size()); ++level) {
        const QString dose = doseText(meds.at(level));
        if (dose != doseText(result.meds.at(level))) {
            texts.append(QString("%1 instead of %2 at %3")
                             .arg(dose, doseText(result.meds.at(level)),
                                  levelText(result.made.levels.value(level))));
        }
    }
    return texts.isEmpty() ? QString()
                           : lead + ", the MED is " + enumerated(texts, mostLevelsTold) + '.';
}

QStringList otherDoses(const ReportedResult& result, const QVector<OtherMethod>& methods)
{
    QStringList texts;
    for (const OtherMethod& method : methods) {
        if (!method.isChosen && method.result) {
            texts.append(differences("By " + methodText(method.made), result, method.result->meds));
        }
    }
    if (result.evaluation.exists()) {
        for (const Sensitivity& found : sensitivityToFits(result.made, result.evaluation)) {
            if (found.fits != FitChoice::All && found.unknown.isEmpty()) {
                texts.append(differences("From the " + fitChoiceName(found.fits) + " alone", result,
                                         found.renormalised.meds)
                                 .replace("From the without the original fit alone",
                                          "Without the original fit"));
            }
        }
    }
    texts.removeAll(QString());
    return texts;
}

} // namespace

QString resampledDose(const ReportedResult& result, int dose)
{
    return dose < result.made.doses.size() ? doseText(result.made.doses.at(dose)) : QString("none");
}

QString chosenDoses(const ReportedResult& result, const DoseStability& stability)
{
    QVector<int> doses(stability.chosen.size());
    std::iota(doses.begin(), doses.end(), 0);
    std::stable_sort(doses.begin(), doses.end(), [&](int first, int second) {
        return stability.chosen.at(first) > stability.chosen.at(second);
    });
    QStringList texts;
    for (const int dose : qAsConst(doses)) {
        if (stability.share(dose) >= 1) {
            texts.append(QString("%1 in %2")
                             .arg(resampledDose(result, dose),
                                  levelText(std::round(100 * stability.share(dose)) / 100)));
        }
    }
    constexpr int most = 4;
    return texts.mid(0, most).join(", ") + (texts.size() > most ? ", ..." : "");
}

QString firmness(const ReportedResult& result, int level)
{
    if (level >= result.stability.size()) {
        return {};
    }
    const DoseStability& found = result.stability.at(level);
    return found.share(found.med) >= firmShare
               ? QString("As far as the number of bootstrap samples goes, the dose is certain: it "
                         "holds in %1 % of %2 resamples.")
                     .arg(calculated(found.share(found.med)))
                     .arg(resampleCount)
               : QString("The dose is not certain: resamples of the bootstrap samples choose %1.")
                     .arg(chosenDoses(result, found));
}

std::optional<QVector<OtherMethod>> otherMethods(const ReportedResult& result, const GoesOn& goesOn)
{
    QVector<OtherMethod> methods;
    if (!result.evaluation.exists()) {
        return methods;
    }
    for (const Method& method : allMethods) {
        OtherMethod other;
        other.made = result.made;
        other.made.selecting = method.selecting;
        other.made.individualOfv = method.individualOfv;
        other.isChosen = methodText(other.made) == methodText(result.made);
        other.result = resultByMethod(result.made, result.evaluation, method);
        if (other.result) {
            const Evaluation& evaluation = other.result->evaluation;
            const auto stability = doseStability(
                hitWeights(other.made, evaluation, appliedWeights(other.made, evaluation)),
                evaluation.sampleCount, other.result->probability, other.made.levels, goesOn);
            if (!stability) {
                return std::nullopt;
            }
            other.stability = *stability;
        }
        methods.append(other);
    }
    return methods;
}

QStringList objections(const ReportedResult& result, const QVector<OtherMethod>& methods)
{
    return shortened(unstableLevels(result)) + otherDoses(result, methods)
           + shortened(dips(result));
}
