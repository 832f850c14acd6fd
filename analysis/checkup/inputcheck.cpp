// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/inputcheck.h"

#include "analysis/checkup/wording.h"
#include "analysis/numberlist.h"
#include "model/binding.h"
#include "model/randomng.h"

#include <algorithm>
#include <cmath>

namespace {

QString quoted(const QString& text)
{
    return '"' + text.trimmed() + '"';
}

bool isNumber(const QString& text)
{
    bool converts = false;
    text.toDouble(&converts);
    return converts;
}

/// Remarks on a text of three parts separated by colons. noun is "dose" or "level".
void checkRange(const QStringList& parts, const QString& noun, QStringList& remarks)
{
    QStringList noNumbers;
    for (const QString& part : parts) {
        if (!isNumber(part)) {
            noNumbers.append(quoted(part));
        }
    }
    if (!noNumbers.isEmpty()) {
        remarks.append("Not a number in the range: " + enumerated(noNumbers) + ".");
        return;
    }
    const double start = parts.at(0).toDouble();
    const double step = parts.at(1).toDouble();
    const double end = parts.at(2).toDouble();
    const QVector<double> numbers = parseNumberList(parts.join(':'));
    if (numbers.isEmpty()) {
        const double steps = (end - start) / step;
        remarks.append(
            step == 0           ? "The step of the range is 0."
            : std::isnan(steps) ? "The numbers of a range must be finite."
            : steps < 0         ? "The step of the range leads away from its end."
                        : QString("The range has more than %1 numbers.").arg(longestNumberRange));
        return;
    }
    const double last = step > 0 ? numbers.last() : numbers.first();
    // Steps such as 0.1 are inexact and miss the end by less than this.
    const double tolerance = 1e-9 * std::fabs(step);
    if (step > 0 ? last > end + tolerance : last < end - tolerance) {
        remarks.append(QString("The last %1, %2, lies beyond the end of the range, %3.")
                           .arg(noun, numberText(last), numberText(end)));
    }
}

/// Remarks on a text of parts separated by commas.
void checkList(const QStringList& parts, const QString& noun, QStringList& remarks)
{
    QStringList noNumbers;
    QStringList repeated;
    QStringList equal;
    QStringList counting;
    QVector<double> numbers;
    for (const QString& part : parts) {
        const double number = part.toDouble();
        if (!isNumber(part)) {
            noNumbers.append(quoted(part));
        } else if (counting.contains(part)) {
            repeated.append(quoted(part));
        } else {
            if (numbers.contains(number)) {
                equal.append(quoted(part));
            }
            counting.append(part);
            numbers.append(number);
        }
    }
    noNumbers.removeDuplicates();
    repeated.removeDuplicates();
    if (!noNumbers.isEmpty()) {
        remarks.append("Left out, not a number: " + enumerated(noNumbers) + ".");
    }
    if (numbers.isEmpty() && parts.join(',').contains(':')) {
        remarks.append("Write a range as start:step:end.");
    }
    if (!repeated.isEmpty()) {
        remarks.append("Repeated, counted once: " + enumerated(repeated) + ".");
    }
    if (!equal.isEmpty()) {
        remarks.append(
            QString("Equal to another %1, counted again: %2.").arg(noun, enumerated(equal)));
    }
}

QStringList checkNumbers(const QString& text, const QString& noun)
{
    QStringList remarks;
    const QStringList rangeParts = text.split(':', Qt::SkipEmptyParts);
    if (rangeParts.size() == 3) {
        checkRange(rangeParts, noun, remarks);
    } else {
        checkList(text.split(',', Qt::SkipEmptyParts), noun, remarks);
    }
    const QVector<double> numbers = parseNumberList(text);
    if (numbers.isEmpty()) {
        remarks.prepend(QString("There are no %1s.").arg(noun));
    } else if (!std::isfinite(numbers.first()) || !std::isfinite(numbers.last())) {
        remarks.prepend(QString("A %1 is infinite or not a number.").arg(noun));
    }
    return remarks;
}

} // namespace

QStringList checkDoses(const QString& text)
{
    return checkNumbers(text, "dose");
}

QStringList checkLevels(const QString& text)
{
    QStringList remarks = checkNumbers(text, "level");
    QStringList never;
    QStringList always;
    const QVector<double> levels = parseNumberList(text);
    for (const double level : levels) {
        if (level >= 100) {
            never.append(numberText(level));
        } else if (level < 0) {
            always.append(numberText(level));
        }
    }
    if (!never.isEmpty()) {
        remarks.append(
            "Except by rounding, no probability exceeds 100 %, so no dose reaches the level "
            + enumerated(never) + ".");
    }
    if (!always.isEmpty()) {
        remarks.append("Every probability exceeds the level " + enumerated(always)
                       + ", so the lowest dose is chosen.");
    }
    // The levels ascend, and comparisons with NaN are false.
    const double highest = levels.isEmpty() ? 0.0 : levels.last();
    if (highest > 0 && highest < 1) {
        remarks.append(
            QString(
                "Levels are percent, and none reaches 1 %: if %1 is meant as a share, write %2.")
                .arg(numberText(highest), numberText(100 * highest)));
    }
    return remarks;
}

QStringList checkBound(const QString& text, bool placed, double substitute)
{
    if (placed || !isNumber(text)) {
        const QString meaning =
            text.trimmed().isEmpty() ? "A bound that is not given" : quoted(text);
        return {meaning + " stands for " + numberText(substitute)
                + "; endpoints beyond it are outside the interval."};
    }
    return std::isnan(text.toDouble())
               ? QStringList("No endpoint lies in an interval with a bound of NaN.")
               : QStringList();
}

QStringList checkLowerBoundUsed(const QString& text, bool placed, double substitute)
{
    return placed || !isNumber(text)
               ? QStringList(QString("The lower bound stands for %1: endpoints of %1 and below "
                                     "count as misses.")
                                 .arg(numberText(substitute)))
               : QStringList();
}

QStringList checkUpperBoundUsed(const QString& text, bool placed, double substitute)
{
    return placed || !isNumber(text)
               ? QStringList(QString("The upper bound stands for %1: endpoints above %1 count as "
                                     "misses.")
                                 .arg(numberText(substitute)))
               : QStringList();
}

QStringList checkInterval(double lower, double upper)
{
    return lower < upper ? QStringList()
                         : QStringList(QString("No endpoint can be above %1 and at most %2.")
                                           .arg(numberText(lower), numberText(upper)));
}

QStringList checkOmegaElement(const QString& text, int columnCount)
{
    if (isNumber(text)) {
        return std::isfinite(text.toDouble())
                   ? QStringList()
                   : QStringList(quoted(text)
                                 + " is not a finite number: ETAs that use it are NaN.");
    }
    const std::optional<int> column = omegaColumnReference(text);
    if (!column) {
        return {quoted(text)
                + " is neither a number nor a column such as COL24 and has no effect."};
    }
    if (*column < 0) {
        return {"Columns are counted from 1: the earlier number of this cell is used."};
    }
    return *column < columnCount
               ? QStringList()
               : QStringList(QString("Samples have %1 columns: ETAs that use column %2 are NaN.")
                                 .arg(columnCount)
                                 .arg(qint64(*column) + 1));
}

QStringList checkCovariance(const QVector<QVector<double>>& omega)
{
    QStringList remarks;
    QVector<int> kept;
    bool symmetric = true;
    for (int row = 0; row < omega.size(); ++row) {
        const auto isOther = [](double value) { return !(value * value == 0); };
        if (std::any_of(omega.at(row).begin(), omega.at(row).end(), isOther)) {
            kept.append(row);
        }
        for (int column = 0; column < row; ++column) {
            const double below = omega.at(row).value(column);
            const double above = omega.at(column).value(row);
            symmetric = symmetric && !(below < above) && !(below > above);
        }
    }
    QVector<QVector<double>> reduced;
    for (const int row : qAsConst(kept)) {
        QVector<double> elements;
        for (const int column : qAsConst(kept)) {
            elements.append(omega.at(row).value(column, std::nan("")));
        }
        reduced.append(elements);
    }
    const QVector<QVector<double>> factor = randomNG().choleskyDecomposition(reduced);
    QStringList undefined;
    for (int row = 0; row < factor.size(); ++row) {
        // A row that fails spoils all rows below it.
        if (!undefined.isEmpty() || !std::isfinite(factor.at(row).at(row))) {
            undefined.append(QString("ETA%1").arg(kept.at(row) + 1));
        }
    }
    if (!undefined.isEmpty()) {
        remarks.append("The matrix is not positive definite: endpoints with "
                       + enumerated(undefined) + " are NaN.");
    }
    if (!symmetric) {
        remarks.append(
            "The matrix is not symmetric; the elements above the diagonal are not used.");
    }
    return remarks;
}

QStringList checkIndividuals(int individuals, int processors)
{
    if (individuals < 1) {
        return {"No individual is simulated."};
    }
    const int rest = individuals < 2 ? 0 : individuals % qMax(1, processors);
    if (rest == 0) {
        return {};
    }
    if (rest == individuals) {
        return {QString("No individual is simulated, because %1 are too few for %2 processors: the "
                        "mean is 0, percentiles are NaN.")
                    .arg(individuals)
                    .arg(processors)};
    }
    return {QString("%1 of %2 individuals are not simulated, because %3 processors share them "
                    "evenly; mean and percentiles still count all. Choose a multiple of %3.")
                .arg(rest)
                .arg(individuals)
                .arg(processors)};
}

QStringList checkShown(int rows, int shownRows, int columns, int shownColumns)
{
    if (shownRows >= rows && shownColumns >= columns) {
        return {};
    }
    return {QString("Too large to be shown in full: these are the first %1 of %2 rows and the "
                    "first %3 of %4 columns.")
                .arg(qMin(shownRows, rows))
                .arg(rows)
                .arg(qMin(shownColumns, columns))
                .arg(columns)};
}
