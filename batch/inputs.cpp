// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/inputs.h"

#include "analysis/numberlist.h"
#include "analysis/weights.h"
#include "batch/error.h"
#include "batch/modeltexts.h"
#include "model/randomng.h"
#include "report/formats.h"

#include <algorithm>

namespace {

/// The fingerprint in all provenances of a run: its tables come and go, but never change.
constexpr quint64 anyFingerprint = 1;

struct NamedSummary
{
    const char* name;
    int percentile; ///< as in endPoint
};
const NamedSummary summaries[] = {{"mean", -1}, {"median", 50}, {"75", 75}, {"25", 25}};

QVector<double> readNumbers(const BatchSettings& settings, const char* name, const QString& text)
{
    const QVector<double> numbers = parseNumberList(text);
    if (numbers.isEmpty() && settings.has(name) && !text.isEmpty()) {
        rejectUsage(QString("--%1: \"%2\" is neither a list such as 0,5,10 nor a range such as "
                            "0:1:10.")
                        .arg(name, text));
    }
    return numbers;
}

/// Reads a bound. Its text is what stood in its place if the program put in the number.
Bound readBound(const BatchSettings& settings, const char* name, const char* textName,
                const Bound& before)
{
    if (!settings.has(name)) {
        return before;
    }
    bool isNumber = false;
    const QString text = settings.textOf(name);
    const double number = text.toDouble(&isNumber);
    if (!isNumber) {
        rejectUsage(QString("--%1 takes a number, -inf or inf, not \"%2\".").arg(name, text));
    }
    return settings.has(textName) ? Bound{settings.textOf(textName), true, number}
                                  : Bound{text, false, number};
}

/// Notes the text in whose place the number of a bound was put in, if there was one.
void setBoundText(BatchSettings& used, const char* textName, const Bound& bound)
{
    bool isNumber = false;
    static_cast<void>(bound.text.toDouble(&isNumber));
    if (bound.placed || !isNumber) {
        used.set(textName, bound.text);
    }
}

void applyColumns(Study& study, const BatchSettings& settings)
{
    if (settings.has("ofv-column")) {
        study.colNumOFV = settings.number("ofv-column");
    }
    if (settings.has("theta1-column")) {
        study.colNumTHETA1 = settings.number("theta1-column");
    }
    if (settings.has("individuals")) {
        study.individuals = settings.number("individuals");
    }
}

void applyChoices(Study& study, const BatchSettings& settings)
{
    if (settings.has("log-scale")) {
        study.logScale = settings.isYes("log-scale");
    }
    if (settings.has("method")) {
        study.selecting = settings.textOf("method") == "selection";
    }
    if (settings.has("ofv")) {
        study.individualOfv = settings.textOf("ofv") == "individual";
    }
    for (const NamedSummary& summary : summaries) {
        if (settings.textOf("summary") == summary.name) {
            study.populationSummary = summary.percentile;
            for (endPoint& definition : study.endPoints) {
                definition.populationSummary = summary.percentile;
            }
        }
    }
}

/// Sets expressions and omega. Weights that were not given are those that the window proposes.
void applyDefinitions(RunInputs& inputs, const BatchSettings& settings)
{
    const QStringList& names = inputs.source.modelNames();
    QVector<endPoint>& models = inputs.study.endPoints;
    const auto forEach = [&](const char* option, const auto& apply) {
        for (const ModelText& given : settings.byModel(option)) {
            apply(modelNamed(names, given.model, option), given.text);
        }
    };
    forEach("endpoint", [&](int model, const QString& text) {
        models[model].endPointParser.expression = text;
        models[model].checkETA();
    });
    QVector<bool> hasWeight(models.size(), false);
    for (int model = 0; model < models.size(); ++model) {
        hasWeight[model] = inputs.source.project().completeItems >= 8
                           && model < inputs.source.project().items.weightExpressions.size();
    }
    forEach("weight", [&](int model, const QString& text) {
        models[model].weightParser.expression = text;
        hasWeight[model] = true;
    });
    for (int model = 0; model < models.size(); ++model) {
        if (!hasWeight.at(model)) {
            models[model].weightParser.expression =
                defaultWeightExpression(models.at(model).endPointParser);
        }
    }
    forEach("omega", [&](int model, const QString& text) { readOmega(models[model], text); });
}

/// Starts with the study of the project, or with models without definitions.
void startStudy(RunInputs& inputs, const BatchSettings& settings)
{
    const DataSource& source = inputs.source;
    Study study;
    applyColumns(study, settings);
    inputs.lower = {{}, false, lowerSubstitute.value};
    inputs.upper = {{}, false, upperSubstitute.value};
    if (source.isProject()) {
        const ProjectStudy applied =
            appliedProject({study, inputs.lower, inputs.upper}, source.project());
        const ProjectItems& items = source.project().items;
        study = applied.study;
        inputs.lower = applied.lowerBound;
        inputs.upper = applied.upperBound;
        inputs.doses = items.possibleDoses;
        inputs.levels = items.doseChoiceLabels.join(',');
    } else {
        study.rawResults.fill(QVector<Table>(source.dataSetCount()), source.modelCount());
        study.rawResultsHeaders = source.headings();
        defineModels(study, source.modelNames());
    }
    study.headings = headingsOf(study.rawResultsHeaders);
    study.fingerprint = anyFingerprint;
    inputs.study = study;
}

QStringList readReports(const BatchSettings& settings)
{
    QStringList reports = settings.textOf("report").split(',', Qt::SkipEmptyParts);
    reports.removeDuplicates();
    const QStringList known = reportSuffixes();
    for (const QString& report : qAsConst(reports)) {
        if (!known.contains(report)) {
            rejectUsage(
                QString("--report takes a list of %1, not \"%2\".").arg(known.join(", "), report));
        }
    }
    return reports;
}

/// All settings of the study, with the source of the data and all else that the run depends on.
BatchSettings usedSettings(const RunInputs& inputs, const BatchSettings& given)
{
    BatchSettings used = studySettings(inputs.study, inputs.doses, inputs.levels);
    for (const char* const name : {"project", "models", "folder", "true-meds", "true-models",
                                   "true-model-numbers", "truth-position"}) {
        if (given.has(name)) {
            used.set(name, given.json().value(name));
        }
    }
    setBoundText(used, "lower-text", inputs.lower);
    setBoundText(used, "upper-text", inputs.upper);
    used.set("cache", inputs.usesCache);
    used.set("processors", inputs.processors);
    used.set("random-position", int(inputs.randomPosition));
    if (!inputs.reports.isEmpty()) {
        used.set("report", inputs.reports.join(','));
    }
    if (inputs.writesEndpoints) {
        used.set("endpoints", true);
    }
    return used;
}

} // namespace

BatchSettings studySettings(const Study& study, const QString& doses, const QString& levels)
{
    BatchSettings used;
    used.set("doses", doses);
    used.set("levels", levels);
    QStringList names;
    for (const endPoint& definition : study.endPoints) {
        names.append(definition.name);
    }
    QJsonObject endpoints;
    QJsonObject weights;
    QJsonObject omegas;
    for (int model = 0; model < names.size(); ++model) {
        const endPoint& definition = study.endPoints.at(model);
        const QString key = modelKey(names, model);
        endpoints.insert(key, definition.endPointParser.expression);
        weights.insert(key, definition.weightParser.expression);
        if (definition.numEtas > 0) {
            omegas.insert(key, omegaText(definition));
        }
    }
    used.set("endpoint", endpoints);
    used.set("weight", weights);
    if (!omegas.isEmpty()) {
        used.set("omega", omegas);
    }
    used.set("log-scale", study.logScale);
    used.set("lower", exactText(study.target.lower));
    used.set("upper", exactText(study.target.upper));
    used.set("method", study.selecting ? "selection" : "average");
    used.set("ofv", study.individualOfv ? "individual" : "one");
    for (const NamedSummary& summary : summaries) {
        if (summary.percentile == study.populationSummary) {
            used.set("summary", summary.name);
        }
    }
    used.set("individuals", study.individuals);
    used.set("ofv-column", study.colNumOFV);
    used.set("theta1-column", study.colNumTHETA1);
    return used;
}

RunInputs runInputs(const BatchSettings& settings)
{
    RunInputs inputs(settings);
    startStudy(inputs, settings);
    applyDefinitions(inputs, settings);
    Study& study = inputs.study;
    applyChoices(study, settings);
    inputs.doses = settings.has("doses") ? settings.textOf("doses") : inputs.doses;
    inputs.levels = settings.has("levels") ? settings.textOf("levels") : inputs.levels;
    study.doses = readNumbers(settings, "doses", inputs.doses);
    study.levels = readNumbers(settings, "levels", inputs.levels);
    if (study.doses.isEmpty()) {
        rejectUsage("There are no candidate doses: give --doses, such as 0:1:10.");
    }
    inputs.lower = readBound(settings, "lower", "lower-text", inputs.lower);
    inputs.upper = readBound(settings, "upper", "upper-text", inputs.upper);
    study.target = {inputs.lower.value, inputs.upper.value};
    bringUpToDate(study.endPoints, study.doses);
    inputs.truth =
        readTruth(settings, inputs.source.dataSetCount(), inputs.source.modelCount(), study.doses);
    inputs.reports = readReports(settings);
    inputs.writesEndpoints = settings.isYes("endpoints");
    inputs.usesCache = settings.isYes("cache");
    setProcessorCount(settings.has("processors") ? settings.number("processors") : 0);
    inputs.processors = processorCount();
    inputs.randomPosition = settings.has("random-position")
                                ? quint32(settings.number("random-position"))
                                : randomPosition().value_or(1);
    inputs.truthPosition = quint32(settings.number("truth-position"));
    inputs.used = usedSettings(inputs, settings);
    return inputs;
}
