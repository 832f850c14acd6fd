// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/commandline.h"

#include "batch/datasource.h"
#include "batch/error.h"
#include "compat/qtversions.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>

#include <cstdio>

namespace {

constexpr int longestSettings = 64 << 20;

const char* const mergeName = "merge";

const char* const usage =
    "[options] PROJECT\n"
    "       velmora-batch [options] --models FILE...\n"
    "       velmora-batch [options] --folder DIR\n"
    "       velmora-batch merge SHARD... -o DIR\n\n"
    "Runs an analysis without a window and writes to files what the window would show.";

void addOptions(QCommandLineParser& parser)
{
    for (const SettingDefinition& definition : settingDefinitions()) {
        if (!definition.isOption() || QLatin1String(definition.name) == QLatin1String("project")) {
            continue; // settings only for files, and the argument
        }
        QCommandLineOption option(QString(definition.name), definition.description);
        option.setValueName(definition.value);
        parser.addOption(option);
    }
    parser.addOption({"settings", "read settings from FILE; - is standard input", "FILE"});
    parser.addOption(
        {"data-sets", "calculate only the data sets from A to before B, as a shard", "A:B"});
    parser.addOption({"plan",
                      "count the random numbers of all data sets and write the counts to FILE; "
                      "with --output, read them from FILE",
                      "FILE"});
    parser.addOption({{"o", "output"}, "write results to this folder, new or empty", "DIR"});
    parser.addOption({"resume", "complete an earlier run in the folder; skip what is complete"});
    parser.addOption({"save-project", "write a project that the window can open", "FILE"});
    parser.addOption({"strict", "exit with code 3 if there are findings"});
    parser.addOption({"dry-run", "check the inputs, print all settings, and calculate nothing"});
    parser.addOption({"quiet", "show neither progress nor findings"});
    parser.addOption({{"h", "help"}, "show this text"});
    parser.addOption({"version", "show the version"});
}

/// Puts the name of an option before each of its values: --models a b becomes --models=a
/// --models=b.
QStringList withSingleValues(const QStringList& arguments)
{
    QStringList single;
    QString option;
    bool isMissing = false; // the first value of the option
    for (const QString& argument : arguments + QStringList("-")) {
        const bool isValue = !argument.startsWith('-');
        if (isValue) {
            single.append(option.isEmpty() ? argument : option + '=' + argument);
            isMissing = false;
            continue;
        }
        if (isMissing) {
            single.append(option); // the parser reports it
        }
        isMissing = argument == "--models" || argument == "--true-models";
        option = isMissing ? argument : QString();
        if (!isMissing) {
            single.append(argument);
        }
    }
    single.removeLast();
    return single;
}

QByteArray settingsText(const QString& name)
{
    QFile file(name);
    if (name == "-" ? !file.open(stdin, QIODevice::ReadOnly)
                    : (demandFile(name, "--settings"), !file.open(QIODevice::ReadOnly))) {
        fail(QString("--settings: %1 cannot be read: %2.").arg(name, file.errorString()));
    }
    return file.read(longestSettings);
}

BatchSettings readSettings(const QCommandLineParser& parser)
{
    BatchSettings settings;
    if (parser.isSet("settings")) {
        const QString name = parser.value("settings");
        const QString folder = name == "-" ? "." : QFileInfo(name).absolutePath();
        settings = BatchSettings::fromJson(settingsText(name), name, folder);
    }
    BatchSettings options;
    for (const SettingDefinition& definition : settingDefinitions()) {
        if (QLatin1String(definition.name) == QLatin1String("project")) {
            const QStringList names = parser.positionalArguments();
            if (names.size() > 1) {
                rejectUsage(
                    QString("Only one project at a time; %1 is one too many.").arg(names.at(1)));
            }
            if (!names.isEmpty()) {
                options.add(definition, names);
            }
        } else if (definition.isOption() && parser.isSet(definition.name)) {
            options.add(definition, parser.values(definition.name));
        }
    }
    settings.beatenBy(options);
    return settings;
}

DataSetRange readRange(const QString& text)
{
    const QStringList parts = text.split(':');
    bool hasFirst = false;
    bool hasEnd = false;
    const DataSetRange range{wholeNumber(parts.value(0), &hasFirst),
                             wholeNumber(parts.value(1), &hasEnd)};
    if (parts.size() != 2 || !hasFirst || !hasEnd || range.first < 0 || range.count() < 1) {
        rejectUsage(QString("--data-sets takes the first data set and the one after the last, such "
                            "as 0:100, not \"%1\".")
                        .arg(text));
    }
    return range;
}

/// A merge uses the settings of its shards, and so takes few options.
void demandMergeOptions(const QCommandLineParser& parser)
{
    const QStringList known{"o", "output", "resume", "strict", "quiet"};
    for (const QString& name : parser.optionNames()) {
        if (!known.contains(name)) {
            rejectUsage(
                QString("merge takes no --%1: it uses the settings of its shards.").arg(name));
        }
    }
}

} // namespace

CommandLine readCommandLine(const QStringList& arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    CommandLine line;
    if (!parser.parse(withSingleValues(arguments))) {
        QString error = parser.errorText();
        error.chop(int(error.endsWith('.')));
        rejectUsage(error + "; see --help.");
    }
    if (parser.isSet("help")) {
        line.task = CommandLine::Task::Help;
        line.helpText = parser.helpText().replace("[options]", usage);
        return line;
    }
    if (parser.isSet("version")) {
        line.task = CommandLine::Task::Version;
        return line;
    }
    line.output = parser.value("output");
    line.plan = parser.value("plan");
    line.project = parser.value("save-project");
    line.resumes = parser.isSet("resume");
    line.isStrict = parser.isSet("strict");
    line.isDryRun = parser.isSet("dry-run");
    line.isQuiet = parser.isSet("quiet");
    for (const char* const name : {"output", "plan", "save-project", "settings"}) {
        if (parser.isSet(name) && parser.value(name).isEmpty()) {
            rejectUsage(QString("--%1 needs a name.").arg(name));
        }
    }
    const QStringList names = parser.positionalArguments();
    if (names.value(0) == mergeName) {
        line.task = CommandLine::Task::Merge;
        line.shards = names.mid(1);
        demandMergeOptions(parser);
        return line;
    }
    if (parser.isSet("data-sets")) {
        line.dataSets = readRange(parser.value("data-sets"));
        if (!line.project.isEmpty()) {
            rejectUsage("--save-project needs all data sets: leave out --data-sets.");
        }
        if (line.output.isEmpty() && !line.isDryRun) {
            rejectUsage("--data-sets needs a folder for the shard: give --output DIR.");
        }
    }
    line.settings = readSettings(parser);
    return line;
}
