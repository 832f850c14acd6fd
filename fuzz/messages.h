// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_FUZZ_MESSAGES_H
#define VELMORA_FUZZ_MESSAGES_H

#include <QString>

#include <cstdio>
#include <cstdlib>

/// A message handler: ends the program at the first warning of Qt, which means a fault of
/// Velmora. The program's own reports are debug messages; the handler drops them.
inline void failOnWarning(QtMsgType type, const QMessageLogContext& /*context*/,
                          const QString& text)
{
    // The offscreen platform warns about what it cannot do.
    if (type == QtDebugMsg || type == QtInfoMsg || text.startsWith("This plugin does not")) {
        return;
    }
    std::fprintf(stderr, "%s\n", qPrintable(text));
    std::abort();
}

#endif
