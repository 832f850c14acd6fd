// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_DIAGNOSIS_H
#define VELMORA_MODEL_DIAGNOSIS_H

#include "expr/diagnosis.h"

/// What diagnoses need to know of a model's bootstrap rows.
struct RowColumns
{
    int count;        ///< columns of a row; 0 for no data: then nothing is said to be beyond it
    int colNumTHETA1; ///< 1-based
    int colNumOFV;    ///< 1-based
};

/// What is wrong with an endpoint expression: its form, and names that get no value, or
/// another than one would think.
QVector<Diagnosis> diagnoseEndpoint(const QString& expression, const RowColumns& columns);

/// The same for a weight expression. Nothing is wrong with a blank one, which excludes the
/// model.
QVector<Diagnosis> diagnoseWeight(const QString& expression, const RowColumns& columns);

#endif
