// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_REPORT_PAGETEXT_H
#define VELMORA_TESTS_REPORT_PAGETEXT_H

#include <QXmlStreamReader>

/// What stands in the elements of well-formed XML, a line each; cells of tables share the line
/// of their row. The error if it is not well-formed.
inline QString pageText(const QByteArray& xml)
{
    QXmlStreamReader reader(xml);
    QString text;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::Characters && !reader.isWhitespace()) {
            text += reader.text();
        } else if (token == QXmlStreamReader::EndElement && reader.name() != QLatin1String("wbr")) {
            const bool isCell =
                reader.name() == QLatin1String("td") || reader.name() == QLatin1String("th");
            text += isCell ? '|' : '\n';
        }
    }
    return reader.hasError() ? reader.errorString() : text.replace(QChar(0xa0), ' ');
}

#endif
