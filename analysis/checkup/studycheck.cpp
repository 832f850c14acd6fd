// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/studycheck.h"

#include "analysis/checkup/wording.h"
#include "analysis/weights.h"
#include "expr/diagnosis.h"

#include <algorithm>

namespace {

/// The samples of a data set that lack a weight.
struct MissingWeights
{
    int dataSet = 0;
    qint64 samples = 0;
    qint64 missing = 0;      ///< all or none of them with one OFV per model
    bool sharesUpTo1 = true; ///< whether no sample counts more than once
};

bool isBlank(const QString& expression)
{
    return expression.trimmed().isEmpty();
}

QString modelName(const Study& study, int model)
{
    const QString name = study.endPoints.value(model).name;
    return name.isEmpty() ? QString("model %1").arg(model) : shortName(name);
}

/// Models that have both results and a definition.
int definedModels(const Study& study)
{
    return qMin(study.rawResults.size(), study.endPoints.size());
}

bool anyWeight(const Study& study)
{
    const auto end = study.endPoints.begin() + definedModels(study);
    return std::any_of(study.endPoints.begin(), end, [](const endPoint& definition) {
        return !isBlank(definition.weightParser.expression);
    });
}

/// Evaluating malformed expressions is slow, as it reports every value to the debug log.
bool allWellFormed(const Study& study)
{
    const auto end = study.endPoints.begin() + definedModels(study);
    return std::all_of(study.endPoints.begin(), end, [](const endPoint& definition) {
        const QString& expression = definition.weightParser.expression;
        return isBlank(expression) || diagnose(expression).isEmpty();
    });
}

/// Whether the model shown on page "0" exists with its heading, as averaging demands.
bool showsModel(const Study& study)
{
    return study.shownModel >= 0 && study.shownModel < study.rawResults.size()
           && study.shownModel < study.rawResultsHeaders.size();
}

/// The first data sets, as many as can have weights.
int weighableDataSets(const Study& study)
{
    if (study.selecting) {
        return study.dataSetCount();
    }
    return showsModel(study)
               ? qMin(study.dataSetCount(), study.rawResults.at(study.shownModel).size())
               : 0;
}

/// The share of a sample's endpoints that counts.
double usableShare(const QVector<double>& weights)
{
    double share = 0.0;
    for (const double weight : weights) {
        share += weight > 0 ? weight : 0.0;
    }
    return share;
}

MissingWeights missingWeights(const Study& study, int dataSet, const Table& values)
{
    constexpr double roundingErrors = 1e-9;
    MissingWeights found;
    found.dataSet = dataSet;
    const int samples = study.rawResults.first().at(dataSet).size();
    found.samples = samples;
    const auto addSample = [&](bool isMissing) { found.missing += isMissing ? 1 : 0; };
    if (study.selecting) {
        for (const int selected : selectedModels(values, study.individualOfv ? samples : 1)) {
            addSample(selected < 0);
        }
    } else {
        for (const QVector<double>& weights :
             relativeWeights(values, study.individualOfv ? samples : 1, study.logScale)) {
            const double share = usableShare(weights);
            addSample(!(share > 0));
            // Negative weights of other models let the positive ones add up to more.
            found.sharesUpTo1 = found.sharesUpTo1 && share <= 1 + roundingErrors;
        }
    }
    if (!study.individualOfv) {
        found.missing *= found.samples;
    }
    return found;
}

/// The percentage of the samples that have a weight, rounded to few digits but never to 100
/// if one has none.
QString highestProbability(const MissingWeights& found)
{
    const qint64 usable = found.samples - found.missing;
    qint64 scale = 10;
    qint64 rounded = 0;
    do {
        rounded = (200 * scale * usable + found.samples) / (2 * found.samples);
        scale *= 10;
    } while (rounded == 10 * scale);
    return numberText(double(rounded) / (double(scale) / 10));
}

/// "In data set 3, " where there are several.
QString placeText(const Study& study, int dataSet)
{
    return study.dataSetCount() > 1 ? QString("In data set %1, ").arg(dataSet) : QString();
}

QString startingWithCapital(QString text)
{
    text[0] = text.at(0).toUpper();
    return text;
}

QString text(const Study& study, const MissingWeights& found)
{
    QString what;
    if (!study.individualOfv) {
        what = "the first sample has no weight, and with one OFV per model it decides for all: "
               "every probability will be 0.";
    } else if (found.missing == found.samples) {
        what = "no sample has a weight: every probability will be 0.";
    } else {
        what = QString("%1 of %2 %3")
                   .arg(found.missing)
                   .arg(counted(found.samples, "sample"),
                        found.missing == 1 ? "has no weight and counts as a miss"
                                           : "have no weight and count as misses");
        what += found.sharesUpTo1
                    ? QString(": no probability can exceed %1 %.").arg(highestProbability(found))
                    : QString('.');
    }
    return startingWithCapital(placeText(study, found.dataSet) + what);
}

/// A sample's weights, in evaluations of usual expressions.
qint64 evaluationsPerSample(const Study& study)
{
    constexpr int usualLength = 50;
    qint64 evaluations = 0;
    for (int model = 0; model < definedModels(study); ++model) {
        evaluations += 1 + study.endPoints.at(model).weightParser.expression.size() / usualLength;
    }
    return evaluations;
}

/// The data sets that can be checked in a short time, at least one.
QVector<MissingWeights> lookAtDataSets(const Study& study)
{
    constexpr qint64 mostEvaluations = 200'000;
    constexpr qint64 evaluationsPerDataSet = 50; // take as long as to prepare a data set
    QVector<MissingWeights> looked;
    qint64 evaluations = 0;
    for (int dataSet = 0; dataSet < weighableDataSets(study); ++dataSet) {
        const qint64 samples = study.rawResults.first().at(dataSet).size();
        evaluations += (samples + evaluationsPerDataSet) * evaluationsPerSample(study);
        if (dataSet > 0 && evaluations > mostEvaluations) {
            break;
        }
        looked.append(missingWeights(study, dataSet, weightValues(study, dataSet)));
    }
    return looked;
}

/// The finding on several data sets that lack weights. place is "In 3 of 20 data sets ".
QString textOfSeveral(const Study& study, const QString& place, const MissingWeights& worst)
{
    const QString where = QString("data set %1").arg(worst.dataSet);
    if (!study.individualOfv) {
        return place
               + "the first sample has no weight, and with one OFV per model it decides for all: "
                 "every probability will be 0 there. The first is "
               + where + '.';
    }
    QString remark = place + "samples have no weight and count as misses. The worst is " + where
                     + QString(", with %1 of %2").arg(worst.missing).arg(worst.samples);
    if (worst.missing == worst.samples) {
        return remark + ": every probability will be 0 there.";
    }
    if (worst.sharesUpTo1) {
        remark += QString(": no probability can exceed %1 % there").arg(highestProbability(worst));
    }
    return remark + '.';
}

/// All that the weights of a study's results depend on, as texts.
QStringList weightInputs(const Study& study)
{
    QStringList inputs{QString::number(study.shownModel)};
    for (const bool choice : {study.logScale, study.selecting, study.individualOfv}) {
        inputs.append(choice ? "yes" : "no");
    }
    for (const endPoint& definition : study.endPoints) {
        inputs.append(definition.weightParser.expression);
        inputs.append(QString::number(definition.colNumOFV));
    }
    return inputs;
}

} // namespace

QStringList checkAnyWeight(const Study& study)
{
    if (study.rawResults.isEmpty() || anyWeight(study)) {
        return {};
    }
    return {"No model has a weight expression, so every probability will be 0: type weights on "
            "page \"2\"."};
}

QStringList checkUsableWeights(const Study& study, int dataSet, const Table& values)
{
    if (dataSet < 0 || dataSet >= weighableDataSets(study) || !anyWeight(study)
        || !allWellFormed(study)) {
        return {};
    }
    const MissingWeights found =
        missingWeights(study, dataSet, values.isEmpty() ? weightValues(study, dataSet) : values);
    return found.missing > 0 ? QStringList(text(study, found)) : QStringList();
}

QStringList checkUsableWeightsOfAll(const Study& study)
{
    if (!anyWeight(study) || !allWellFormed(study)) {
        return {};
    }
    const QVector<MissingWeights> looked = lookAtDataSets(study);
    const auto share = [](const MissingWeights& found) {
        return found.samples == 0 ? 0.0 : double(found.missing) / double(found.samples);
    };
    int count = 0;
    MissingWeights worst;
    for (const MissingWeights& found : looked) {
        count += found.missing > 0 ? 1 : 0;
        worst = share(found) > share(worst) ? found : worst;
    }
    if (count == 0) {
        return {};
    }
    const bool isAll = looked.size() == study.dataSetCount();
    QString remark = text(study, worst);
    if (count > 1) {
        const QString place =
            QString(isAll ? "In %1 of %2 data sets " : "In %1 of the first %2 data sets ");
        remark = textOfSeveral(study, place.arg(count).arg(looked.size()), worst);
    }
    if (looked.size() < weighableDataSets(study)) {
        remark += QString(" Data sets from %1 on were not checked.").arg(looked.size());
    }
    return {remark};
}

QStringList checkShownModel(const Study& study)
{
    const int held = weighableDataSets(study);
    if (study.selecting || held == study.dataSetCount()) {
        return {};
    }
    QString which = "has no data sets";
    QString effect = "finds no weights, and every probability will be 0";
    if (held > 0) {
        which = QString("has %1 of %2 data sets").arg(held).arg(study.dataSetCount());
        effect = "finds no weights for the others, and their probabilities will be 0";
    } else if (!showsModel(study)) {
        which = "has no results or no heading";
    }
    return {QString("Page \"0\" shows %1, which %2: model averaging then %3. Show another model "
                    "there.")
                .arg(modelName(study, study.shownModel), which, effect)};
}

QStringList checkEndpointsGiven(const Study& study)
{
    QStringList names;
    for (int model = 0; model < definedModels(study); ++model) {
        const endPoint& definition = study.endPoints.at(model);
        if (isBlank(definition.endPointParser.expression)
            && !isBlank(definition.weightParser.expression)) {
            names.append(modelName(study, model));
        }
    }
    return names.isEmpty()
               ? QStringList()
               : QStringList("Without an endpoint expression the endpoint is 0 at every dose: "
                             + enumerated(names) + '.');
}

QStringList checkIndividualsAfterOpening(const Study& study, bool opened)
{
    const auto isSimulated = [](const endPoint& definition) { return definition.highestEta > 0; };
    if (!opened || std::none_of(study.endPoints.begin(), study.endPoints.end(), isSimulated)) {
        return {};
    }
    return {QString("A project does not keep the number of individuals: %1 stood here before it "
                    "was opened.")
                .arg(study.individuals)};
}

QStringList checkReadToEnd(const QStringList& files)
{
    QStringList sentences;
    for (const QString& finding : unreadFindings(files)) {
        sentences.append(finding + '.');
    }
    return sentences;
}

QStringList checkSimulationModels(const QStringList& files, bool importedBeforeResults)
{
    if (files.isEmpty() || !importedBeforeResults) {
        return {};
    }
    QStringList names;
    for (const QString& file : files) {
        names.append(shortName(file));
    }
    return {"The simulation models were imported before the current results and are still used: "
            + enumerated(names) + '.'};
}

QStringList UsableWeights::ofDataSet(const Study& study, int dataSet)
{
    const QStringList inputs = weightInputs(study) + QStringList(QString::number(dataSet));
    if (inputs != dataSetAnswer.inputs) {
        dataSetAnswer = {inputs, checkUsableWeights(study, dataSet)};
    }
    return dataSetAnswer.findings;
}

QStringList UsableWeights::ofAll(const Study& study)
{
    const QStringList inputs = weightInputs(study);
    if (inputs != allAnswer.inputs) {
        allAnswer = {inputs, checkUsableWeightsOfAll(study)};
    }
    return allAnswer.findings;
}
