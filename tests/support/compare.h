// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_COMPARE_H
#define VELMORA_TESTS_SUPPORT_COMPARE_H

#include <QRegularExpression>
#include <QStringList>
#include <QVector>

#include <algorithm>
#include <cmath>

/// True if two numbers agree within a relative tolerance (absolute below 1). Warns if not. NaN
/// agrees with NaN, an infinity with itself.
inline bool almostEqual(double actual, double expected, double tolerance = 1e-9)
{
    const bool agree =
        (std::isnan(actual) && std::isnan(expected)) || actual == expected
        || std::fabs(actual - expected) <= tolerance * std::max(1.0, std::fabs(expected));
    if (!agree) {
        qWarning("%.17g instead of %.17g", actual, expected);
    }
    return agree;
}

/// The same for vectors of any depth, which must also be equally long.
template <typename T>
bool almostEqual(const QVector<T>& actual, const QVector<T>& expected, double tolerance = 1e-9)
{
    const auto agree = [tolerance](const T& a, const T& b) { return almostEqual(a, b, tolerance); };
    return std::equal(actual.begin(), actual.end(), expected.begin(), expected.end(), agree);
}

/// Texts in a line, "first/second"; the pattern itself if it fits. In it "*" stands for anything
/// within one text.
inline QString told(const QStringList& texts, const QString& pattern)
{
    const QString line = texts.join('/');
    const QString expression = QRegularExpression::wildcardToRegularExpression(pattern);
    return QRegularExpression(expression).match(line).hasMatch() ? pattern : line;
}

#endif
