// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_RANGERUN_H
#define VELMORA_BATCH_RANGERUN_H

#include "analysis/certainty/stability.h"
#include "analysis/checkup/checkup.h"
#include "batch/draws.h"
#include "batch/outputfolder.h"

/// What a data set gives beside the lines that are written at once.
struct DataSetResult
{
    QVector<double> probability;      ///< in percent, [dose]
    QVector<double> errors;           ///< Monte Carlo errors in percent points, [dose]
    QVector<double> meds;             ///< [level]; NaN for none
    QVector<DoseStability> stability; ///< [level]; empty where there are no samples
    MethodMeds otherMeds;             ///< of all methods, where a report is wanted
    double draws = 0.0;               ///< random numbers that were drawn
    QStringList findings;
};

/// The names of the files that results go to.
namespace ResultFile {
constexpr char probability[] = "probability.csv";
constexpr char doses[] = "doses.csv";
constexpr char weights[] = "weights.csv";
constexpr char endpoints[] = "endpoints.csv";
constexpr char meds[] = "theoretical_meds.csv";
constexpr char comparison[] = "comparison.csv";
constexpr char findings[] = "findings.txt";
} // namespace ResultFile

/// What the data sets of a range give.
struct RangeResults
{
    explicit RangeResults(const RunInputs& inputs);

    DataSetRange range;
    QVector<DataSetResult> dataSets; ///< [dataSet - range.first]
    CheckUpRun checkUp;              ///< of their tables
    QVector<double> theoreticalMeds; ///< the same, as far as there are true ones
    QVector<ReportedFile> files;     ///< that were read
    quint32 positionAfter = 0;       ///< in the sequence of random numbers
    Evaluation first;                ///< what data set 0 was judged by, if it is in the range

    /// What is found in the data sets, a line each.
    QStringList findings() const;
};

/// Told how many data sets of a range are done.
using Progress = std::function<void(int done)>;

/// Calculates the data sets of a range one after another, each with the random numbers that it
/// would have in the whole run, and writes what has a line for each of them. Ends the run if it
/// is interrupted.
RangeResults runRange(RunInputs& inputs, const DataSetRange& range, OutputFolder& output,
                      const Draws& draws, const Progress& progress);

/// Calculates data set 0 again, for the figures that need its endpoints, and leaves its tables
/// loaded.
void repeatFirstDataSet(RunInputs& inputs, RangeResults& results);

#endif
