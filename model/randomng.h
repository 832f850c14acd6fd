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

/// Random numbers that are taken out of the calling thread's sequence at once, and made later, in
/// any thread.
class RandomNumbers
{
public:
    /// No numbers.
    RandomNumbers() = default;

    /// The next count numbers of the calling thread, whose sequence goes on behind them. Takes no
    /// longer for many than for a few, and holds none where qrand() is the expected generator.
    explicit RandomNumbers(qint64 count);

    /// Writes the next count of these numbers, 0 to 2147483647.
    void take(int* numbers, int count);

private:
    quint32 position = 0; ///< before the next number
    QVector<int> drawn;   ///< all numbers, where qrand() is another generator
    int taken = 0;        ///< of drawn
};

/// Draws many vectors from one covariance matrix, which is factored once.
/// The vectors are those of randomNG::multiNormal.
class MultiNormalSampler
{
public:
    /// Of a matrix without rows.
    MultiNormalSampler() = default;
    explicit MultiNormalSampler(const QVector<QVector<double>>& covariance);

    /// Random numbers that a vector takes.
    int numbersPerVector() const { return 2 * keptRows.size(); }

    /// The same for a covariance matrix, which is not factored for it.
    static int numbersPerVector(const QVector<QVector<double>>& covariance);

    /// The random numbers of the next count vectors, from the calling thread's sequence.
    RandomNumbers drawNumbers(qint64 count) const;

    /// The given rows of the next count vectors that the random numbers make, [row][vector] in
    /// one piece; NaN for rows that the matrix does not have. In any thread.
    void fillColumns(RandomNumbers& numbers, int count, const QVector<int>& rows,
                     double* columns) const;

private:
    void combine(int keptRow, const double* standards, int count, double* column) const;

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
