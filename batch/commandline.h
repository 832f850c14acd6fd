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
    BatchSettings settings;               ///< of the settings file and, beating it, of the options
    QStringList shards;                   ///< folders to merge
    QString output;                       ///< folder; empty for none
    std::optional<DataSetRange> dataSets; ///< of a shard
    QString plan;
    QString project; ///< to save
    bool resumes = false;
    bool isStrict = false;
    bool isDryRun = false;
    bool isQuiet = false;
};

/// Reads the arguments, the program's name first. What makes no sense ends the run.
CommandLine readCommandLine(const QStringList& arguments);

#endif
