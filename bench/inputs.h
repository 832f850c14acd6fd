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
    /// Evenly distributed between the two numbers.
    double between(double lower, double upper);

private:
    std::mt19937_64 generator;
};

/// 0-based columns of the bootstrap rows made by bootstrapTable.
enum InputColumn { OfvColumn = 19, ThetaColumn = 20, OmegaColumn = 24, InputColumnCount = 60 };

/// Bootstrap rows of a model with four THETAs and two ETAs, [sample][column]: THETA1 to
/// THETA4 from ThetaColumn on, OMEGA(1,1), OMEGA(2,1) and OMEGA(2,2) from OmegaColumn on.
Table bootstrapTable(InputNumbers& numbers, int sampleCount);

/// The text of a raw_results file: a quoted heading, then the bootstrap rows (at least one) with
/// 6 significant digits.
QByteArray rawResultsText(const Table& table);

/// True if both hold the same numbers, bit for bit.
bool sameBits(const Table& first, const Table& second);
bool sameBits(const QVector<double>& first, const QVector<double>& second);

/// True if the numbers differ by no more than the relative tolerance.
bool sameWithin(const Table& first, const Table& second, double tolerance);
bool sameWithin(const QVector<double>& first, const QVector<double>& second, double tolerance);

#endif
