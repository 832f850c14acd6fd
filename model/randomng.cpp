// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/randomng.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <thread>

namespace {

constexpr double largestUniform = 2147483647.0;

// The sequence of qrand() is part of what the program promises.
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

/// The product of two numbers modulo 2^31 - 1.
quint32 product(quint32 first, quint32 second)
{
    const quint64 exact = quint64(first) * second;
    const quint32 sum = quint32(exact & 0x7fffffffU) + quint32(exact >> 31U);
    return sum >= 0x7fffffffU ? sum - 0x7fffffffU : sum;
}

/// The successor of a number of the minimal standard generator (Park & Miller 1988, with
/// the multiplier of 1993).
quint32 successor(quint32 state)
{
    return product(state, 48271U);
}

/// Whether qrand() is that generator and qsrand() sets its state, so that its numbers can
/// be made without a call for each. Leaves the sequence of the calling thread as it is.
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

/// In [0, 1]; qrand() gives 0 to 2147483647.
double uniform()
{
    return qrand() / largestUniform;
}

/// The next numbers of uniform().
void fillUniform(double* numbers, int count)
{
    if (count < 1 || !isMinimalStandard()) {
        std::generate_n(numbers, qMax(0, count), uniform);
        return;
    }
    quint32 state = quint32(qrand());
    numbers[0] = state / largestUniform;
    for (int i = 1; i < count; ++i) {
        state = successor(state);
        numbers[i] = int(state) / largestUniform;
    }
    qsrand(state);
}

QT_WARNING_POP

double standardNormal(double firstUniform, double secondUniform)
{
    const double radius = std::sqrt(-2.0 * std::log(firstUniform));
    return radius * std::cos(6.283185307179586 * secondUniform);
}

double element(const QVector<QVector<double>>& matrix, int row, int column)
{
    const QVector<double>& elements = matrix.at(row);
    return column < elements.size() ? elements.at(column)
                                    : std::numeric_limits<double>::quiet_NaN();
}

/// Whether the random effect of this row varies; NaN does.
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
    const double first = uniform();
    const double second = uniform();
    return standardNormal(first, second);
}

QVector<double> randomNG::multiNormal(QVector<QVector<double>> covariance)
{
    QVector<int> rows(covariance.size());
    std::iota(rows.begin(), rows.end(), 0);
    const MultiNormalSampler sampler(covariance);
    return sampler.columns(sampler.drawUniforms(1).constData(), 1, rows);
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

int MultiNormalSampler::uniformsPerVector(const QVector<QVector<double>>& covariance)
{
    return 2 * rowsKept(covariance).size();
}

QVector<double> MultiNormalSampler::drawUniforms(int count) const
{
    QVector<double> uniforms(uniformsPerVector() * count);
    fillUniform(uniforms.data(), uniforms.size());
    return uniforms;
}

QVector<double> MultiNormalSampler::columns(const double* uniforms, int count,
                                            const QVector<int>& rows) const
{
    QVector<double> standards(keptRows.size() * count);
    for (double& standard : standards) {
        standard = standardNormal(uniforms[0], uniforms[1]);
        uniforms += 2;
    }
    QVector<double> result(rows.size() * count, 0.0);
    double* column = result.data();
    for (const int row : rows) {
        const int keptRow = keptRows.indexOf(row);
        if (keptRow >= 0) {
            combine(keptRow, standards, column);
        } else if (row < 0 || row >= rowCount) {
            std::fill_n(column, count, std::numeric_limits<double>::quiet_NaN());
        }
        column += count;
    }
    return result;
}

/// Gives the standard deviates of each vector the covariance of one kept row.
void MultiNormalSampler::combine(int keptRow, const QVector<double>& standards,
                                 double* column) const
{
    const double* coefficients = factor.at(keptRow).constData();
    const double* const end = standards.constEnd();
    for (const double* vector = standards.constBegin(); vector != end; vector += keptRows.size()) {
        double sum = 0.0;
        for (int k = 0; k <= keptRow; ++k) {
            sum += coefficients[k] * vector[k];
        }
        *column++ = sum;
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
