// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_TRUTHINPUTS_H
#define VELMORA_BATCH_TRUTHINPUTS_H

#include "batch/settings.h"
#include "io/sourcefile.h"
#include "model/tables.h"

/// What simulated data sets are compared with, as far as known before the calculation.
struct TruthInputs
{
    bool byMeds = false;       ///< from a file of true MEDs
    bool byModels = false;     ///< from true models
    QVector<double> meds;      ///< in that file, rounded up to doses, [dataSet]
    QVector<double> models;    ///< numbers of models in that file, [dataSet]; NaN for none
    Table rows;                ///< first rows of the simulation models' results, [dataSet]
    QVector<int> modelNumbers; ///< of the true models, [dataSet]
    QVector<SourceFile> simulationFiles;
    SourceFile file; ///< the file of true MEDs or of the numbers of true models

    bool exists() const { return byMeds || byModels; }
    /// The number of data sets that can be compared.
    int count() const { return byMeds ? meds.size() : rows.size(); }
    /// The numbers of the true models as the window's table shows them.
    QStringList modelTexts() const;
};

/// Reads the truth that the settings name, for that many data sets and models, and rounds true
/// MEDs up to the doses. Files that do not fit end the run.
TruthInputs readTruth(const BatchSettings& settings, int dataSets, int modelCount,
                      const QVector<double>& doses);

#endif
