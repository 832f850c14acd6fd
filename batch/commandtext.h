// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_COMMANDTEXT_H
#define VELMORA_BATCH_COMMANDTEXT_H

#include "batch/settings.h"

/// The line for a POSIX shell that runs velmora-batch with these settings. Settings that contain
/// line breaks or are too long for a line follow it as the text of a settings file.
QString commandText(const BatchSettings& settings);

#endif
