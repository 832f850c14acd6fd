// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/numberlist.h"

#include "model/percentile.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

/// The parts that convert, in their order.
QVector<double> convertible(const QStringList& parts)
{
    QVector<double> numbers;
    for (const QString& part : parts) {
        bool isNumber = false;
        const double number = part.toDouble(&isNumber);
        if (isNumber) {
            numbers.append(number);
        }
    }
    return numbers;
}

QVector<double> range(double start, double step, double end)
{
    QVector<double> numbers;
    const double count = std::ceil((end - start) / step) + 1;
    if (count > 0 && count <= longestNumberRange) {
        for (int i = 0; i < static_cast<int>(count); ++i) {
            numbers.append(start + i * step);
        }
    }
    return numbers;
}

} // namespace

QVector<double> parseNumberList(const QString& text)
{
    const QStringList rangeParts = text.split(':', Qt::SkipEmptyParts);
    QVector<double> numbers;
    if (rangeParts.size() == 3) {
        const QVector<double> limits = convertible(rangeParts);
        if (limits.size() == 3) {
            numbers = range(limits.at(0), limits.at(1), limits.at(2));
        }
    } else {
        QStringList parts = text.split(',', Qt::SkipEmptyParts);
        parts.removeDuplicates();
        numbers = convertible(parts);
    }
    std::sort(numbers.begin(), numbers.end(), ascendingNanLast);
    return numbers;
}
