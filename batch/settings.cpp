// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/settings.h"

#include "batch/error.h"
#include "compat/qtversions.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>

#include <algorithm>
#include <cmath>

namespace {

constexpr int lastRandomPosition = 2147483646;
constexpr int mostIndividuals = 10000;
constexpr int mostColumns = 1'000'000;
constexpr int mostProcessors = 1024;
constexpr double largestWritten = 1e15; // without exponent

const char* const yes = "yes";
const char* const no = "no";

QString optionName(const SettingDefinition& definition)
{
    return QString("--") + definition.name;
}

QString readChoice(const SettingDefinition& definition, const QString& text)
{
    const QStringList choices = definition.choices();
    if (!choices.contains(text)) {
        rejectUsage(QString("%1 takes one of %2, not \"%3\".")
                        .arg(optionName(definition), choices.join(", "), text));
    }
    return text;
}

int readNumber(const SettingDefinition& definition, const QString& text)
{
    bool isNumber = false;
    const int number = wholeNumber(text, &isNumber);
    if (!isNumber || number < definition.lowest || number > definition.highest) {
        rejectUsage(QString("%1 takes a whole number from %2 to %3, not \"%4\".")
                        .arg(optionName(definition))
                        .arg(definition.lowest)
                        .arg(definition.highest)
                        .arg(text));
    }
    return number;
}

bool readYesNo(const SettingDefinition& definition, const QString& text)
{
    if (text != yes && text != no) {
        rejectUsage(QString("%1 takes yes or no, not \"%2\".").arg(optionName(definition), text));
    }
    return text == yes;
}

QString absolutePath(const QString& path, const QString& folder)
{
    return QDir::cleanPath(QDir(folder).absoluteFilePath(path));
}

/// The value as text. In JSON, numbers may be numbers, and lists of them arrays.
QString jsonText(const SettingDefinition& definition, const QJsonValue& value)
{
    if (value.isString()) {
        return value.toString();
    }
    if (value.isDouble()) {
        const double number = value.toDouble();
        // Without exponent where it could be whole: readers do not take 1e+06 for a whole number.
        return QString::number(number, std::fabs(number) < largestWritten ? 'f' : 'g',
                               QLocale::FloatingPointShortest);
    }
    if (value.isArray()) {
        QStringList parts;
        for (const QJsonValue part : value.toArray()) {
            parts.append(jsonText(definition, part));
        }
        return parts.join(',');
    }
    rejectUsage(QString("The setting \"%1\" must be a text.").arg(definition.name));
}

/// The elements of a list, or the one value instead of a list; none of a missing value.
QJsonArray listOf(const QJsonValue& value)
{
    return value.isArray()       ? value.toArray()
           : value.isUndefined() ? QJsonArray()
                                 : QJsonArray{value};
}

QStringList jsonTexts(const SettingDefinition& definition, const QJsonValue& value)
{
    QStringList texts;
    for (const QJsonValue text : listOf(value)) {
        if (!text.isString()) {
            rejectUsage(
                QString("The setting \"%1\" must be a list of files.").arg(definition.name));
        }
        texts.append(text.toString());
    }
    return texts;
}

} // namespace

const QVector<SettingDefinition>& settingDefinitions()
{
    using Kind = SettingKind;
    static const QVector<SettingDefinition> definitions{
        {"project", Kind::File, "FILE", "project to start from"},
        {"models", Kind::Files, "FILE...", "raw_results files of one data set, one per model"},
        {"folder", Kind::File, "DIR",
         "folder with many data sets: raw_results_estimation_model0_data0.csv and so on"},
        {"doses", Kind::Text, "LIST", "candidate doses, such as 0,5,10 or 0:1:10"},
        {"endpoint", Kind::ByModel, "MODEL=EXPR",
         "endpoint expression of a model; MODEL is its name or number"},
        {"weight", Kind::ByModel, "MODEL=EXPR",
         "weight expression of a model; by default the one that the window proposes"},
        {"omega", Kind::ByModel, "MODEL=ROWS",
         "covariance matrix of a model's ETAs, by rows of numbers and columns, such as "
         "0.1,0.02;0.02,COL26"},
        {"log-scale", Kind::YesNo, "yes|no", "whether weights are natural logarithms"},
        {"lower", Kind::Text, "NUMBER", "bound that the endpoint must exceed; -inf for none"},
        {"upper", Kind::Text, "NUMBER", "bound that the endpoint must not exceed; inf for none"},
        // The texts in whose place the program put in bounds, for findings of a repeated run.
        {"lower-text", Kind::Text, "", ""},
        {"upper-text", Kind::Text, "", ""},
        {"levels", Kind::Text, "LIST", "probability levels in percent"},
        {"method", Kind::Choice, "average|selection", "how to combine the models"},
        {"ofv", Kind::Choice, "one|individual",
         "weights of the first sample for all samples, or those of each sample"},
        {"summary", Kind::Choice, "mean|median|75|25",
         "summary of a simulated population; 75 and 25 are percentiles"},
        {"individuals", Kind::Number, "N", "simulated individuals per dose", 0, mostIndividuals},
        {"ofv-column", Kind::Number, "N", "column of the OFV, counted from 1", 1, mostColumns},
        {"theta1-column", Kind::Number, "N", "column of THETA1, counted from 1", 1, mostColumns},
        {"cache", Kind::YesNo, "yes|no",
         "whether selection evaluates all models, as the window does with its cache"},
        {"true-meds", Kind::File, "FILE", "true model and true MED of each data set"},
        {"true-models", Kind::Files, "FILE...", "raw_results files of the simulation models"},
        {"true-model-numbers", Kind::File, "FILE", "numbers of the true models, counted from 0"},
        {"processors", Kind::Number, "N", "processors that share the individuals", 1,
         mostProcessors},
        {"random-position", Kind::Number, "N", "start of the random sequence", 1,
         lastRandomPosition},
        {"truth-position", Kind::Number, "N",
         "start of the random sequence for the true models; by default where the doses end", 1,
         lastRandomPosition},
        {"report", Kind::Text, "LIST", "reports to write, such as html or html,pdf,odt"},
        {"endpoints", Kind::Switch, "", "also write the endpoint values"},
    };
    return definitions;
}

BatchSettings BatchSettings::fromJson(const QByteArray& text, const QString& name,
                                      const QString& folder)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (!document.isObject()) {
        rejectUsage(QString("%1 is not a settings file: %2 at byte %3.")
                        .arg(name, error.error == QJsonParseError::NoError
                                       ? QString("not an object")
                                       : error.errorString())
                        .arg(error.offset));
    }
    QJsonObject object = document.object();
    if (object.value("settings").isObject()) {
        object = object.value("settings").toObject(); // the record of a run
    }
    BatchSettings settings;
    for (auto entry = object.constBegin(); entry != object.constEnd(); ++entry) {
        const auto& all = settingDefinitions();
        const auto definition = std::find_if(all.begin(), all.end(), [&](const auto& known) {
            return entry.key() == QLatin1String(known.name);
        });
        if (definition == all.end()) {
            rejectUsage(
                QString("%1 has the unknown setting \"%2\"; see --help.").arg(name, entry.key()));
        }
        settings.addJson(*definition, entry.value(), folder);
    }
    return settings;
}

void BatchSettings::addJson(const SettingDefinition& definition, const QJsonValue& value,
                            const QString& folder)
{
    switch (definition.kind) {
    case SettingKind::YesNo:
    case SettingKind::Switch:
        if (!value.isBool()) {
            rejectUsage(QString("The setting \"%1\" must be true or false.").arg(definition.name));
        }
        set(definition.name, value);
        break;
    case SettingKind::ByModel:
        if (!value.isObject()) {
            rejectUsage(QString("The setting \"%1\" must be an object with a text for each model.")
                            .arg(definition.name));
        }
        {
            const QJsonObject given = value.toObject();
            QJsonObject texts;
            for (auto text = given.constBegin(); text != given.constEnd(); ++text) {
                texts.insert(text.key(), jsonText(definition, text.value()));
            }
            set(definition.name, texts);
        }
        break;
    case SettingKind::File:
    case SettingKind::Files: {
        QStringList paths;
        for (const QString& path : jsonTexts(definition, value)) {
            paths.append(absolutePath(path, folder));
        }
        if (paths.isEmpty()) {
            rejectUsage(QString("The setting \"%1\" names no file.").arg(definition.name));
        }
        if (definition.kind == SettingKind::File && paths.size() > 1) {
            rejectUsage(QString("The setting \"%1\" takes only one file.").arg(definition.name));
        }
        add(definition, paths);
        break;
    }
    default:
        add(definition, {jsonText(definition, value)});
    }
}

void BatchSettings::add(const SettingDefinition& definition, const QStringList& given)
{
    const QString last = given.isEmpty() ? QString() : given.constLast();
    switch (definition.kind) {
    case SettingKind::Text:
        set(definition.name, last);
        break;
    case SettingKind::Choice:
        set(definition.name, readChoice(definition, last));
        break;
    case SettingKind::Number:
        set(definition.name, readNumber(definition, last));
        break;
    case SettingKind::YesNo:
        set(definition.name, readYesNo(definition, last));
        break;
    case SettingKind::Switch:
        set(definition.name, true);
        break;
    case SettingKind::File:
        set(definition.name, absolutePath(last, "."));
        break;
    case SettingKind::Files: {
        QStringList paths;
        for (const QString& path : given) {
            paths.append(absolutePath(path, "."));
        }
        set(definition.name, QJsonArray::fromStringList(paths));
        break;
    }
    case SettingKind::ByModel: {
        QJsonArray texts;
        for (const QString& text : given) {
            const int equals = text.indexOf('=');
            if (equals < 1) {
                rejectUsage(QString("%1 takes %2, not \"%3\".")
                                .arg(optionName(definition), definition.value, text));
            }
            texts.append(QJsonObject{{text.left(equals), text.mid(equals + 1)}});
        }
        set(definition.name, texts);
        break;
    }
    }
}

void BatchSettings::beatenBy(const BatchSettings& other)
{
    // Giving one of these replaces the others.
    for (const auto& alternatives :
         {QVector<const char*>{"project", "models", "folder"},
          QVector<const char*>{"lower", "lower-text"}, QVector<const char*>{"upper", "upper-text"},
          QVector<const char*>{"true-meds", "true-models", "true-model-numbers"}}) {
        if (std::any_of(alternatives.begin(), alternatives.end(),
                        [&](const char* name) { return other.has(name); })) {
            for (const char* const name : alternatives) {
                remove(name);
            }
        }
    }
    for (const SettingDefinition& definition : settingDefinitions()) {
        if (!other.has(definition.name)) {
            continue;
        }
        QJsonValue value = other.values.value(definition.name);
        if (definition.kind == SettingKind::ByModel) {
            // Both are kept: one may give the model's name, the other its number.
            QJsonArray texts = listOf(values.value(definition.name));
            for (const QJsonValue text : listOf(value)) {
                texts.append(text);
            }
            value = texts;
        }
        set(definition.name, value);
    }
}

QStringList BatchSettings::files(const char* name) const
{
    QStringList paths;
    for (const QJsonValue path : values.value(name).toArray()) {
        paths.append(path.toString());
    }
    return paths;
}

QVector<ModelText> BatchSettings::byModel(const char* name) const
{
    QVector<ModelText> texts;
    for (const QJsonValue given : listOf(values.value(name))) {
        const QJsonObject object = given.toObject();
        for (auto text = object.constBegin(); text != object.constEnd(); ++text) {
            texts.append({text.key(), text.value().toString()});
        }
    }
    return texts;
}
