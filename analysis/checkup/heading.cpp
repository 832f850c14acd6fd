// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/heading.h"

#include "model/binding.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <cmath>

namespace {

int skipBlanks(const QString& line, int position)
{
    while (position < line.size() && line.at(position).isSpace()) {
        ++position;
    }
    return position;
}

/// The end of the field that begins in a quote at open, behind the blanks that follow the
/// closing quote; -1 if no quote closes it. A doubled quote stands for one.
int quotedFieldEnd(const QString& line, int open)
{
    int close = line.indexOf('"', open + 1);
    while (close >= 0) {
        const int end = skipBlanks(line, close + 1);
        if (end == line.size() || line.at(end) == ',') {
            return end;
        }
        const bool doubled = close + 1 < line.size() && line.at(close + 1) == '"';
        close = doubled ? line.indexOf('"', close + 2) : -1;
    }
    return -1;
}

/// A quote that was never closed, or closed within the name, is not part of the name either.
QString withoutQuotes(QStringView name)
{
    name = name.trimmed();
    if (name.size() > 1 && name.startsWith('"') && name.endsWith('"')) {
        name = name.mid(1, name.size() - 2);
        return name.contains('"') ? name.toString().replace("\"\"", "\"").trimmed()
                                  : name.trimmed().toString();
    }
    if (name.startsWith('"')) {
        name = name.mid(1);
    } else if (name.endsWith('"')) {
        name.chop(1);
    }
    return name.trimmed().toString();
}

/// The heading line of the file, without marks of the encoding.
QString headingLine(const QStringList& headingPieces)
{
    QString line = headingPieces.join(',');
    for (const QString& mark :
         {QString(QChar::ByteOrderMark), QString::fromLatin1("\xef\xbb\xbf")}) {
        if (line.startsWith(mark)) {
            line.remove(0, mark.size());
        }
    }
    return line;
}

QStringList namesIn(const QString& line)
{
    QStringList names;
    for (int begin = 0; begin <= line.size();) {
        const int first = skipBlanks(line, begin);
        const bool quoted = first < line.size() && line.at(first) == '"';
        int end = quoted ? quotedFieldEnd(line, first) : -1;
        if (end < 0) {
            end = line.indexOf(',', begin);
        }
        if (end < 0) {
            end = line.size();
        }
        names.append(withoutQuotes(QStringView(line).mid(begin, end - begin)));
        begin = end + 1;
    }
    return names;
}

QChar foreignSeparatorIn(const QString& line)
{
    int commas = 0;
    int semicolons = 0;
    int tabs = 0;
    bool quoted = false;
    for (const QChar letter : line) {
        quoted = quoted != (letter == '"');
        commas += int(!quoted && letter == ',');
        semicolons += int(!quoted && letter == ';');
        tabs += int(!quoted && letter == '\t');
    }
    return semicolons > commas ? ';' : tabs > commas ? '\t' : QChar();
}

/// Whether a heading is a row of data; missing values do not decide.
bool areNumbers(const QStringList& names)
{
    int numbers = 0;
    int words = 0;
    for (const QString& name : names) {
        bool isNumber = false;
        name.toDouble(&isNumber);
        const bool isMissing = name.isEmpty() || name == QLatin1String("NA");
        numbers += int(isNumber);
        words += int(!isNumber && !isMissing);
    }
    return numbers > words;
}

/// The content of a column that is, by its name, not a THETA. isNamed returns whether a column has
/// a name.
template <typename IsNamed>
QString kindOf(const QString& name, IsNamed isNamed)
{
    static const QRegularExpression parameter("^(THETA\\d+$|(OMEGA|SIGMA)\\()");
    static const QRegularExpression eigenvalue("^EI\\d+$");
    const QString ofError = name.startsWith("se") ? name.mid(2) : QString();
    if (!ofError.isEmpty() && (parameter.match(ofError).hasMatch() || isNamed(ofError))) {
        return "a standard error";
    }
    return name.startsWith("OMEGA(")           ? "an OMEGA"
           : name.startsWith("SIGMA(")         ? "a SIGMA"
           : name.startsWith("shrinkage_")     ? "a shrinkage"
           : eigenvalue.match(name).hasMatch() ? "an eigenvalue"
                                               : "";
}

/// The first column behind THETA1 whose name belongs behind the THETAs; count if none.
int thetasEnd(const QStringList& names, int colNumTHETA1, int count)
{
    const int begin = qMax(0, colNumTHETA1);
    const int end = qMin(names.size(), count);
    // Any number of names may begin as those of standard errors do.
    QSet<QString> sought;
    for (int column = begin; column < end; ++column) {
        if (names.at(column).startsWith("se")) {
            sought.insert(names.at(column).mid(2));
        }
    }
    QSet<QString> found;
    for (const QString& name : names) {
        if (sought.contains(name)) {
            found.insert(name);
        }
    }
    const auto isNamed = [&found](const QString& name) { return found.contains(name); };
    for (int column = begin; column < end; ++column) {
        if (!kindOf(names.at(column), isNamed).isEmpty()) {
            return column;
        }
    }
    return count;
}

QString firstValue(int column, const QVector<double>& row)
{
    if (column >= row.size()) {
        return QString("beyond the first row, which has %1 columns").arg(row.size());
    }
    return std::isnan(row.at(column)) ? QString("no number in the first row")
                                      : "first value " + QString::number(row.at(column), 'g', 6);
}

} // namespace

Heading headingOf(const QStringList& pieces)
{
    Heading heading;
    const QString line = headingLine(pieces);
    heading.names = pieces.isEmpty() ? QStringList() : namesIn(line);
    heading.foreignSeparator = foreignSeparatorIn(line);
    heading.isNumeric = areNumbers(heading.names);
    const auto withComma = std::find_if(heading.names.constBegin(), heading.names.constEnd(),
                                        [](const QString& name) { return name.contains(','); });
    heading.firstCut = int(withComma - heading.names.constBegin());
    return heading;
}

QVector<Heading> headingsOf(const QVector<QStringList>& pieces)
{
    QVector<Heading> headings;
    for (int model = 0; model < pieces.size(); ++model) {
        const bool isRepeated = model > 0 && pieces.at(model) == pieces.at(model - 1);
        headings.append(isRepeated ? headings.constLast() : headingOf(pieces.at(model)));
    }
    return headings;
}

QStringList columnNames(const QStringList& headingPieces)
{
    return headingPieces.isEmpty() ? QStringList() : namesIn(headingLine(headingPieces));
}

QChar foreignSeparator(const QStringList& headingPieces)
{
    return foreignSeparatorIn(headingLine(headingPieces));
}

int columnNamed(const QStringList& names, const QString& name)
{
    for (int column = 0; column < names.size(); ++column) {
        const QString& other = names.at(column);
        if (other.size() == name.size() && other.compare(name, Qt::CaseInsensitive) == 0) {
            return column;
        }
    }
    return -1;
}

QString otherThanTheta(const QStringList& names, int column)
{
    return kindOf(names.value(column),
                  [&names](const QString& name) { return names.contains(name); });
}

QStringList describeColumns(int count, const QStringList& names, const Table& rows, int colNumOFV,
                            int colNumTHETA1)
{
    QStringList descriptions;
    const int firstTheta = colNumTHETA1 < 1 ? count : colNumTHETA1 - 1;
    const int endOfThetas = thetasEnd(names, colNumTHETA1, count);
    for (int column = 0; column < count; ++column) {
        QStringList parts{QString("COL%1").arg(column + 1)};
        const bool readByWeights = column == colNumOFV - 1;
        const bool readByEndpoints = column == endpointOfvColumn - 1;
        if (readByWeights || readByEndpoints) {
            parts.append(readByWeights && readByEndpoints ? "read as ofv"
                         : readByWeights                  ? "read as ofv by weights"
                                                          : "read as ofv by endpoints");
        }
        if (column >= firstTheta && column < endOfThetas) {
            parts.append(QString("read as THETA%1").arg(column - firstTheta + 1));
        }
        const QString name = names.value(column);
        parts.append(name.isEmpty() ? "without a name" : "named " + name);
        if (!rows.isEmpty()) {
            parts.append(firstValue(column, rows.first()));
        }
        descriptions.append(parts.join(", "));
    }
    return descriptions;
}
