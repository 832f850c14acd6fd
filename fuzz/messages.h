// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_FUZZ_MESSAGES_H
#define VELMORA_FUZZ_MESSAGES_H

#include <QString>

#include <cstdio>
#include <cstdlib>

/// A message handler: ends the program at the first warning of Qt, which tells of a fault
/// of ours. What the program itself reports are debug messages; they are dropped.
inline void failOnWarning(QtMsgType type, const QMessageLogContext& /*context*/,
                          const QString& text)
{
    // The offscreen platform excuses itself for what it cannot do.
    if (type == QtDebugMsg || type == QtInfoMsg || text.startsWith("This plugin does not")) {
        return;
    }
    std::fprintf(stderr, "%s\n", qPrintable(text));
    std::abort();
}

#endif
