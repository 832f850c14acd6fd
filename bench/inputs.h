// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_INPUTS_H
#define VELMORA_BENCH_INPUTS_H

#include "model/tables.h"

#include <QByteArray>
#include <QVector>

#include <random>

/// Made-up numbers, the same in every run.
class InputNumbers
{
public:
    /// Evenly distributed between the limits.
    double between(double lower, double upper);

private:
    std::mt19937_64 generator;
};

/// 0-based columns of the bootstrap rows made by bootstrapTable.
enum InputColumn { OfvColumn = 19, ThetaColumn = 20, OmegaColumn = 24, InputColumnCount = 60 };

/// Bootstrap rows as of a model with four THETAs and two ETAs, [sample][column]: THETA1 to
/// THETA4 from ThetaColumn on, OMEGA(1,1), OMEGA(2,1) and OMEGA(2,2) from OmegaColumn on.
Table bootstrapTable(InputNumbers& numbers, int sampleCount);

/// Bootstrap rows, at least one, as the text of a raw_results file, below a quoted heading,
/// with 6 significant digits.
QByteArray rawResultsText(const Table& table);

/// Whether two tables hold the same numbers, bit for bit.
bool sameBits(const Table& first, const Table& second);
bool sameBits(const QVector<double>& first, const QVector<double>& second);

/// Whether the numbers differ by no more than the relative tolerance.
bool sameWithin(const Table& first, const Table& second, double tolerance);
bool sameWithin(const QVector<double>& first, const QVector<double>& second, double tolerance);

#endif
