// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/randomng.h"

#include "compat/qtversions.h"
#include "model/deviates.h"

#include <QVarLengthArray>
#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <thread>

namespace {

/// The factor from a number of the minimal standard generator to the next (Park & Miller 1988,
/// with the multiplier of 1993).
constexpr quint32 multiplier = 48271;

/// Deviates made in one pass, so that they stay in the first-level cache.
constexpr int deviatesPerPass = 512;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// The program promises the sequence of qrand().
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

/// The product of two numbers modulo 2^31 - 1.
quint32 product(quint32 first, quint32 second)
{
    const quint64 exact = quint64(first) * second;
    const quint32 sum = quint32(exact & 0x7fffffffU) + quint32(exact >> 31U);
    return sum >= 0x7fffffffU ? sum - 0x7fffffffU : sum;
}

quint32 successor(quint32 state)
{
    return product(state, multiplier);
}

/// True if qrand() is that generator and qsrand() sets its state, so that its numbers can be
/// made without a call for each. Does not change the sequence of the calling thread.
bool isMinimalStandard()
{
    // A thread's first call may differ from the later ones, so it is not this one.
    static const bool isStandard = [] {
        bool agrees = false;
        std::thread([&agrees] {
            quint32 state = quint32(qrand());
            agrees = state == successor(1);
            for (const quint32 seed : {state, 77U, 2147483646U}) {
                qsrand(seed);
                state = seed;
                for (int call = 0; call < 8; ++call) {
                    state = successor(state);
                    agrees = agrees && quint32(qrand()) == state;
                }
            }
        }).join();
        return agrees;
    }();
    return isStandard;
}

/// A number of the calling thread's sequence, 0 to 2147483647.
int nextNumber()
{
    return qrand();
}

QT_WARNING_POP

/// Writes the numbers of the generator after a state, and moves the state to the last of them.
void fillNumbers(quint32& state, int* numbers, int count)
{
    // Four chains, each of every fourth number, as a number must wait for its predecessor.
    const quint32 second = product(multiplier, multiplier);
    const quint32 third = product(second, multiplier);
    const quint32 fourth = product(third, multiplier);
    int i = 0;
    for (; i + 4 <= count; i += 4) {
        numbers[i] = int(product(state, multiplier));
        numbers[i + 1] = int(product(state, second));
        numbers[i + 2] = int(product(state, third));
        state = product(state, fourth);
        numbers[i + 3] = int(state);
    }
    for (; i < count; ++i) {
        state = successor(state);
        numbers[i] = int(state);
    }
}

double element(const QVector<QVector<double>>& matrix, int row, int column)
{
    const QVector<double>& elements = matrix.at(row);
    return column < elements.size() ? elements.at(column) : notANumber;
}

/// True if the random effect of this row varies; NaN counts as varying.
bool isKept(const QVector<double>& row)
{
    double squares = 0.0;
    for (const double value : row) {
        squares += value * value;
    }
    return !(squares == 0.0);
}

QVector<int> rowsKept(const QVector<QVector<double>>& covariance)
{
    QVector<int> kept;
    const double* dropped = nullptr; // rows of zeros may share them, if there are many
    for (int row = 0; row < covariance.size(); ++row) {
        const QVector<double>& elements = covariance.at(row);
        if (elements.constData() == dropped) {
            continue;
        }
        if (isKept(elements)) {
            kept.append(row);
        } else {
            dropped = elements.constData();
        }
    }
    return kept;
}

} // namespace

randomNG::randomNG() = default;

double randomNG::normal()
{
    const int first = nextNumber();
    const int second = nextNumber();
    return normalDeviate(first, second);
}

QVector<double> randomNG::multiNormal(QVector<QVector<double>> covariance)
{
    QVector<int> rows(covariance.size());
    std::iota(rows.begin(), rows.end(), 0);
    const MultiNormalSampler sampler(covariance);
    RandomNumbers numbers = sampler.drawNumbers(1);
    QVector<double> deviates(rows.size());
    sampler.fillColumns(numbers, 1, rows, deviates.data());
    return deviates;
}

QVector<QVector<double>> randomNG::choleskyDecomposition(QVector<QVector<double>> matrix)
{
    const int size = matrix.size();
    QVector<QVector<double>> factor(size, QVector<double>(size, 0.0));
    for (int i = 0; i < size; ++i) {
        double squares = 0.0;
        double* row = factor[i].data();
        for (int j = 0; j < i; ++j) {
            const double* above = factor.at(j).constData();
            double products = 0.0;
            for (int k = 0; k < j; ++k) {
                products += row[k] * above[k];
            }
            row[j] = (element(matrix, i, j) - products) / above[j];
            squares += row[j] * row[j];
        }
        row[i] = std::sqrt(element(matrix, i, i) - squares);
    }
    return factor;
}

MultiNormalSampler::MultiNormalSampler(const QVector<QVector<double>>& covariance)
    : rowCount(covariance.size())
    , keptRows(rowsKept(covariance))
{
    QVector<QVector<double>> reduced;
    for (const int row : qAsConst(keptRows)) {
        QVector<double> elements;
        for (const int column : qAsConst(keptRows)) {
            elements.append(element(covariance, row, column));
        }
        reduced.append(elements);
    }
    factor = randomNG().choleskyDecomposition(reduced);
}

int MultiNormalSampler::numbersPerVector(const QVector<QVector<double>>& covariance)
{
    return 2 * rowsKept(covariance).size();
}

RandomNumbers MultiNormalSampler::drawNumbers(qint64 count) const
{
    return RandomNumbers(numbersPerVector() * count);
}

void MultiNormalSampler::fillColumns(RandomNumbers& numbers, int count, const QVector<int>& rows,
                                     double* columns) const
{
    QVarLengthArray<int> keptNumbers; // of the rows, -1 for a row of zeros
    for (int i = 0; i < rows.size(); ++i) {
        const int row = rows.at(i);
        keptNumbers.append(keptRows.indexOf(row));
        if (keptNumbers.last() < 0) {
            std::fill_n(columns + qptrdiff(i) * count, count,
                        row < 0 || row >= rowCount ? notANumber : 0.0);
        }
    }
    if (keptRows.isEmpty()) {
        return;
    }
    const int vectorsPerPass = qMax(1, deviatesPerPass / keptRows.size());
    QVarLengthArray<int, 2 * deviatesPerPass> pairs(vectorsPerPass * numbersPerVector());
    QVarLengthArray<double, deviatesPerPass> standards(vectorsPerPass * keptRows.size());
    for (int first = 0; first < count; first += vectorsPerPass) {
        const int vectors = qMin(vectorsPerPass, count - first);
        numbers.take(pairs.data(), vectors * numbersPerVector());
        fillNormalDeviates(pairs.constData(), vectors * keptRows.size(), standards.data());
        double* column = columns + first;
        for (const int keptNumber : keptNumbers) {
            if (keptNumber >= 0) {
                combine(keptNumber, standards.constData(), vectors, column);
            }
            column += count;
        }
    }
}

/// Gives the standard deviates of count vectors the covariance of one kept row.
void MultiNormalSampler::combine(int keptRow, const double* standards, int count,
                                 double* column) const
{
    const double* coefficients = factor.at(keptRow).constData();
    const int size = keptRows.size();
    std::fill_n(column, count, 0.0);
    for (int k = 0; k <= keptRow; ++k) {
        const double coefficient = coefficients[k];
        for (int vector = 0; vector < count; ++vector) {
            column[vector] += coefficient * standards[qptrdiff(vector) * size + k];
        }
    }
}

RandomNumbers::RandomNumbers(qint64 count)
{
    if (count < 1) {
        return;
    }
    if (const std::optional<quint32> start = randomPosition()) {
        position = *start;
        setRandomPosition(randomPositionAfter(position, quint64(count)));
    } else {
        drawn.resize(int(count));
        std::generate(drawn.begin(), drawn.end(), nextNumber);
    }
}

void RandomNumbers::take(int* numbers, int count)
{
    if (drawn.isEmpty()) {
        fillNumbers(position, numbers, count);
    } else {
        std::copy_n(drawn.constBegin() + taken, count, numbers);
        taken += count;
    }
}

std::optional<quint32> randomPosition()
{
    if (!isMinimalStandard()) {
        return std::nullopt;
    }
    // The number before the next one: 1899818559 is the inverse of the multiplier 48271.
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    const quint32 position = product(quint32(qrand()), 1899818559U);
    qsrand(position);
    QT_WARNING_POP
    return position;
}

void setRandomPosition(quint32 position)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    qsrand(position);
    QT_WARNING_POP
}

quint32 randomPositionAfter(quint32 position, quint64 numbers)
{
    // By squares of the multiplier (Knuth, The Art of Computer Programming 2, 4.6.3).
    quint32 power = successor(1);
    for (; numbers > 0; numbers >>= 1U) {
        if ((numbers & 1U) != 0) {
            position = product(position, power);
        }
        power = product(power, power);
    }
    return position;
}
