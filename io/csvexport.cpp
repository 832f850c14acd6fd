// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/csvexport.h"

#include "io/safefile.h"

#include <algorithm>

namespace {

bool breaksField(QChar character)
{
    return character == '\t' || character == '\n' || character == '\r';
}

bool needsQuotes(const QString& field)
{
    return std::any_of(field.cbegin(), field.cend(), [](QChar character) {
        return character == ',' || character == '"' || character == '\n' || character == '\r';
    });
}

} // namespace

QString tabSeparated(const TextRows& rows)
{
    QString text;
    for (const QStringList& row : rows) {
        for (const QString& field : row) {
            const int start = text.size();
            text += field;
            std::replace_if(text.begin() + start, text.end(), breaksField, QChar(' '));
            text += '\t';
        }
        if (!row.isEmpty()) {
            text.chop(1);
        }
        text += '\n';
    }
    text.chop(1);
    return text;
}

QByteArray commaSeparated(const TextRows& rows)
{
    QByteArray text;
    for (const QStringList& row : rows) {
        for (const QString& field : row) {
            text += needsQuotes(field) ? '"' + QString(field).replace('"', "\"\"").toUtf8() + '"'
                                       : field.toUtf8();
            text += ',';
        }
        if (!row.isEmpty()) {
            text.chop(1);
        }
        text += "\r\n";
    }
    return text;
}

bool writeFile(const QString& path, const QByteArray& content)
{
    // Unbuffered, so that a write to a full disk fails at once.
    SafeFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)
           && file.write(content) == content.size() && file.commit();
}
