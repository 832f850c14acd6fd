// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// A dose or level text.

#include "analysis/numberlist.h"
#include "fuzz/literalvalue.h"
#include "fuzz/target.h"

#include <QStringList>

#include <cmath>
#include <optional>

namespace {

std::optional<double> number(const QString& text)
{
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return isNumber ? std::optional<double>(value) : std::nullopt;
}

/// The parts between separators, character by character, without empty ones.
QStringList parts(const QString& text, QChar separator)
{
    QStringList found{""};
    for (const QChar character : text) {
        if (character == separator) {
            found.append("");
        } else {
            found.last() += character;
        }
    }
    found.removeAll("");
    return found;
}

/// The numbers in the order of the text.
QVector<double> plainNumbers(const QString& text)
{
    QVector<double> numbers;
    const QStringList limits = parts(text, ':');
    if (limits.size() == 3) {
        const auto start = number(limits.at(0));
        const auto step = number(limits.at(1));
        const auto end = number(limits.at(2));
        if (start && step && end) {
            // Counted one by one, so that no count has to be converted.
            const double last = std::ceil((*end - *start) / *step);
            for (int i = 0; i <= last && last < longestNumberRange; ++i) {
                numbers.append(*start + i * *step);
            }
        }
        return numbers;
    }
    QStringList seen;
    for (const QString& part : parts(text, ',')) {
        if (!seen.contains(part) && number(part)) {
            numbers.append(*number(part));
        }
        seen.append(part);
    }
    return numbers;
}

QVector<double> sortedByBits(QVector<double> numbers)
{
    std::sort(numbers.begin(), numbers.end(),
              [](double a, double b) { return bitsOf(a) < bitsOf(b); });
    return numbers;
}

} // namespace

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    return 0;
}

int LLVMFuzzerTestOneInput(const uchar* data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), int(size));
    const QVector<double> numbers = parseNumberList(text);
    for (int i = 1; i < numbers.size(); ++i) {
        require(numbers.at(i - 1) <= numbers.at(i) || std::isnan(numbers.at(i)),
                "numbers ascend, NaN last");
    }
    require(sameBits(sortedByBits(numbers), sortedByBits(plainNumbers(text))),
            "the numbers are those of the text");
    return 0;
}
