// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_CSVEXPORT_H
#define VELMORA_IO_CSVEXPORT_H

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

// Exports: texts for other programs, and files.

/// Texts for other programs, [row][column]. Headings are a row of their own.
using TextRows = QVector<QStringList>;

/// The rows as lines of tab-separated fields, for the clipboard. The last line has no line
/// break. A tab or line break in a field becomes a blank.
QString tabSeparated(const TextRows& rows);

/// The rows as comma-separated lines in UTF-8. A field with a comma, a quote or a line break
/// is quoted, and its quotes are doubled (RFC 4180).
QByteArray commaSeparated(const TextRows& rows);

/// Writes the file. The previous file stays until the new one is complete. False if anything
/// fails or the path is not a regular file; the previous file is then unchanged.
bool writeFile(const QString& path, const QByteArray& content);

#endif
