// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_CSVEXPORT_H
#define VELMORA_IO_CSVEXPORT_H

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

// What leaves the program: texts for other programs, and files.

/// Texts as other programs are to get them, [row][column]; headings are a row of their own.
using TextRows = QVector<QStringList>;

/// The rows as lines of tab-separated fields, for the clipboard; the last line has no line
/// break. A tab or line break within a field becomes a blank.
QString tabSeparated(const TextRows& rows);

/// The rows as comma-separated lines in UTF-8. A field with a comma, a quote or a line break
/// is quoted, quotes in it are doubled (RFC 4180).
QByteArray commaSeparated(const TextRows& rows);

/// Writes the file. The previous one stays until the new one is complete.
/// False, with the previous file as it was, if anything fails; so for what is no file.
bool writeFile(const QString& path, const QByteArray& content);

#endif
