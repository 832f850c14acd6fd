// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/document.h"

#include "analysis/checkup/wording.h"
#include "report/columns.h"

#include <QRegularExpression>

namespace {

constexpr QChar firstStrongIsolate(0x2068);
constexpr QChar popIsolate(0x2069);

/// True if the letter changes the direction of the text that follows, until another ends it.
bool turnsDirection(QChar letter)
{
    const ushort code = letter.unicode();
    return code >= 0x202a && code <= 0x202e;
}

bool isIsolate(QChar letter)
{
    const ushort code = letter.unicode();
    return code >= 0x2066 && code <= 0x2069;
}

bool isForbidden(QChar letter)
{
    const ushort code = letter.unicode();
    return code < 0x20 || (code >= 0x7f && code < 0xa0) || letter == QChar::LineSeparator
           || letter == QChar::ParagraphSeparator || letter.isNonCharacter();
}

bool runsLeft(QChar letter)
{
    return letter.direction() == QChar::DirR || letter.direction() == QChar::DirAL;
}

QStringList documentTexts(const QStringList& texts)
{
    QStringList fit;
    for (const QString& text : texts) {
        fit.append(documentText(text));
    }
    return fit;
}

} // namespace

QString documentText(const QString& text, int longest)
{
    const QString shown =
        text.size() <= longest
            ? text
            : text.left(longest) + QString("... (%1 characters in all)").arg(text.size());
    QString fit;
    fit.reserve(shown.size());
    for (int place = 0; place < shown.size(); ++place) {
        const QChar letter = shown.at(place);
        const bool isPair = letter.isHighSurrogate() && place + 1 < shown.size()
                            && shown.at(place + 1).isLowSurrogate();
        if (isPair) {
            fit += letter;
            fit += shown.at(++place);
        } else if (turnsDirection(letter)) {
            continue;
        } else if (letter.isSurrogate()) {
            fit += QChar(QChar::ReplacementCharacter);
        } else {
            fit += isForbidden(letter) ? QChar(' ') : letter;
        }
    }
    return fit;
}

QStringList textPieces(const QString& text)
{
    static const QRegularExpression longWord("\\S{9,}");
    static const QRegularExpression mark(
        "(?<=[_./])(?=[^\\W\\d])|(?<=_)(?=\\d)"); // not inside a number
    if (text.size() < 9) {
        return {text};
    }
    QStringList pieces;
    int begin = 0;
    for (auto words = longWord.globalMatch(text); words.hasNext();) {
        const QRegularExpressionMatch word = words.next();
        for (auto marks = mark.globalMatch(text, word.capturedStart()); marks.hasNext();) {
            const int place = marks.next().capturedStart();
            if (place >= word.capturedEnd()) {
                break;
            }
            pieces.append(text.mid(begin, place - begin));
            begin = place;
        }
    }
    return pieces << text.mid(begin);
}

QStringList codePieces(const QString& code)
{
    QStringList pieces;
    const int step = code.contains(' ') ? code.size() : codePieceLetters;
    for (int begin = 0; begin < code.size(); begin += step) {
        pieces.append(code.mid(begin, step));
    }
    return pieces;
}

QString documentName(const QString& name)
{
    QString fit;
    bool isMixed = false;
    for (const QChar letter : shortName(name)) {
        if (!turnsDirection(letter) && !isIsolate(letter)) {
            fit += letter;
            isMixed = isMixed || runsLeft(letter);
        }
    }
    return isMixed ? firstStrongIsolate + fit + popIsolate : fit;
}

ReportDocument::ReportDocument(const QString& titleText, const QStringList& subtitleLines)
    : titleLine(documentText(titleText))
    , subtitleTexts(documentTexts(subtitleLines))
{
}

void ReportDocument::add(ReportHeading heading)
{
    if (heading.level == 1) {
        ++chapter;
        section = 0;
    } else {
        ++section;
    }
    const QString number =
        heading.level == 1 ? QString::number(chapter) : QString("%1.%2").arg(chapter).arg(section);
    heading.text = number + ' ' + documentText(heading.text);
    content.append(heading);
}

void ReportDocument::add(ReportParagraph paragraph)
{
    paragraph.text = documentText(paragraph.text);
    content.append(paragraph);
}

void ReportDocument::add(ReportList list)
{
    if (!list.texts.isEmpty()) {
        list.texts = documentTexts(list.texts);
        content.append(list);
    }
}

void ReportDocument::add(ReportTable table)
{
    const int rowCount = table.rows.size();
    table.rows = table.rows.mid(0, mostRows);
    table.headings = documentTexts(table.headings);
    for (QStringList& row : table.rows) {
        row = documentTexts(row);
        while (row.size() < table.headings.size()) {
            row.append(QString());
        }
    }
    table.caption = QString("Table %1. %2").arg(++tableNumber).arg(documentText(table.caption));
    if (rowCount > mostRows) {
        table.caption += QString(" The first %1 of %2 rows.").arg(mostRows).arg(rowCount);
    }
    int column = table.leadingColumns;
    do {
        const int end = endOfPart(table, column);
        addPart(table, column, end);
        column = end;
    } while (column < table.headings.size());
}

/// The column after the last one that fits into a line with the leading ones.
int ReportDocument::endOfPart(const ReportTable& table, int firstColumn)
{
    double letters = 0.0;
    for (int column = 0; column < table.leadingColumns; ++column) {
        letters += leastLetters(table, column);
    }
    const int most = qMin(table.headings.size(), firstColumn + mostColumns - table.leadingColumns);
    int end = firstColumn;
    while (end < most) {
        letters += leastLetters(table, end);
        if (letters > lettersInLine && end > firstColumn) {
            break;
        }
        ++end;
    }
    return end;
}

/// Adds some columns of a wide table, after the leading ones.
void ReportDocument::addPart(const ReportTable& table, int firstColumn, int endColumn)
{
    const int leading = table.leadingColumns;
    const int count = endColumn - firstColumn;
    const auto columns = [=](const auto& row) {
        return row.mid(0, leading) + row.mid(firstColumn, count);
    };
    ReportTable part = table;
    part.headings = columns(table.headings);
    part.alignment = columns(table.alignment);
    if (firstColumn > leading) {
        part.caption = part.caption.section('.', 0, 0) + ", continued.";
    }
    for (QStringList& row : part.rows) {
        row = columns(row);
    }
    content.append(part);
}

void ReportDocument::add(ReportChart chart)
{
    chart.caption = QString("Figure %1. %2").arg(++chartNumber).arg(documentText(chart.caption));
    chart.description = documentText(chart.description);
    chart.keyLabel = documentName(documentText(chart.keyLabel));
    chart.valueLabel = documentName(documentText(chart.valueLabel));
    for (ChartCurve& curve : chart.curves) {
        curve.name = documentText(curve.name);
    }
    for (ChartBars& bars : chart.bars) {
        bars.name = documentText(bars.name);
    }
    content.append(chart);
}
