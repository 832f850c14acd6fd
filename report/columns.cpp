// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/columns.h"

#include <numeric>

namespace {

constexpr double widerInBold = 1.2;
constexpr double gap = 2;              ///< between columns, in letters
constexpr double mostForNumbers = 0.7; ///< of a line, if texts are to have the rest
constexpr double narrowerAsCode = 0.75;
constexpr double mostLetters = 40; ///< that a column asks for, where texts have to be broken

/// Of a heading, which is broken between words alone.
double longestWord(const QString& heading)
{
    int longest = 0;
    for (const QString& word : heading.split(' ')) {
        longest = qMax(longest, word.size());
    }
    return widerInBold * longest;
}

double sumOf(const QVector<double>& widths)
{
    return std::accumulate(widths.begin(), widths.end(), 0.0);
}

/// Columns of numbers and codes get what they need, those of texts share the rest.
void fitTexts(const ReportTable& table, double line, QVector<double>& widths)
{
    double numbers = 0.0;
    double texts = 0.0;
    for (int column = 0; column < widths.size(); ++column) {
        (table.alignment.at(column) == 'l' ? texts : numbers) += widths.at(column);
    }
    if (numbers > mostForNumbers * line || !(texts > 0)) {
        return;
    }
    for (int column = 0; column < widths.size(); ++column) {
        if (table.alignment.at(column) == 'l') {
            widths[column] *= (line - numbers) / texts;
        }
    }
}

} // namespace

QVector<double> columnShares(const ReportTable& table, int lettersInLine)
{
    QVector<double> whole;
    QVector<double> broken;
    for (int column = 0; column < table.headings.size(); ++column) {
        const QString& heading = table.headings.at(column);
        double longest = longestWord(heading);
        const bool isCode = table.alignment.mid(column, 1) == "c";
        for (const QStringList& row : table.rows) {
            const int letters = row.at(column).size();
            longest =
                qMax(longest, isCode ? narrowerAsCode * qMin(letters, codePieceLetters) : letters);
        }
        whole.append(qMax(longest, widerInBold * heading.size()) + gap);
        broken.append(qMin(longest, mostLetters) + gap);
    }
    const bool isBroken = sumOf(whole) > lettersInLine;
    QVector<double>& widths = isBroken ? broken : whole;
    if (isBroken) {
        fitTexts(table, lettersInLine, widths);
    }
    const double line = isBroken ? sumOf(widths) : lettersInLine;
    for (double& width : widths) {
        width /= line;
    }
    return widths;
}
