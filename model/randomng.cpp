// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/randomng.h"

#include <QtGlobal>

#include <cmath>
#include <limits>

namespace {

/// In [0, 1]; qrand() gives 0 to 2147483647.
double uniform()
{
    // The sequence of qrand() is part of what the program promises.
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    return qrand() / 2147483647.0;
    QT_WARNING_POP
}

double standardNormal()
{
    const double first = uniform();
    const double second = uniform();
    const double radius = std::sqrt(-2.0 * std::log(first));
    return radius * std::cos(6.283185307179586 * second);
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

} // namespace

randomNG::randomNG() = default;

double randomNG::normal()
{
    return standardNormal();
}

QVector<double> randomNG::multiNormal(QVector<QVector<double>> covariance)
{
    return MultiNormalSampler(covariance).draw();
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
    : deviates(covariance.size(), 0.0)
{
    for (int row = 0; row < covariance.size(); ++row) {
        if (isKept(covariance.at(row))) {
            keptRows.append(row);
        }
    }
    QVector<QVector<double>> reduced;
    for (const int row : qAsConst(keptRows)) {
        QVector<double> elements;
        for (const int column : qAsConst(keptRows)) {
            elements.append(element(covariance, row, column));
        }
        reduced.append(elements);
    }
    const QVector<QVector<double>> square = randomNG().choleskyDecomposition(reduced);
    for (int row = 0; row < square.size(); ++row) {
        factor += square.at(row).mid(0, row + 1);
    }
    standardDeviates.resize(keptRows.size());
}

const QVector<double>& MultiNormalSampler::draw()
{
    const double* coefficient = factor.constData();
    double* standard = standardDeviates.data();
    double* result = deviates.data();
    for (int i = 0; i < keptRows.size(); ++i) {
        standard[i] = standardNormal();
        double sum = 0.0;
        for (int k = 0; k <= i; ++k) {
            sum += *coefficient++ * standard[k];
        }
        result[keptRows.at(i)] = sum;
    }
    return deviates;
}
