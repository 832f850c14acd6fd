// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_SETTINGS_H
#define VELMORA_BATCH_SETTINGS_H

#include <QJsonObject>
#include <QStringList>
#include <QVector>

/// The kind of value that a setting has.
enum class SettingKind {
    Text,
    Number, ///< a whole number between the limits
    YesNo,
    Switch, ///< yes if given
    Choice, ///< one of the choices
    File,
    Files,
    ByModel ///< texts for some models
};

/// A setting: its name on the command line and in settings files.
struct SettingDefinition
{
    const char* name;
    SettingKind kind;
    const char* value; ///< name of the value in the help, or the choices separated by |
    const char* description;
    int lowest = 0;
    int highest = 0;

    QStringList choices() const { return QString(value).split('|'); }
    /// True if the setting is also an option of the command line.
    bool isOption() const { return *description != '\0'; }
};

/// Everything that a run depends on, in the order of the help.
const QVector<SettingDefinition>& settingDefinitions();

/// The text of a setting for one model.
struct ModelText
{
    QString model; ///< its name or its number
    QString text;
};

/// The settings that were given. A missing setting has the value of the project, or the one that
/// the program starts with.
///
/// A wrong setting ends the run as wrong usage.
class BatchSettings
{
public:
    BatchSettings() = default;

    /// Reads a settings file or the record of a run. Its paths are relative to the folder.
    static BatchSettings fromJson(const QByteArray& text, const QString& name,
                                  const QString& folder);

    /// Adds the values of a setting as typed on the command line.
    void add(const SettingDefinition& definition, const QStringList& given);

    /// Takes over other settings; these replace the ones that are here.
    void beatenBy(const BatchSettings& other);

    bool has(const char* name) const { return values.contains(name); }
    QString textOf(const char* name) const { return values.value(name).toString(); }
    int number(const char* name) const { return values.value(name).toInt(); }
    bool isYes(const char* name) const { return values.value(name).toBool(); }
    QStringList files(const char* name) const;
    /// The texts in the order in which they were given. A later one replaces an earlier one of the
    /// same model.
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
