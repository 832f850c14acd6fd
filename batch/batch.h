// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_BATCH_H
#define VELMORA_BATCH_BATCH_H

#include "batch/commandline.h"
#include "batch/error.h"

/// Does what the command line asks for. Throws a BatchError if it cannot.
ExitCode performTask(const CommandLine& line);

#endif
