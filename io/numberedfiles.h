// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_NUMBEREDFILES_H
#define VELMORA_IO_NUMBEREDFILES_H

#include <QString>

/// A gap in the numbers of a folder's files.
struct FileGap
{
    QString missing;     ///< name of the first file that is missing
    int filesBehind = 0; ///< how many files have higher numbers
};

/// The gap at a number whose file is missing. Names are before, a number in decimal digits, after.
FileGap gapAt(int number, const QString& folder, const QString& before, const QString& after);

#endif
