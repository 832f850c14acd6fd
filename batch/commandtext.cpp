// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/commandtext.h"

#include <QJsonDocument>
#include <QRegularExpression>

#include <algorithm>

namespace {

/// Shells and terminals take longer lines, but people cannot read them.
constexpr int longestLine = 4000;

const char* const outputOption = " --output results";

/// The text, in quotes if a shell would read it in another way.
QString quoted(const QString& text)
{
    static const QRegularExpression harmless("^[A-Za-z0-9_./:=,+-]+$");
    return harmless.match(text).hasMatch() ? text
                                           : '\'' + QString(text).replace('\'', "'\\''") + '\'';
}

QString option(const char* name, const QString& value)
{
    return QString(" --%1 ").arg(name) + quoted(value);
}

QString optionsOf(const BatchSettings& settings, const SettingDefinition& definition)
{
    const char* const name = definition.name;
    QString texts;
    switch (definition.kind) {
    case SettingKind::Switch:
        return settings.isYes(name) ? QString(" --") + name : QString();
    case SettingKind::YesNo:
        return option(name, settings.isYes(name) ? "yes" : "no");
    case SettingKind::Number:
        return option(name, QString::number(settings.number(name)));
    case SettingKind::Files:
        texts = QString(" --") + name;
        for (const QString& path : settings.files(name)) {
            texts += ' ' + quoted(path);
        }
        return texts;
    case SettingKind::ByModel: {
        for (const ModelText& given : settings.byModel(name)) {
            texts += option(name, given.model + '=' + given.text);
        }
        return texts;
    }
    default:
        // The project is the argument, not an option.
        return QLatin1String(name) == QLatin1String("project")
                   ? ' ' + quoted(settings.textOf(name))
                   : option(name, settings.textOf(name));
    }
}

/// True if the name of a model would be cut at its first equals sign.
bool hasUnfitName(const BatchSettings& settings)
{
    for (const SettingDefinition& definition : settingDefinitions()) {
        if (definition.kind == SettingKind::ByModel) {
            const QVector<ModelText> texts = settings.byModel(definition.name);
            if (std::any_of(texts.begin(), texts.end(),
                            [](const ModelText& given) { return given.model.contains('='); })) {
                return true;
            }
        }
    }
    return false;
}

bool isForShell(const QString& line)
{
    return line.size() <= longestLine
           && std::all_of(line.begin(), line.end(), [](QChar letter) { return letter.isPrint(); });
}

} // namespace

QString commandText(const BatchSettings& settings)
{
    QString line = "velmora-batch";
    for (const SettingDefinition& definition : settingDefinitions()) {
        if (settings.has(definition.name)) {
            line += optionsOf(settings, definition);
        }
    }
    line += outputOption;
    if (isForShell(line) && !hasUnfitName(settings)) {
        return line;
    }
    return QString("velmora-batch --settings -%1 <<'END'\n%2END\n")
        .arg(outputOption,
             QString::fromUtf8(QJsonDocument(settings.json()).toJson(QJsonDocument::Indented)));
}
