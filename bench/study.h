// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_STUDY_H
#define VELMORA_BENCH_STUDY_H

#include "analysis/probability.h"
#include "io/projectfile.h"

/// Individuals simulated per dose, as the window proposes.
constexpr int simulationCount = 100;

const QVector<double> doses{0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100};
constexpr TargetInterval target{0.6, 1.2};

enum class Variability { None, TwoEtas };

struct StudySize
{
    int models = 4;
    int dataSets = 1;
    int samples = 1000;
};

/// A made-up study with these doses and this target, as a project: a linear, an emax, a
/// sigmoid emax and an exponential model, averaged with the weights of each sample.
ProjectItems makeStudy(const StudySize& size, Variability variability);

/// The definitions that the window makes from the study.
QVector<endPoint> definitionsOf(const ProjectItems& study);

/// The inputs of a calculation with these definitions and results.
Study inputsOf(const QVector<endPoint>& endPoints, const RawResults& rawResults);

/// The weights of data set 0 as the window calculates them, [sample][model].
Table weightsOf(const QVector<endPoint>& endPoints, const RawResults& rawResults);

struct Curve
{
    QVector<Table> endpoints; ///< [model][sample][dose]
    QVector<double> probability;
};

/// The curve of data set 0 by model averaging, with the weights of each sample or with the same
/// weights for all samples. weights is [sample][model].
Curve computeCurve(const QVector<endPoint>& endPoints, const RawResults& rawResults,
                   const Table& weights, bool individualWeights);

#endif
