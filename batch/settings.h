// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_SETTINGS_H
#define VELMORA_BATCH_SETTINGS_H

#include <QJsonObject>
#include <QStringList>
#include <QVector>

/// What the value of a setting is.
enum class SettingKind {
    Text,
    Number, ///< a whole number between the limits
    YesNo,
    Switch, ///< yes where it is given
    Choice, ///< one of the choices
    File,
    Files,
    ByModel ///< a text for each of some models
};

/// A setting: its name on the command line and in settings files.
struct SettingDefinition
{
    const char* name;
    SettingKind kind;
    const char* value; ///< what stands for the value in the help, or the choices with | between
    const char* description;
    int lowest = 0;
    int highest = 0;

    QStringList choices() const { return QString(value).split('|'); }
    /// Whether it is an option of the command line, too.
    bool isOption() const { return *description != '\0'; }
};

/// Everything that a run depends on, in the order of the help.
const QVector<SettingDefinition>& settingDefinitions();

/// What is said of one model.
struct ModelText
{
    QString model; ///< its name, or its number
    QString text;
};

/// What a run is asked for: the settings that were given. What is missing has the value of the
/// project, or the one that the program starts with.
///
/// A setting that makes no sense ends the run as wrong usage.
class BatchSettings
{
public:
    BatchSettings() = default;

    /// From a settings file or the record of a run. Paths in it are relative to the folder.
    static BatchSettings fromJson(const QByteArray& text, const QString& name,
                                  const QString& folder);

    /// Adds the values of a setting as they were typed on the command line.
    void add(const SettingDefinition& definition, const QStringList& given);

    /// Takes over what other settings say, which beats what these say.
    void beatenBy(const BatchSettings& other);

    bool has(const char* name) const { return values.contains(name); }
    QString textOf(const char* name) const { return values.value(name).toString(); }
    int number(const char* name) const { return values.value(name).toInt(); }
    bool isYes(const char* name) const { return values.value(name).toBool(); }
    QStringList files(const char* name) const;
    /// In the order in which they were given: what comes later beats what a model had before.
    QVector<ModelText> byModel(const char* name) const;

    void set(const char* name, const QJsonValue& value) { values.insert(name, value); }
    void remove(const char* name) { values.remove(name); }
    const QJsonObject& json() const { return values; }

private:
    void addJson(const SettingDefinition& definition, const QJsonValue& value,
                 const QString& folder);

    QJsonObject values; ///< by name
};

#endif
