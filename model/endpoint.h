// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_ENDPOINT_H
#define VELMORA_MODEL_ENDPOINT_H

#include "expr/parser.h"
#include "model/binding.h"
#include "model/endpointparsercontainer.h"

#include <QString>
#include <QVector>

#include <functional>
#include <optional>

/// The population summaries that a user can choose, in order: the mean, then percentiles.
constexpr int populationSummaries[] = {-1, 50, 75, 25};

/// The number of processors that share the individuals, at least one.
int processorCount();

/// Sets the number of processors that share the individuals, and of threads in the global thread
/// pool; below 1 for all of the machine. Results with ETAs depend on it. Do not call it during an
/// evaluation.
void setProcessorCount(int count);

/// How many of these individuals are simulated on this number of processors.
int simulatedIndividuals(int individuals, int processors);

/// Receives now and then during an evaluation how many doses are done. Returns false to abort.
/// Without a function, the evaluation runs to its end.
using GoesOnWithDoses = std::function<bool(int done)>;

/// One candidate model's endpoint and weight: expressions over a bootstrap row (one row of
/// the model's raw_results, columns in file order), with between-subject variability.
///
/// ETAs are simulated from omega for a number of individuals per dose; the endpoint of the
/// population is their mean or a percentile. A name that nothing binds is NaN and makes the
/// result NaN; malformed expressions give 0.0 (see parser). Nothing is reported.
class endPoint
{
public:
    QString name;          ///< of the model, as shown on the pages
    QVector<double> doses; ///< doses of the dose-list evaluation, ascending
    parser endPointParser;
    parser weightParser;
    int colNumTHETA1 = 21;    ///< 1-based column of THETA1
    int colNumThird = 22;     ///< kept with the column settings; no evaluation reads it
    int colNumOFV = 20;       ///< 1-based column of the OFV; only weights read it
    int numSimulations = 100; ///< simulated individuals per dose of the dose-list evaluation
    bool usesEtas = false;
    int numEtas = 0;    ///< rows and columns of omega
    int highestEta = 0; ///< largest n of the ETAn variables
    /// 0-based column of the bootstrap row that gives an element of omega; negative if the
    /// element is the number in omega. [row][column], symmetric.
    QVector<QVector<int>> omegaColumns;
    QVector<QVector<double>> omega; ///< covariance matrix of the ETAs, [row][column]
    /// Negative: mean over the individuals. 0 to 100: that percentile.
    int populationSummary = -1;

    /// The endpoint at one dose. With ETAs always from 100 individuals, whatever the value of
    /// numSimulations. Needs a current tree of endPointParser.
    double evaluateEndpoint(double dose, QVector<double> row);

    /// The endpoint at every dose of doses, in their order. Needs a current tree.
    ///
    /// The processors share the numSimulations individuals evenly. The remainder of the
    /// division is not simulated, but mean and percentile still count it: with 100 individuals
    /// on 8 processors, 96 are summed and divided by 100. All random numbers are drawn on the
    /// calling thread, dose by dose.
    QVector<double> evaluateEndpoint(QVector<double> row);

    /// The same for a list that may take long. None if aborted; the random numbers are then
    /// returned to the sequence.
    std::optional<QVector<double>> evaluateEndpoint(QVector<double> row,
                                                    const GoesOnWithDoses& goesOn);

    /// True if evaluateRows may be used: without ETAs and with a well-formed expression, which
    /// draws and reports nothing.
    bool evaluatesRows();

    /// evaluateEndpoint of several rows at once, [row][dose], in much less time.
    QVector<QVector<double>> evaluateRows(const QVector<const QVector<double>*>& rows);

    /// The approximate number of operations of evaluateEndpoint for a row, at least one per
    /// dose, whether or not it draws random numbers. Uses the last binding of the names.
    qint64 operationCount() const;

    /// True if evaluateEndpoint draws random numbers for any row: there are ETAs, and omega may
    /// have numbers other than 0. Needs a current tree.
    bool mayDrawRandomNumbers();

    /// The number of uniform random numbers that evaluateEndpoint draws for a row. Needs a
    /// current tree.
    qint64 randomNumberCount(const QVector<double>& row);

    /// Starts evaluateEndpoint for a row, so that many evaluations can share a parallel
    /// section: draws the random numbers and returns the remaining work, for any thread. The
    /// container's population receives the endpoints. None, with nothing drawn, if there is
    /// nothing to simulate or too much for one work item; use evaluateEndpoint then.
    std::optional<endPointParserContainer> startEvaluation(const QVector<double>& row);

    /// The value of the weight expression for the row; NaN if the expression is blank.
    double evaluateWeight(QVector<double> row);

    /// Adapts highestEta, numEtas and omega to the endpoint expression.
    void checkETA();

    /// Changes the number of ETAs; new elements of omega are 0 and come from no column.
    void resizeOmega(int size);

    /// True if all elements of omega are 0 and come from no column, as for ETAs that were only
    /// named. For these it takes no time, however many there are.
    bool hasBlankOmega() const;

    /// An element of omega as a user types it: "COL24", or its number with this many digits.
    QString omegaText(int row, int column, int digits) const;

    /// Omega for a bootstrap row: elements that come from a column take the row's value, NaN
    /// beyond the row. The rows of a damaged omega that is not square keep their length.
    QVector<QVector<double>> omegaOf(const QVector<double>& row) const;

    /// Takes over the doses, and compiles the endpoint expression if its tree is missing or
    /// belongs to an earlier text. Call it before evaluating the endpoint.
    void bringUpToDate(const QVector<double>& currentDoses);

private:
    void bindEndpointNames();
    void bindWeightNames();
    int simulatedIndividuals() const;
    int dosesPerGroup(const MultiNormalSampler& sampler) const;
    endPointParserContainer population(const QVector<double>& values,
                                       const QVector<double>& populationDoses, int individuals,
                                       const MultiNormalSampler& sampler) const;

    Binding endpointBinding;
    QStringList boundEndpointNames; ///< the names that endpointBinding binds
    int boundColNumTHETA1 = 0;
    Binding weightBinding;
    QString boundWeightExpression;
    int boundColNumOFV = 0;
};

#endif
