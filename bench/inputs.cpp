// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/inputs.h"

#include <algorithm>
#include <cmath>
#include <cstring>

double InputNumbers::between(double lower, double upper)
{
    return std::uniform_real_distribution<double>(lower, upper)(generator);
}

Table bootstrapTable(InputNumbers& numbers, int sampleCount)
{
    Table table(sampleCount, QVector<double>(InputColumnCount));
    for (QVector<double>& row : table) {
        std::generate(row.begin(), row.end(), [&numbers] { return numbers.between(-100, 1000); });
        row[OfvColumn] = numbers.between(1000, 1100);
        row[ThetaColumn] = numbers.between(0.1, 0.3);
        row[ThetaColumn + 1] = numbers.between(0.5, 1.5);
        row[ThetaColumn + 2] = numbers.between(10, 50);
        row[ThetaColumn + 3] = numbers.between(1, 3);
        row[OmegaColumn] = numbers.between(0.1, 0.2);
        row[OmegaColumn + 1] = numbers.between(-0.05, 0.05);
        row[OmegaColumn + 2] = numbers.between(0.1, 0.2);
    }
    return table;
}

QByteArray rawResultsText(const Table& table)
{
    QByteArray text;
    for (int column = 1; column <= table.constFirst().size(); ++column) {
        text += (column > 1 ? ",\"column" : "\"column") + QByteArray::number(column) + '"';
    }
    for (const QVector<double>& row : table) {
        char separator = '\n';
        for (const double number : row) {
            text += separator + QByteArray::number(number);
            separator = ',';
        }
    }
    return text + '\n';
}

bool sameBits(const Table& first, const Table& second)
{
    return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                      [](const auto& row, const auto& other) { return sameBits(row, other); });
}

bool sameBits(const QVector<double>& first, const QVector<double>& second)
{
    return first.size() == second.size()
           && std::memcmp(first.constData(), second.constData(),
                          std::size_t(first.size()) * sizeof(double))
                  == 0;
}

bool sameWithin(const Table& first, const Table& second, double tolerance)
{
    return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                      [tolerance](const auto& row, const auto& other) {
                          return sameWithin(row, other, tolerance);
                      });
}

bool sameWithin(const QVector<double>& first, const QVector<double>& second, double tolerance)
{
    return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                      [tolerance](double a, double b) {
                          return std::abs(a - b) <= tolerance * std::max(std::abs(a), std::abs(b));
                      });
}
