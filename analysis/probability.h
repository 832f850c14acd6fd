// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_PROBABILITY_H
#define VELMORA_ANALYSIS_PROBABILITY_H

#include "analysis/study.h"

#include <functional>
#include <optional>

/// Decides whether to go on; called after each bootstrap sample, and within one that takes long.
/// Without such a function a calculation runs to its end.
using GoesOn = std::function<bool()>;

/// Probability in percent, per dose, that the endpoint lies in the target interval. endpoints is
/// [sample][dose], of the model selected for each sample; a sample without a model is empty and
/// counts as a miss. 0.0 for every dose without samples. The sum grows in equal steps, sample by
/// sample: its last bits decide whether a level is exceeded.
QVector<double> probabilityBySelection(const Table& endpoints, int doseCount,
                                       const TargetInterval& target);

/// The same averaged over the models with their relative weights, [sample][model].
/// endpoints is [model][sample][dose], empty where the model's weight is not positive.
/// Without individualWeights the weights of the first sample serve for all.
QVector<double> probabilityByAveraging(const QVector<Table>& endpoints, const Table& weights,
                                       bool individualWeights, int doseCount,
                                       const TargetInterval& target);

/// Which models' endpoints are evaluated for each bootstrap sample of a data set.
struct EndpointPlan
{
    QVector<QVector<int>> models; ///< [sample]: numbers of models, -1 for none
    /// Models in the result, which has an entry for every sample of each; 0 for a result of
    /// one entry per sample, of the one model planned for it.
    int modelCount = 0;
};

/// The models whose weight is positive. Without individualWeights the weights of the first
/// sample serve for all.
EndpointPlan averagingPlan(const Table& weights, bool individualWeights, int modelCount);

/// The model selected for each sample, -1 for none. Without individualSelection that of the
/// first sample serves for all.
EndpointPlan selectionPlan(const QVector<int>& selected, bool individualSelection);

/// All models for every sample.
EndpointPlan completePlan(int sampleCount, int modelCount);

/// Evaluates the endpoints of one data set, bootstrap sample by bootstrap sample.
///
/// Several samples are evaluated ahead in one parallel section. Their random numbers are drawn in
/// the order of the samples, and those of samples that are not asked for are given back at the end,
/// so that the sequence goes on as if each sample were evaluated when asked for. The work done and
/// memory held ahead are limited, with and without random numbers, so that the user can soon abort.
/// The endpoint definitions must be up to date with doses and expressions, and must not change
/// during the run.
class EndpointRun
{
public:
    EndpointRun(const Study& study, int dataSetNumber, const EndpointPlan& endpointPlan);
    ~EndpointRun();
    EndpointRun(const EndpointRun&) = delete;
    EndpointRun& operator=(const EndpointRun&) = delete;

    int sampleCount() const { return plan.models.size(); }

    /// Appends the endpoints of the next sample, empty for models that are not planned. False, with
    /// nothing appended, if it takes long and is aborted.
    bool evaluateNext(const GoesOn& goesOn = {});

    /// How many uniform random numbers the evaluation of all samples draws.
    qint64 randomNumberCount();

    /// [model][sample][dose], or one entry of [sample][dose], by the plan.
    const QVector<Table>& endpoints() const { return values; }

private:
    /// Samples evaluated ahead, of which the first ones may have been asked for already.
    struct Ahead
    {
        int count = 0;
        int asked = 0;
        /// Before the random numbers of each sample were drawn; empty if none draws any.
        QVector<std::optional<quint32>> positions;
        QVector<Table> endpoints; ///< as in the result, [entry][sample]
    };

    /// Evaluations of samples ahead that wait for a parallel section.
    struct StartedWork
    {
        struct Place
        {
            int entry;
            int sample; ///< of those ahead
        };
        QVector<endPointParserContainer> containers;
        QVector<Place> places; ///< of their endpoints, [container]
        qint64 numbers = 0;    ///< that the containers make
    };

    bool prepare(const GoesOn& goesOn);
    int samplesByRows() const;
    void prepareRows(int count);
    bool prepareSamples(const GoesOn& goesOn);
    bool startRow(endPoint& definition, const QVector<double>& row, const StartedWork::Place& place,
                  StartedWork& started);
    void finish(StartedWork& started);
    void giveBack();
    const QVector<double>* bootstrapRow(int model, int sample) const;
    int entryOf(int model) const { return plan.modelCount == 0 ? 0 : model; }

    QVector<endPoint> endPoints; ///< bound to their columns in the run
    /// [model]: of a row, where rows of many samples are evaluated at once; else 0
    QVector<qint64> operationsByRows;
    QVector<Table> samples; ///< of the data set, [model][sample][column]
    EndpointPlan plan;
    int nextSample = 0;
    Ahead ahead;
    QVector<Table> values;
};

/// Whether the endpoints of a data set, [model][sample][dose], hold those of the model
/// selected for every sample.
bool holdsSelected(const QVector<Table>& endpoints, const QVector<int>& selected);

/// The endpoints of the model selected for each sample, [sample][dose].
Table pickSelected(const QVector<Table>& endpoints, const QVector<int>& selected);

#endif
