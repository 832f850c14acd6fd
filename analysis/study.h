// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_STUDY_H
#define VELMORA_ANALYSIS_STUDY_H

#include "analysis/probability.h"
#include "model/endpoint.h"
#include "model/tables.h"

#include <QStringList>
#include <QVector>

/// Everything that results depend on, in one value that is cheap to copy.
///
/// The state may be uneven, as an import that was given up leaves it: models without data
/// sets or without a definition, rows of different length. Every function checks before it
/// indexes.
struct Study
{
    RawResults rawResults;                  ///< [model][dataSet][sample][column]
    QVector<QStringList> rawResultsHeaders; ///< [model], pieces of the heading line
    QVector<endPoint> endPoints;            ///< [model]
    QVector<double> doses;                  ///< candidate doses, ascending
    TargetInterval target{-10.0, 10.0};
    QVector<double> levels;    ///< target probability levels in percent, ascending
    bool logScale = true;      ///< whether weights are natural logarithms
    bool selecting = true;     ///< model selection; else model averaging
    bool individualOfv = true; ///< weights of each sample; else those of the first for all
    int colNumOFV = 20;        ///< 1-based; each definition has it, too
    int colNumTHETA1 = 21;     ///< 1-based; each definition has it, too
    int individuals = 100;     ///< simulated per dose; each definition has it, too
    /// The model shown on page "0", whose data sets decide whether weights exist, by intent.
    int shownModel = 0;

    int dataSetCount() const { return rawResults.isEmpty() ? 0 : rawResults.first().size(); }
};

#endif
