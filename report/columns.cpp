// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/columns.h"

#include <numeric>

namespace {

constexpr double widerInBold = 1.2;
constexpr double gap = 2; ///< between columns, in letters
constexpr double narrowerAsCode = 0.75;
constexpr double shortHeading = 8; ///< a heading that fits into every column
constexpr double shortWord = 12;   ///< a word never broken in a text: the names of most models
constexpr double mostLetters = 40; ///< the widest that a column asks for if texts are broken

int longestWord(const QString& text)
{
    int longest = 0;
    for (const QString& word : text.split(' ')) {
        longest = qMax(longest, word.size());
    }
    return longest;
}

/// The longest word of a heading. Headings are broken only between words.
double longestWordInBold(const QString& heading)
{
    return widerInBold * longestWord(heading);
}

/// The longest word of the cells in a column of texts.
double longestWord(const ReportTable& table, int column)
{
    int longest = 0;
    for (const QStringList& row : table.rows) {
        longest = qMax(longest, longestWord(row.value(column)));
    }
    return longest;
}

double sumOf(const QVector<double>& widths)
{
    return std::accumulate(widths.begin(), widths.end(), 0.0);
}

bool isOfTexts(const ReportTable& table, int column)
{
    return table.alignment.mid(column, 1) == "l";
}

/// The longest cell below a heading.
double longestCell(const ReportTable& table, int column)
{
    int longest = 0;
    for (const QStringList& row : table.rows) {
        longest = qMax(longest, row.value(column).size());
    }
    const bool isCode = table.alignment.mid(column, 1) == "c";
    return isCode ? narrowerAsCode * qMin(longest, codePieceLetters) : longest;
}

/// Fits columns into a line. Each gets the least that it needs; then columns of numbers and codes
/// get what their headings ask for; columns of texts share the rest.
void fit(const ReportTable& table, QVector<double>& widths)
{
    QVector<double> least;
    for (int column = 0; column < widths.size(); ++column) {
        least.append(qMin(widths.at(column), leastLetters(table, column)));
    }
    double spare = qMax(0.0, lettersInLine - sumOf(least));
    for (const bool isText : {false, true}) {
        double wished = 0.0;
        for (int column = 0; column < widths.size(); ++column) {
            wished += isOfTexts(table, column) == isText ? widths.at(column) - least.at(column) : 0;
        }
        const double part = !(wished > 0) ? 0 : isText ? spare / wished : qMin(1.0, spare / wished);
        for (int column = 0; column < widths.size(); ++column) {
            if (isOfTexts(table, column) == isText) {
                widths[column] = least.at(column) + part * (widths.at(column) - least.at(column));
            }
        }
        spare -= part * wished;
    }
}

} // namespace

double leastLetters(const ReportTable& table, int column)
{
    const double cell = isOfTexts(table, column) ? qMin(longestWord(table, column), shortWord)
                                                 : longestCell(table, column);
    const double word = longestWordInBold(table.headings.at(column));
    return qMin(qMax(cell, qMin(word, shortHeading)), mostLetters) + gap;
}

QVector<double> columnShares(const ReportTable& table)
{
    QVector<double> whole;
    QVector<double> broken;
    for (int column = 0; column < table.headings.size(); ++column) {
        const QString& heading = table.headings.at(column);
        const double longest = qMax(longestWordInBold(heading), longestCell(table, column));
        whole.append(qMax(longest, widerInBold * heading.size()) + gap);
        broken.append(qMin(longest, mostLetters) + gap);
    }
    const bool isBroken = sumOf(whole) > lettersInLine;
    QVector<double>& widths = isBroken ? broken : whole;
    if (isBroken) {
        fit(table, widths);
    }
    const double line = isBroken ? sumOf(widths) : lettersInLine;
    for (double& width : widths) {
        width /= line;
    }
    return widths;
}
