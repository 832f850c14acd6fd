// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_DIAGNOSIS_H
#define VELMORA_MODEL_DIAGNOSIS_H

#include "expr/diagnosis.h"

/// What a diagnosis needs to know about a model's bootstrap rows.
struct RowColumns
{
    int count;        ///< columns of a row; 0 without data, which reports no column as beyond it
    int colNumTHETA1; ///< 1-based
    int colNumOFV;    ///< 1-based
};

/// Returns what is wrong with an endpoint expression: its form, and names that get no value or
/// an unexpected one.
QVector<Diagnosis> diagnoseEndpoint(const QString& expression, const RowColumns& columns);

/// The same for a weight expression. A blank one is right; it excludes the model.
QVector<Diagnosis> diagnoseWeight(const QString& expression, const RowColumns& columns);

#endif
