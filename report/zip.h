// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_ZIP_H
#define VELMORA_REPORT_ZIP_H

#include <QByteArray>

/// Builds a ZIP archive (PKWARE's APPNOTE 6.3, without extensions). The same content always gives
/// the same bytes.
class ZipArchive
{
public:
    enum class Packing { Stored, Deflated };

    /// Names are ASCII.
    void add(const QByteArray& name, const QByteArray& content, Packing packing);

    /// The archive with all files added so far.
    QByteArray finished() const;

private:
    QByteArray files;
    QByteArray directory;
    int count = 0;
};

#endif
