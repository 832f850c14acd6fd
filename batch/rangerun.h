// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_RANGERUN_H
#define VELMORA_BATCH_RANGERUN_H

#include "analysis/certainty/stability.h"
#include "analysis/checkup/checkup.h"
#include "batch/draws.h"
#include "batch/outputfolder.h"

/// The results of a data set, in addition to the lines that are written at once.
struct DataSetResult
{
    QVector<double> probability;      ///< in percent, [dose]
    QVector<double> errors;           ///< Monte Carlo errors in percent points, [dose]
    QVector<double> meds;             ///< [level]; NaN for none
    QVector<DoseStability> stability; ///< [level]; empty if there are no samples
    MethodMeds otherMeds;             ///< of all methods, if the run writes reports
    double draws = 0.0;               ///< number of random numbers drawn
    QStringList findings;
};

/// The names of the files of results.
namespace ResultFile {
constexpr char probability[] = "probability.csv";
constexpr char doses[] = "doses.csv";
constexpr char weights[] = "weights.csv";
constexpr char endpoints[] = "endpoints.csv";
constexpr char meds[] = "theoretical_meds.csv";
constexpr char comparison[] = "comparison.csv";
constexpr char findings[] = "findings.txt";
} // namespace ResultFile

/// The results of the data sets of a range.
struct RangeResults
{
    explicit RangeResults(const RunInputs& inputs);

    DataSetRange range;
    QVector<DataSetResult> dataSets; ///< [dataSet - range.first]
    CheckUpRun checkUp;              ///< of their tables
    QVector<double> theoreticalMeds; ///< [dataSet - range.first], as far as there is a truth
    QVector<ReportedFile> files;     ///< the files that were read
    quint32 positionAfter = 0;       ///< in the random sequence
    Evaluation first;                ///< of data set 0, if it is in the range

    /// The findings of the data sets, one line each.
    QStringList findings() const;
};

/// Receives how many data sets of a range are done.
using Progress = std::function<void(int done)>;

/// Calculates the data sets of a range one after another, with the random numbers that the whole
/// run would give them, and writes the files that have lines for each. Ends the run if it is
/// interrupted.
RangeResults runRange(RunInputs& inputs, const DataSetRange& range, OutputFolder& output,
                      const Draws& draws, const Progress& progress);

/// Calculates data set 0 again, for the figures that need its endpoints, and leaves its tables
/// loaded.
void repeatFirstDataSet(RunInputs& inputs, RangeResults& results);

#endif
