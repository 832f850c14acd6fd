// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_RANDOMNG_H
#define VELMORA_MODEL_RANDOMNG_H

#include <QVector>

#include <optional>

/// Normal and multivariate normal deviates from Qt's qrand(), which is never seeded: every
/// start of the program gives the same sequence, and each thread has its own.
/// Deviates by the cosine branch of Box & Muller (1958), two uniform numbers each.
/// Matrices are indexed [row][column].
class randomNG
{
public:
    randomNG();

    /// One standard normal deviate.
    double normal();

    /// One deviate per row of the covariance matrix, with mean 0. Rows of zeros give
    /// exactly 0 and draw nothing; a matrix that is not positive definite gives NaN.
    QVector<double> multiNormal(QVector<QVector<double>> covariance);

    /// The lower triangular L with L times its transpose equal to the symmetric positive
    /// definite matrix (Golub & Van Loan, Matrix Computations). Any other matrix gives NaN
    /// on the diagonal; elements missing from a short row count as NaN.
    QVector<QVector<double>> choleskyDecomposition(QVector<QVector<double>> matrix);
};

/// Draws many vectors from one covariance matrix, which is factored once.
/// The vectors are those of randomNG::multiNormal.
class MultiNormalSampler
{
public:
    /// Of a matrix without rows.
    MultiNormalSampler() = default;
    explicit MultiNormalSampler(const QVector<QVector<double>>& covariance);

    /// Uniform numbers that a vector takes.
    int uniformsPerVector() const { return 2 * keptRows.size(); }

    /// The same for a covariance matrix, which is not factored for it.
    static int uniformsPerVector(const QVector<QVector<double>>& covariance);

    /// The uniform numbers of the next count vectors, from the calling thread's sequence.
    QVector<double> drawUniforms(int count) const;

    /// The given rows of the count vectors that the uniform numbers make, [row][vector] in
    /// one piece; NaN for rows that the matrix does not have. In any thread.
    QVector<double> columns(const double* uniforms, int count, const QVector<int>& rows) const;

private:
    void combine(int keptRow, const QVector<double>& standards, double* column) const;

    int rowCount = 0;
    QVector<int> keptRows;           ///< rows with any element other than 0
    QVector<QVector<double>> factor; ///< Cholesky factor of the kept rows and columns
};

/// Uniform numbers after which the sequence repeats: all states of the minimal standard generator
/// (Park & Miller 1988), which qrand() is.
constexpr int randomPeriod = 2147483646;

/// The calling thread's place in its sequence of random numbers. None where the generator
/// behind qrand() is not the expected one, so that its place cannot be told.
std::optional<quint32> randomPosition();

/// Goes back to a place in the sequence.
void setRandomPosition(quint32 position);

/// The place in the sequence behind so many uniform numbers from a place that randomPosition gave.
/// Takes no longer for many than for a few.
quint32 randomPositionAfter(quint32 position, quint64 numbers);

#endif
