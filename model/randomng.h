// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_RANDOMNG_H
#define VELMORA_MODEL_RANDOMNG_H

#include <QVector>

#include <optional>

/// Normal and multivariate normal deviates from Qt's qrand(), which is never seeded: every
/// start of the program gives the same sequence, and each thread has its own.
/// Two numbers make a deviate (see normalDeviate).
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

/// Random numbers that leave the calling thread's sequence at once and are made later, in any
/// thread.
class RandomNumbers
{
public:
    /// No numbers.
    RandomNumbers() = default;

    /// The next count numbers of the calling thread, whose sequence then continues after them. It
    /// takes no longer for many than for a few, and holds none if qrand() is the expected
    /// generator.
    explicit RandomNumbers(qint64 count);

    /// Writes the next count of these numbers, 0 to 2147483647.
    void take(int* numbers, int count);

private:
    quint32 position = 0; ///< before the next number
    QVector<int> drawn;   ///< all numbers, if qrand() is another generator
    int taken = 0;        ///< numbers taken from drawn
};

/// Draws many vectors from one covariance matrix, which is factored once.
/// The vectors are those of randomNG::multiNormal.
class MultiNormalSampler
{
public:
    /// A sampler for a matrix without rows.
    MultiNormalSampler() = default;
    explicit MultiNormalSampler(const QVector<QVector<double>>& covariance);

    /// The number of random numbers that a vector takes.
    int numbersPerVector() const { return 2 * keptRows.size(); }

    /// The same for a covariance matrix, without factoring it.
    static int numbersPerVector(const QVector<QVector<double>>& covariance);

    /// The random numbers of the next count vectors, from the calling thread's sequence.
    RandomNumbers drawNumbers(qint64 count) const;

    /// Writes the given rows of the next count vectors that the random numbers make, [row][vector]
    /// in one piece; NaN for rows that the matrix does not have. It may run in any thread.
    void fillColumns(RandomNumbers& numbers, int count, const QVector<int>& rows,
                     double* columns) const;

private:
    void combine(int keptRow, const double* standards, int count, double* column) const;

    int rowCount = 0;
    QVector<int> keptRows;           ///< rows with any element other than 0
    QVector<QVector<double>> factor; ///< Cholesky factor of the kept rows and columns
};

/// The number of uniform numbers after which the sequence repeats: all states of the minimal
/// standard generator (Park & Miller 1988), which qrand() is.
constexpr int randomPeriod = 2147483646;

/// The calling thread's position in its sequence of random numbers. None if the generator of
/// qrand() is not the expected one, whose position cannot be read.
std::optional<quint32> randomPosition();

/// Returns to a position in the sequence.
void setRandomPosition(quint32 position);

/// The position in the sequence that many uniform numbers after a position of randomPosition. It
/// takes no longer for many than for a few.
quint32 randomPositionAfter(quint32 position, quint64 numbers);

#endif
