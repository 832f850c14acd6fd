// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/endpoint.h"
#include "model/endpointparsercontainer.h"
#include "model/randomng.h"
#include "model/typedomega.h"
#include "tests/support/compare.h"
#include "tests/support/randomnumbers.h"

#include <QtTest>

#include <numeric>

using Numbers = QVector<double>;

/// Column n holds n.
static Numbers numberedRow(int size)
{
    Numbers row(size);
    std::iota(row.begin(), row.end(), 1);
    return row;
}

static endPoint definition(const QString& expression, const Numbers& doses,
                           const QVector<Numbers>& omega = {})
{
    endPoint result;
    result.endPointParser = parser(expression);
    result.bringUpToDate(doses);
    result.resizeOmega(omega.size());
    result.omega = omega;
    return result;
}

class TestEndpoint : public QObject
{
    Q_OBJECT

private slots:
    void drawsWithCovariance()
    {
        randomNG generator;
        const QVector<Numbers> covariance{{4, 2, 6}, {2, 5, 1}, {6, 1, 14}};
        QVERIFY(almostEqual(generator.choleskyDecomposition(covariance),
                            {{2, 0, 0}, {1, 2, 0}, {3, -1, 2}}, 1e-15));
        QVERIFY(std::isnan(generator.choleskyDecomposition({{1, 2}, {2, 1}}).at(1).at(1)));
        QVERIFY(std::isnan(generator.choleskyDecomposition({{1}, {2}}).at(1).at(1)));

        const Numbers rows =
            MultiNormalSampler(QVector<Numbers>{{0}}).columns(nullptr, 1, {0, -1, 1});
        QVERIFY(almostEqual(rows, {0, qQNaN(), qQNaN()}, 0)); // beyond the matrix

        seedRandomNumbers(1);
        const double u = nextUniform();
        const double deviate = std::sqrt(-2 * std::log(u)) * std::cos(2 * M_PI * nextUniform());
        seedRandomNumbers(1);
        QVERIFY(almostEqual(generator.multiNormal({{0, 0}, {0, 0}}), {0, 0})); // draws nothing
        QVERIFY(almostEqual(generator.normal(), deviate, 1e-12));

        const int count = 20000;
        double sums[3] = {0, 0, 0};
        for (int i = 0; i < count; ++i) {
            const Numbers x = generator.multiNormal({{4, 0, 3}, {0, 0, 0}, {3, 0, 9}});
            sums[0] += x.at(0) * x.at(0) / count;
            sums[1] += x.at(0) * x.at(2) / count;
            sums[2] += x.at(2) * x.at(2) / count;
            QCOMPARE(x.at(1), 0.0);
        }
        // Five standard errors of a variance and of a covariance.
        QVERIFY(std::fabs(sums[0] - 4) < 5 * 4 * std::sqrt(2.0 / count));
        QVERIFY(std::fabs(sums[1] - 3) < 5 * std::sqrt((4 * 9 + 3 * 3.0) / count));
        QVERIFY(std::fabs(sums[2] - 9) < 5 * 9 * std::sqrt(2.0 / count));
    }

    void bindsNames()
    {
        // clang-format off
        const std::tuple<const char*, int, double> rows[] = { // size of the bootstrap row, result
            {"(DOSE)", 0, 2}, {"(THETA1)", 25, 21}, {"(THETA5)", 25, 25}, {"(THETA6)", 25, qQNaN()},
            {"(THETA0)", 25, 20}, {"(ofv)", 20, 20}, {"(ofv)", 19, qQNaN()}, {"(col3)", 3, 3},
            {"(Col3)", 3, 3}, {"(COL3)", 3, 3}, {"(column3)", 3, 3}, {"(Column3)", 3, 3},
            {"(COLUMN3)", 3, qQNaN()}, {"(COL0)", 3, qQNaN()}, {"(COL4)", 3, qQNaN()},
            {"(COL2147483647)", 3, qQNaN()}, {"(COL99999999999)", 3, qQNaN()}, {"(theta1)", 25, qQNaN()},
            {"(ETA0)", 25, qQNaN()}, {"(ETA1000)", 25, qQNaN()}, {"(Time)", 25, qQNaN()},
            {"(THETA2147483647)", 25, qQNaN()}, {"COL1*THETA2^DOSE", 25, 484}, {"5", 25, 5}};
        // clang-format on
        for (const auto& [expression, rowSize, result] : rows) {
            endPoint model = definition(expression, {1, 2});
            model.populationSummary = 75; // without effect as nothing is simulated
            const Numbers row = numberedRow(rowSize);
            QVERIFY2(almostEqual(model.evaluateEndpoint(2.0, row), result, 0), expression);
            QVERIFY2(almostEqual(model.evaluateEndpoint(row).last(), result, 0), expression);
            QCOMPARE(model.numEtas, 0);
        }
        endPoint undefined;
        undefined.doses = {1};
        QCOMPARE(undefined.evaluateEndpoint({}), Numbers{undefined.evaluateEndpoint(1, {})});
    }

    void bindsWeights()
    {
        // clang-format off
        const std::tuple<const char*, int, double> rows[] = { // column of the OFV, result
            {"(ofv)", 20, 20}, {"(0-ofv/2)", 21, -10.5}, {"(col20)", 21, 20}, {"(ofv)", 26, qQNaN()},
            {"(ofv)", 0, qQNaN()}, {"(THETA1)", 20, qQNaN()}, {"(DOSE)", 20, qQNaN()},
            {"exp(-ofv/2)", 20, 0}, {"  ", 20, qQNaN()}};
        // clang-format on
        endPoint model; // one for all, to be bound anew
        for (const auto& [expression, ofvColumn, result] : rows) {
            model.weightParser.expression = expression;
            model.weightParser.generate_tree();
            model.colNumOFV = ofvColumn;
            QVERIFY2(almostEqual(model.evaluateWeight(numberedRow(25)), result), expression);
        }
    }

    /// Bit for bit what individuals drawn one after the other give, the rest of the division
    /// among the processors left out.
    void simulatesPopulations()
    {
        const Numbers doses = numberedRow(2 * QThread::idealThreadCount() + 1); // some share a task
        endPoint model = definition("ETA2*DOSE-ETA1", doses, {{4, 1}, {1, 2}});
        const auto expected = [&model](double dose, int drawn, int count) {
            Numbers individuals;
            for (int i = 0; i < drawn; ++i) {
                const Numbers etas = randomNG().multiNormal(model.omega);
                individuals.append(etas.at(1) * dose - etas.at(0));
            }
            if (model.populationSummary < 0) {
                return std::accumulate(individuals.begin(), individuals.end(), 0.0) / count;
            }
            std::sort(individuals.begin(), individuals.end());
            return individuals.value(count * model.populationSummary / 100, qQNaN());
        };
        for (const int percentile : {-1, 0, 25, 50, 75, 100}) {
            model.populationSummary = percentile;
            for (const int count : {-1, 0, 1, 2, 3, 97, 100, 2000}) { // the last in parallel
                model.numSimulations = count;
                seedRandomNumbers(7);
                const Numbers simulated = model.evaluateEndpoint(Numbers());
                const double single = model.evaluateEndpoint(3.0, {});
                const int processors = count < 2 ? 1 : QThread::idealThreadCount();
                const int drawn = count / processors * processors;
                seedRandomNumbers(7);
                for (const double dose : doses) {
                    QVERIFY(almostEqual(simulated.at(dose - 1), expected(dose, drawn, count), 0));
                }
                QVERIFY(almostEqual(single, expected(3, 100, 100), 0));
            }
        }
    }

    void takesOmegaFromTheRow()
    {
        const QVector<Numbers> entered{{5, 0.5}, {0.5, 6}};
        endPoint model = definition("ETA1+2*ETA2", {0}, entered);
        model.omegaColumns = {{0, 2}, {-1, 1}}; // one side serves for both
        seedRandomNumbers(3);
        const Numbers simulated = model.evaluateEndpoint({4, 9, -3});
        seedRandomNumbers(3);
        endPoint numbers = definition("ETA1+2*ETA2", {0}, {{4, -3}, {-3, 9}});
        QVERIFY(almostEqual(simulated, numbers.evaluateEndpoint(Numbers()), 0));
        QVERIFY(almostEqual(model.evaluateEndpoint({4, 9}), {qQNaN()})); // outside the row
        QVERIFY(almostEqual(model.omega, entered, 0));

        // Uneven, as a damaged project may have it.
        model.omegaColumns.removeLast();
        QVERIFY(almostEqual(model.omegaOf({4, 9, -3}), {{4, -3}, {-3, 6}}, 0));
        model.omega = {{1}};
        QVERIFY(almostEqual(model.evaluateEndpoint(Numbers{4, 9, -3}), {qQNaN()}));
        model.omega = {{1}, {2, 5}};
        QVERIFY(almostEqual(model.omegaOf({4, 9, -3}), {{4}, {-3, 5}}, 0));

        model = definition("ETA3+THETA1", {0}, {{1, 2}, {2, 5}}); // grows
        model.evaluateEndpoint(numberedRow(25));
        QVERIFY(almostEqual(model.omega, {{1, 2, 0}, {2, 5, 0}, {0, 0, 0}}, 0));
        QCOMPARE(model.omegaColumns, QVector<QVector<int>>(3, {-1, -1, -1}));
        model.endPointParser.expression = "ETA1*2";
        model.checkETA();
        QVERIFY(model.highestEta == 1 && model.numEtas == 3);
    }

    void forgetsWhatWasTypedBefore()
    {
        endPoint model = definition("1", {}, {{4, 1}, {1, 5}});
        TypedOmega typed;
        typed.resize(model, 1);
        model.omega[0][0] = 9; // not by typing
        typed.resize(model, 2);
        QCOMPARE(model.omega, (QVector<Numbers>{{9, 0}, {0, 0}}));
    }

    void evaluatesContainers()
    {
        endPointParserContainer container;
        container.setParser(definition("x*DOSE", {}).endPointParser);
        container.addVariable({0, 0, 2, 10});
        container.addVariable({0, 0, 3, 10});
        evaluateEPParser(container);
        QCOMPARE(container.results, Numbers({20, 30}));
        container.clearVariables();
        evaluateEPParser(container);
        QVERIFY(container.results.isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestEndpoint)
#include "tst_endpoint.moc"
