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

/// The population summaries that a user can choose, in their order: the mean, then percentiles.
constexpr int populationSummaries[] = {-1, 50, 75, 25};

/// The processors that individuals are spread over, at least one.
int processorCount();

/// Spreads individuals over so many processors from now on, and lets the global thread pool use as
/// many threads; below 1 for those of the machine. Results with ETAs depend on it. Not while
/// anything is evaluated.
void setProcessorCount(int count);

/// How many of so many individuals are simulated on so many processors.
int simulatedIndividuals(int individuals, int processors);

/// Told now and then during an evaluation how many doses are done; gives the rest up by false.
/// None goes on to the end.
using GoesOnWithDoses = std::function<bool(int done)>;

/// One candidate model's endpoint and weight: expressions over a bootstrap row (one row of
/// the model's raw_results, columns in file order), with between-subject variability.
///
/// ETAs are simulated from omega for a number of individuals per dose, and the endpoint of
/// the population is their mean or a percentile. A name that nothing binds is NaN and makes
/// the result NaN; malformed expressions give 0.0 (see parser). Nothing is reported.
class endPoint
{
public:
    QString name;          ///< of the model, as shown on the pages
    QVector<double> doses; ///< at which the dose-list evaluation runs, ascending
    parser endPointParser;
    parser weightParser;
    int colNumTHETA1 = 21;    ///< 1-based column of THETA1
    int colNumThird = 22;     ///< kept with the column settings; no evaluation reads it
    int colNumOFV = 20;       ///< 1-based column of the OFV, read by weights only
    int numSimulations = 100; ///< simulated individuals per dose of the dose-list evaluation
    bool usesEtas = false;
    int numEtas = 0;    ///< rows and columns of omega
    int highestEta = 0; ///< largest n of the ETAn variables
    /// 0-based column of the bootstrap row that gives an element of omega; negative where
    /// the element is the number in omega. [row][column], symmetric.
    QVector<QVector<int>> omegaColumns;
    QVector<QVector<double>> omega; ///< covariance matrix of the ETAs, [row][column]
    /// Negative: mean over the individuals. 0 to 100: that percentile.
    int populationSummary = -1;

    /// The endpoint at one dose. With ETAs always from 100 individuals, whatever
    /// numSimulations says. Needs a current tree of endPointParser.
    double evaluateEndpoint(double dose, QVector<double> row);

    /// The endpoint at every dose of doses, in their order. Needs a current tree.
    ///
    /// The numSimulations individuals are spread evenly over the processors and the rest of
    /// the division is not simulated, while mean and percentile still count it: with 100
    /// individuals on 8 processors 96 are summed and divided by 100. All random numbers are
    /// drawn on the calling thread, dose by dose.
    QVector<double> evaluateEndpoint(QVector<double> row);

    /// The same for a list that may take long. None if it is given up; the random numbers are
    /// then handed back.
    std::optional<QVector<double>> evaluateEndpoint(QVector<double> row,
                                                    const GoesOnWithDoses& goesOn);

    /// Whether evaluateRows serves: without ETAs, and where the expression is well-formed, so that
    /// nothing is drawn or reported.
    bool evaluatesRows();

    /// evaluateEndpoint of several rows at once, [row][dose], in a part of the time.
    QVector<QVector<double>> evaluateRows(const QVector<const QVector<double>*>& rows);

    /// About how many operations evaluateEndpoint for a row takes, at least one per dose,
    /// whether or not random numbers are drawn. As the names were bound last.
    qint64 operationCount() const;

    /// Whether evaluateEndpoint draws random numbers for any row: there are ETAs, and omega may
    /// hold other numbers than 0. Needs a current tree.
    bool mayDrawRandomNumbers();

    /// How many uniform random numbers evaluateEndpoint draws for a row. Needs a current tree.
    qint64 randomNumberCount(const QVector<double>& row);

    /// Starts evaluateEndpoint for a row, so that many evaluations can share a parallel
    /// section: draws the random numbers and gives the work that is left, for any thread.
    /// None, with nothing drawn, where there is nothing to simulate or too much for one
    /// piece of work; evaluateEndpoint serves then. The container's population gets the endpoints.
    std::optional<endPointParserContainer> startEvaluation(const QVector<double>& row);

    /// The value of the weight expression for the row, NaN if the expression is blank.
    double evaluateWeight(QVector<double> row);

    /// Brings highestEta, numEtas and omega in line with the endpoint expression.
    void checkETA();

    /// Changes the number of ETAs; new elements of omega are 0 and come from no column.
    void resizeOmega(int size);

    /// Whether all elements of omega are 0 and come from no column, as those of ETAs that were
    /// only named. Takes no time for these, however many they are.
    bool hasBlankOmega() const;

    /// An element of omega as a user types it: "COL24", or its number with so many digits.
    QString omegaText(int row, int column, int digits) const;

    /// Omega for a bootstrap row: elements that come from a column take the row's value,
    /// NaN beyond the row. Rows keep their length, where a damaged omega is not square.
    QVector<QVector<double>> omegaOf(const QVector<double>& row) const;

    /// Takes over the doses and compiles the endpoint expression if its tree is missing or
    /// belongs to an earlier text; to be called before the endpoint is evaluated.
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
