// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/probability.h"
#include "model/randomng.h"
#include "tests/support/compare.h"
#include "tests/support/literalvalue.h"
#include "tests/support/logcapture.h"
#include "tests/support/randomnumbers.h"

#include <QtTest>

#include <memory>
#include <random>

constexpr int studySamples = 150; // more than are evaluated ahead at a time

static std::mt19937 generator;

static int pick(int count)
{
    return int(generator() % unsigned(count));
}

/// An expression over a to d and ETAs, mostly well-formed, at times with a fault.
static QString randomExpression(int depth)
{
    static const auto leaves = QString("a_b_DOSE_ETA1_ETA2_2_0.5_0_x y_-_").split('_');
    static const auto operators = QString("+_-_*_/_^_)_$").split('_');
    static const auto functions =
        QString("(_exp(_log(_log10(_Abs(_Sign(_Sqrt(_Sin(_Cos(_Tan(_ASin(").split('_');
    if (depth == 0 || pick(6) == 0) {
        return leaves.at(pick(pick(12) == 0 ? leaves.size() : 8));
    }
    if (pick(3) == 0) {
        return functions.at(pick(functions.size())) + randomExpression(depth - 1)
               + (pick(30) == 0 ? "" : ")");
    }
    return "(" + randomExpression(depth - 1)
           + operators.at(pick(pick(30) == 0 ? operators.size() : 5)) + randomExpression(depth - 1)
           + ")";
}

static double randomValue()
{
    static const QVector<double> special{0.0, -0.0, qInf(), -qInf(), qQNaN()};
    return pick(15) == 0 ? special.at(pick(special.size())) : pick(2000001) / 3e5 - 3.0;
}

/// What is computed quickly agrees with the plain way in every bit and in every message.
class TestFastPaths : public QObject
{
    Q_OBJECT

private slots:
    void evaluatesExpressions();
    void evaluatesAhead();
    void boundsWhatIsAhead();
};

void TestFastPaths::evaluatesExpressions()
{
    for (int round = 0; round < 3000; ++round) {
        parser fast(randomExpression(5));
        fast.generate_tree();
        parser walking = fast;
        walking.tree.detach(); // no longer the tree that was compiled
        QVector<QVector<double>> valueVectors(pick(20) == 0 ? 300 : 5,
                                              QVector<double>(fast.variables.size()));
        for (QVector<double>& values : valueVectors) {
            std::generate(values.begin(), values.end(), randomValue);
            const bool isShort = valueVectors.size() == 5 && pick(20) == 0;
            values.resize(values.size() - (isShort ? 1 : 0));
        }
        const auto evaluate = [&valueVectors](QVector<double>& results, auto valueOf) {
            const LogCapture log;
            for (const QVector<double>& values : qAsConst(valueVectors)) {
                results.append(valueOf(values));
            }
            return log.messages();
        };
        QVector<double> expected;
        const QStringList texts = evaluate(expected, [&fast](const QVector<double>& values) {
            return fast.tree.isEmpty() ? fast.evaluate_tree(values)
                                       : literalValue(fast.tree, values);
        });
        for (parser* expression : {&fast, &walking}) {
            QVector<double> single;
            const bool sameTexts =
                texts == evaluate(single, [expression](const QVector<double>& values) {
                    return expression->evaluate_tree(values);
                });
            const LogCapture quiet;
            QVERIFY2(sameTexts && sameBits(single, expected)
                         && sameBits(expression->evaluateAll(valueVectors), expected),
                     qPrintable(fast.expression));
        }
    }
}

void TestFastPaths::evaluatesAhead()
{
    QVector<endPoint> models(3);
    const QStringList expressions{"COL1*DOSE+ETA1", "COL1+DOSE", "COL1*exp(ETA1)+ETA2"};
    RawResults results(models.size());
    for (int model = 0; model < models.size(); ++model) {
        models[model].endPointParser = parser(expressions.at(model));
        models[model].populationSummary = model == 2 ? 50 : -1;
        models[model].bringUpToDate({0, 1, 3});
        models[model].checkETA();
        for (int eta = 0; eta < models[model].numEtas; ++eta) {
            models[model].omega[eta][eta] = 0.5 + eta;
        }
        results[model].resize(1);
        for (int sample = 0; sample < studySamples - model; ++sample) {
            results[model].first().append(QVector<double>{sample * 0.1});
        }
    }
    Table weights(studySamples, {0.5, 0.25, 0.25});
    weights[3] = {1, 0, 0};

    // All samples, and a part of them, with the random numbers of the rest given back.
    for (const auto& [individuals, asked] : {std::pair(31, studySamples),
                                             {1, studySamples},
                                             {100, 37},
                                             {15500, 6},
                                             {60000, 2},
                                             {180000, 1}}) {
        for (endPoint& model : models) {
            model.numSimulations = individuals;
        }
        seedRandomNumbers(5);
        QVector<Table> expected(models.size());
        for (int sample = 0; sample < asked; ++sample) {
            for (int model = 0; model < models.size(); ++model) {
                const QVector<double> row = results.at(model).first().value(sample);
                const bool counts = weights.at(sample).at(model) > 0 && !row.isEmpty();
                expected[model].append(counts ? models[model].evaluateEndpoint(row)
                                              : QVector<double>());
            }
        }
        const double next = randomNG().normal();
        seedRandomNumbers(5);
        Study study;
        study.endPoints = models;
        study.rawResults = results;
        auto run =
            std::make_unique<EndpointRun>(study, 0, averagingPlan(weights, true, models.size()));
        for (int sample = 0; sample < asked; ++sample) {
            run->evaluateNext();
        }
        QVERIFY(almostEqual(run->endpoints(), expected, 0));
        run.reset();
        QCOMPARE(randomNG().normal(), next);
    }
}

void TestFastPaths::boundsWhatIsAhead()
{
    const int doseCount = 101;
    QVector<endPoint> models(2);
    models[1].endPointParser.expression = "(DOSE)(DOSE)DOSE"; // reports each evaluation
    // Without ETAs, with an omega of zeros, malformed.
    for (const auto& [expression, individuals, samplesAhead] :
         {std::tuple("(DOSE)", 10000, 64), {"(ETA1)+DOSE", 10000, 1}, {"ETA1+DOSE+", 1000, 1}}) {
        models[0].endPointParser.expression = expression;
        models[0].numSimulations = individuals;
        Study study;
        study.endPoints = models;
        for (endPoint& model : study.endPoints) {
            model.bringUpToDate(QVector<double>(doseCount, 1));
        }
        study.rawResults = RawResults(2, {Table(studySamples, {0})});
        EndpointRun run(study, 0, completePlan(studySamples, 2));
        const LogCapture log;
        run.evaluateNext();
        QCOMPARE(log.messages().size() / doseCount, samplesAhead);
    }
}

QTEST_APPLESS_MAIN(TestFastPaths)
#include "tst_fastpaths.moc"
