// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/numberedfiles.h"

#include <QDirIterator>

FileGap gapAt(int number, const QString& folder, const QString& before, const QString& after)
{
    FileGap gap{before + QString::number(number) + after};
    for (QDirIterator files(folder, QDir::Files); files.hasNext();) {
        files.next();
        const QString name = files.fileName();
        const int digits = name.size() - before.size() - after.size();
        if (digits > 0 && name.startsWith(before) && name.endsWith(after)) {
            const QString text = name.mid(before.size(), digits);
            const int found = text.toInt();
            gap.filesBehind += found > number && text == QString::number(found) ? 1 : 0;
        }
    }
    return gap;
}
