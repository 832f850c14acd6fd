// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_BATCH_H
#define VELMORA_BATCH_BATCH_H

#include "batch/commandline.h"
#include "batch/error.h"

/// Does what is asked for. What cannot be done ends the run by a BatchError.
ExitCode performTask(const CommandLine& line);

#endif
