// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_COMMANDLINE_H
#define VELMORA_BATCH_COMMANDLINE_H

#include "batch/record.h"
#include "batch/settings.h"

#include <optional>

/// What the command line asks for.
struct CommandLine
{
    enum class Task { Run, Merge, Help, Version };

    Task task = Task::Run;
    QString helpText;
    BatchSettings settings;               ///< of the options, then of the settings file
    QStringList shards;                   ///< folders to merge
    QString output;                       ///< folder; empty for none
    std::optional<DataSetRange> dataSets; ///< of a shard; none for the whole run
    QString plan;
    QString project; ///< the project file to save
    bool resumes = false;
    bool isStrict = false;
    bool isDryRun = false;
    bool isQuiet = false;
};

/// Reads the arguments; the first one is the program's name. Wrong usage ends the run.
CommandLine readCommandLine(const QStringList& arguments);

#endif
