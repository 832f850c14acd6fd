// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_ZIP_H
#define VELMORA_REPORT_ZIP_H

#include <QByteArray>

/// A ZIP archive in the making (PKWARE's APPNOTE 6.3, without extensions). It is the same for the
/// same content, whenever it is made.
class ZipArchive
{
public:
    enum class Packing { Stored, Deflated };

    /// Names are ASCII.
    void add(const QByteArray& name, const QByteArray& content, Packing packing);

    /// The archive with all that was added.
    QByteArray finished() const;

private:
    QByteArray files;
    QByteArray directory;
    int count = 0;
};

#endif
