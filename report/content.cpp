// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/content.h"

#include "analysis/dosesearch.h"
#include "analysis/settingtexts.h"
#include "report/chapters.h"

#include <cmath>

namespace {

QVector<double> errorsOf(const Study& made, const Evaluation& evaluation)
{
    return evaluation.exists() ? monteCarloErrors(made, evaluation) : QVector<double>();
}

ReportedResult ofSelection(const DoseSelection& selection, int dataSet)
{
    ReportedResult result;
    result.name = "Doses of " + dataSetText(dataSet);
    result.dataSet = dataSet;
    result.made = selection.made.inputs;
    result.made.levels = selection.levels;
    result.probability = selection.probability.value(dataSet);
    result.meds = selection.doses.value(dataSet);
    result.evaluation = selection.evaluations.value(dataSet);
    if (!result.evaluation.exists()) {
        result.evaluation.missing = missingCertainty(selection, dataSet);
    }
    result.errors = errorsOf(result.made, result.evaluation);
    result.stability = selection.stability.value(dataSet);
    result.before = selection.before;
    return result;
}

ReportedResult ofCurve(const ProbabilityCurve& curve, const QVector<double>& levels)
{
    ReportedResult result;
    result.dataSet = qMax(0, curve.made.dataSet);
    result.name = "Curve of " + dataSetText(result.dataSet);
    result.made = curve.made.inputs;
    result.made.levels = levels;
    result.probability = curve.probability;
    result.errors = curve.errors;
    result.meds = minimumEffectiveDoses(curve.probability, levels, curve.doses);
    result.evaluation = curve.evaluation;
    result.before = curve.before;
    return result;
}

bool agree(const ReportedResult& first, const ReportedResult& second)
{
    const Study& a = first.made;
    const Study& b = second.made;
    return first.dataSet == second.dataSet && first.probability == second.probability
           && a.doses == b.doses && a.selecting == b.selecting && a.individualOfv == b.individualOfv
           && a.target.lower == b.target.lower && a.target.upper == b.target.upper
           && a.fingerprint == b.fingerprint;
}

/// False if aborted.
bool addStability(ReportedResult& result, const GoesOn& goesOn)
{
    if (!result.stability.isEmpty() || !result.evaluation.exists()) {
        return true;
    }
    const Grid weights = appliedWeights(result.made, result.evaluation);
    const auto found = doseStability(hitWeights(result.made, result.evaluation, weights),
                                     result.evaluation.sampleCount, result.probability,
                                     result.made.levels, goesOn);
    result.stability = found.value_or(QVector<DoseStability>());
    return found.has_value();
}

} // namespace

QString doseText(double dose)
{
    return std::isnan(dose) ? QString("none") : typed(dose);
}

QString levelText(double level)
{
    constexpr QChar noBreakSpace(0xa0);
    return typed(level) + noBreakSpace + '%';
}

QByteArray textThenNumbers(int numbers)
{
    return 'l' + QByteArray(numbers, 'r');
}

QString dataSetText(int dataSet)
{
    return QString("data set %1").arg(dataSet);
}

QString extent(const ReportContext& context)
{
    const QString& summary = context.inputs.source.checkUp.summary;
    return summary.isEmpty() ? summary
                             : "Data: " + summary.section(';', 0, 0)
                                   + ". The chapter \"Models\" shows the endpoint of each model.";
}

QString modelName(const QVector<endPoint>& models, int model)
{
    const auto shown = [&models](int number) { return documentName(models.at(number).name); };
    QString numbered = QString("model %1").arg(model);
    if (model >= models.size() || models.at(model).name.isEmpty()) {
        return numbered;
    }
    for (int other = 0; other < models.size(); ++other) {
        if (other != model && shown(other) == shown(model)) {
            return shown(model) + " (" + numbered + ')';
        }
    }
    return shown(model);
}

std::optional<QVector<ReportedResult>> reportedResults(const ReportInputs& inputs,
                                                       const GoesOn& goesOn)
{
    const StudyResults& all = inputs.results;
    const ProbabilityCurve& curve = all.curve;
    const DoseSelection& selection = all.selection;
    QVector<ReportedResult> results;
    if (!selection.doses.isEmpty()) {
        const int ofTheCurve = curve.made.exists() ? qMax(0, curve.made.dataSet) : 0;
        results.append(
            ofSelection(selection, ofTheCurve < selection.doses.size() ? ofTheCurve : 0));
    }
    if (!curve.probability.isEmpty()) {
        const QVector<double>& levels =
            selection.doses.isEmpty() ? inputs.now.study.levels : selection.levels;
        const ReportedResult found = ofCurve(curve, levels);
        if (results.isEmpty() || !agree(results.first(), found)) {
            results.append(found);
        } else if (!results.first().evaluation.exists() && found.evaluation.exists()) {
            results.first().evaluation = found.evaluation;
            results.first().errors = found.errors;
        }
    }
    for (ReportedResult& result : results) {
        if (!addStability(result, goesOn)) {
            return std::nullopt;
        }
    }
    return results;
}

bool checkFiles(QVector<ReportedFile>& files, const std::function<bool(double done)>& goesOn)
{
    qint64 all = 1;
    for (const ReportedFile& file : qAsConst(files)) {
        all += qMax(qint64(0), file.file.size);
    }
    qint64 before = 0;
    for (ReportedFile& file : files) {
        bool isGoing = true;
        file.check = checkFile(file.file, [&](qint64 bytes) {
            isGoing = goesOn(double(before + bytes) / double(all));
            return isGoing;
        });
        before += qMax(qint64(0), file.file.size);
        if (!isGoing || !goesOn(double(before) / double(all))) {
            return false;
        }
    }
    return true;
}

std::optional<ReportDocument> reportDocument(const ReportInputs& inputs, const GoesOn& goesOn)
{
    const auto results = reportedResults(inputs, goesOn);
    if (!results) {
        return std::nullopt;
    }
    const StudySource& source = inputs.source.study;
    ReportDocument document(
        "Dose finding report",
        {source.directory.isEmpty() ? QString("No data") : "Data: " + source.directory,
         QString("Written by %1 on %2")
             .arg(source.program, inputs.source.date.toString("yyyy-MM-dd HH:mm"))});
    const ReportContext context{inputs, *results, goesOn};
    if (!addDecision(document, context)) {
        return std::nullopt;
    }
    for (const auto add : {addProbability, addDoseResponse, addModels, addSensitivity, addData,
                           addSimulations, addMethods}) {
        add(document, context);
        if (goesOn && !goesOn()) {
            return std::nullopt;
        }
    }
    return document;
}
