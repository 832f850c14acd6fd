// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_DEVIATES_H
#define VELMORA_MODEL_DEVIATES_H

#include <QVector>

// Standard normal deviates by the cosine branch of Box & Muller (1958). Each takes two random
// numbers of qrand(), 0 to 2147483647, as first and second uniform number between 0 and 1.
// Logarithm and cosine are SLEEF's functions with an error of one unit in the last place (Shibata &
// Petrogalli 2020) that give the same bits on every processor.

/// One deviate. Infinite for a first number of 0; 0 for a first number of 2147483647.
double normalDeviate(int firstNumber, int secondNumber);

/// Writes count deviates from twice as many numbers, in the fastest form that this processor has.
/// The bits are those of normalDeviate.
void fillNormalDeviates(const int* numbers, int count, double* deviates);

/// A way to compute deviates, for some processors.
struct DeviateForm
{
    const char* name;
    void (*fill)(const int* numbers, int count, double* deviates);
};

/// The forms that this processor has, the portable one first and the widest last. All give the
/// same bits.
QVector<DeviateForm> deviateForms();

#endif
