// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_FILESIZELIMIT_H
#define VELMORA_IO_FILESIZELIMIT_H

#include <QtGlobal>

#include <csignal>

/// While it exists, a write beyond the limit of file sizes (ulimit -f) fails as on a full disk.
/// Otherwise the system would end the program, and the analysis would be lost.
class FileSizeSignalIgnored
{
public:
    Q_DISABLE_COPY(FileSizeSignalIgnored)
#ifdef SIGXFSZ
    FileSizeSignalIgnored()
        : before(std::signal(SIGXFSZ, SIG_IGN))
    {
    }
    ~FileSizeSignalIgnored()
    {
        std::signal(SIGXFSZ, before);
    }

private:
    void (*before)(int);
#else
    FileSizeSignalIgnored() {}
#endif
};

#endif
