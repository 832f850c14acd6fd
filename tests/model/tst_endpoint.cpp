// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/endpoint.h"
#include "model/endpointparsercontainer.h"
#include "model/randomng.h"
#include "tests/support/compare.h"

#include <QtTest>

#include <limits>

QT_WARNING_DISABLE_DEPRECATED // qsrand

    namespace
{

    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

    /// Column n holds n.
    QVector<double> numberedRow(int size)
    {
        QVector<double> row;
        for (int column = 1; column <= size; ++column) {
            row.append(column);
        }
        return row;
    }

    endPoint definition(const QString& expression, const QVector<double>& doses)
    {
        endPoint result;
        result.endPointParser = parser(expression);
        result.bringUpToDate(doses);
        return result;
    }

} // namespace

class TestEndpoint : public QObject
{
    Q_OBJECT

private slots:
    void factorsMatrices();
    void drawsWithCovariance();
    void bindsNames_data();
    void bindsNames();
    void bindsWeights_data();
    void bindsWeights();
    void dropsTheRestOfTheDivision_data();
    void dropsTheRestOfTheDivision();
    void drawsDoseByDose();
    void summarisesPopulations_data();
    void summarisesPopulations();
    void takesOmegaFromTheRow();
    void growsOmega();
    void evaluatesContainers();
};

void TestEndpoint::factorsMatrices()
{
    randomNG generator;
    QVERIFY(almostEqual(generator.choleskyDecomposition({{4, 2}, {2, 3}}),
                        {{2, 0}, {1, std::sqrt(2.0)}}, 1e-15));
    QVERIFY(std::isnan(generator.choleskyDecomposition({{1, 2}, {2, 1}}).at(1).at(1)));
    QVERIFY(std::isnan(generator.choleskyDecomposition({{1}, {2}}).at(1).at(1)));
}

void TestEndpoint::drawsWithCovariance()
{
    randomNG generator;
    qsrand(1);
    const int first = qrand();
    qsrand(1);
    QVERIFY(almostEqual(generator.multiNormal({{0, 0}, {0, 0}}), {0, 0}));
    QCOMPARE(qrand(), first); // zero variance draws nothing

    const int count = 20000;
    double squares[3] = {0, 0, 0};
    double products = 0;
    for (int i = 0; i < count; ++i) {
        const QVector<double> x = generator.multiNormal({{4, 0, 3}, {0, 0, 0}, {3, 0, 9}});
        for (int k = 0; k < 3; ++k) {
            squares[k] += x.at(k) * x.at(k) / count;
        }
        products += x.at(0) * x.at(2) / count;
    }
    // Five standard errors of a variance and of a covariance.
    QVERIFY(std::fabs(squares[0] - 4) < 5 * 4 * std::sqrt(2.0 / count));
    QCOMPARE(squares[1], 0.0);
    QVERIFY(std::fabs(squares[2] - 9) < 5 * 9 * std::sqrt(2.0 / count));
    QVERIFY(std::fabs(products - 3) < 5 * std::sqrt((4 * 9 + 3 * 3.0) / count));
}

void TestEndpoint::bindsNames_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<int>("rowSize");
    QTest::addColumn<double>("result");
    const struct
    {
        const char* expression;
        int rowSize;
        double result;
    } rows[] = {{"(DOSE)", 0, 2},
                {"(THETA1)", 25, 21},
                {"(THETA5)", 25, 25},
                {"(THETA6)", 25, notANumber},
                {"(THETA0)", 25, 20},
                {"(ofv)", 20, 20},
                {"(ofv)", 19, notANumber},
                {"(col3)", 3, 3},
                {"(Col3)", 3, 3},
                {"(COL3)", 3, 3},
                {"(column3)", 3, 3},
                {"(Column3)", 3, 3},
                {"(COLUMN3)", 3, notANumber},
                {"(COL0)", 3, notANumber},
                {"(COL4)", 3, notANumber},
                {"(COL2147483647)", 3, notANumber},
                {"(COL99999999999)", 3, notANumber},
                {"(theta1)", 25, notANumber},
                {"(ETA0)", 25, notANumber},
                {"(ETA1000)", 25, notANumber},
                {"(Time)", 25, notANumber},
                {"COL1*THETA2^DOSE", 25, 484},
                {"5", 25, 5}};
    for (const auto& row : rows) {
        QTest::addRow("%s of %d", row.expression, row.rowSize)
            << row.expression << row.rowSize << row.result;
    }
}

void TestEndpoint::bindsNames()
{
    QFETCH(QString, expression);
    QFETCH(int, rowSize);
    QFETCH(double, result);
    endPoint model = definition(expression, {1, 2});
    model.populationSummary = 75; // without effect as nothing is simulated
    QVERIFY(almostEqual(model.evaluateEndpoint(2.0, numberedRow(rowSize)), result, 0));
    QVERIFY(almostEqual(model.evaluateEndpoint(numberedRow(rowSize)).last(), result, 0));
    QCOMPARE(model.numEtas, 0);
}

void TestEndpoint::bindsWeights_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<int>("ofvColumn");
    QTest::addColumn<double>("result");
    QTest::newRow("ofv by the setting") << "(0-ofv/2)" << 21 << -10.5;
    QTest::newRow("column") << "(col20)" << 21 << 20.0;
    QTest::newRow("ofv beyond the row") << "(ofv)" << 26 << notANumber;
    QTest::newRow("ofv before the row") << "(ofv)" << 0 << notANumber;
    QTest::newRow("no THETA") << "(THETA1)" << 20 << notANumber;
    QTest::newRow("no dose") << "(DOSE)" << 20 << notANumber;
    QTest::newRow("sign without operand") << "exp(-ofv/2)" << 20 << 0.0;
    QTest::newRow("blank") << "  " << 20 << notANumber;
}

void TestEndpoint::bindsWeights()
{
    QFETCH(QString, expression);
    QFETCH(int, ofvColumn);
    endPoint model;
    model.weightParser = parser("(ofv)");
    model.weightParser.generate_tree();
    QCOMPARE(model.evaluateWeight(numberedRow(25)), 20.0);
    model.weightParser.expression = expression;
    model.weightParser.generate_tree();
    model.colNumOFV = ofvColumn;
    QFETCH(double, result);
    QVERIFY(almostEqual(model.evaluateWeight(numberedRow(25)), result));
}

void TestEndpoint::dropsTheRestOfTheDivision_data()
{
    QTest::addColumn<int>("individuals");
    for (const int count : {0, 1, 2, 3, 97, 100, 1000}) {
        QTest::addRow("%d", count) << count;
    }
}

void TestEndpoint::dropsTheRestOfTheDivision()
{
    QFETCH(int, individuals);
    const int processors = QThread::idealThreadCount();
    endPoint model = definition("1+0*ETA1", {0, 1, 2});
    model.numSimulations = individuals;
    const int simulated = individuals < 2 ? individuals : individuals / processors * processors;
    const double mean = individuals == 0 ? notANumber : double(simulated) / individuals;
    QVERIFY(almostEqual(model.evaluateEndpoint({}), {mean, mean, mean}, 1e-15));
    model.populationSummary = 100;
    QVERIFY(std::isnan(model.evaluateEndpoint({}).first()));
}

void TestEndpoint::drawsDoseByDose()
{
    const QVector<QVector<double>> omega{{4, 1}, {1, 2}};
    endPoint model = definition("ETA2*DOSE-ETA1", {1, 3});
    model.resizeOmega(2);
    model.omega = omega;
    model.numSimulations = 3 * QThread::idealThreadCount();
    qsrand(1);
    const QVector<double> simulated = model.evaluateEndpoint({});
    qsrand(1);
    QVector<double> expected;
    for (const double dose : {1.0, 3.0}) {
        double sum = 0.0;
        for (int i = 0; i < model.numSimulations; ++i) {
            const QVector<double> etas = randomNG().multiNormal(omega);
            sum += etas.at(1) * dose - etas.at(0);
        }
        expected.append(sum / model.numSimulations);
    }
    QVERIFY(almostEqual(simulated, expected, 0));
}

void TestEndpoint::summarisesPopulations_data()
{
    QTest::addColumn<int>("summary");
    QTest::addColumn<double>("expected");
    QTest::newRow("mean") << -1 << 10.0;
    QTest::newRow("median") << 50 << 10.0;
    QTest::newRow("75th percentile") << 75 << 10 + 0.6744897501960817 * 2;
    QTest::newRow("25th percentile") << 25 << 10 - 0.6744897501960817 * 2;
}

void TestEndpoint::summarisesPopulations()
{
    QFETCH(int, summary);
    QFETCH(double, expected);
    endPoint model = definition("10+ETA1", {0});
    model.resizeOmega(1);
    model.omega = {{4}};
    model.numSimulations = 10000;
    model.populationSummary = summary;
    // Five standard errors of a quartile, the widest of them; some individuals may be dropped.
    QVERIFY(std::fabs(model.evaluateEndpoint({}).first() - expected) < 5 * 2 * 1.37 / 100 + 0.02);
    qsrand(7);
    const double single = model.evaluateEndpoint(0.0, {});
    qsrand(7);
    QVector<double> individuals;
    for (int i = 0; i < 100; ++i) {
        individuals.append(10 + randomNG().multiNormal({{4}}).first());
    }
    const double mean = std::accumulate(individuals.begin(), individuals.end(), 0.0) / 100;
    std::sort(individuals.begin(), individuals.end());
    QCOMPARE(single, summary < 0 ? mean : individuals.at(summary));
}

void TestEndpoint::takesOmegaFromTheRow()
{
    endPoint model = definition("ETA1+ETA2", {0});
    model.resizeOmega(2);
    model.omega = {{5, 0.5}, {0.5, 6}};
    model.omegaColumns = {{0, -1}, {-1, 1}};
    QVERIFY(almostEqual(model.evaluateEndpoint({0.0, 0.0, 3}), {notANumber})); // only 0.5 is left
    QVERIFY(std::isfinite(model.evaluateEndpoint({1, 1}).first()));
    QVERIFY(almostEqual(model.evaluateEndpoint({1}), {notANumber})); // outside the row
    QVERIFY(almostEqual(model.omega, {{5, 0.5}, {0.5, 6}}, 0));
}

void TestEndpoint::growsOmega()
{
    endPoint model = definition("ETA3+THETA1", {0});
    model.resizeOmega(2);
    model.omega = {{1, 2}, {2, 5}};
    model.evaluateEndpoint(numberedRow(25));
    QCOMPARE(model.numEtas, 3);
    QVERIFY(almostEqual(model.omega, {{1, 2, 0}, {2, 5, 0}, {0, 0, 0}}, 0));
    QCOMPARE(model.omegaColumns, QVector<QVector<int>>(3, {-1, -1, -1}));
    model.endPointParser.expression = "ETA1*2";
    model.checkETA();
    QCOMPARE(model.highestEta, 1);
    QCOMPARE(model.numEtas, 3);
}

void TestEndpoint::evaluatesContainers()
{
    parser expression("x*DOSE");
    expression.generate_tree();
    endPointParserContainer container;
    container.setParser(expression);
    for (int i = 0; i < 200; ++i) {
        container.addVariable({0, 0, 2, double(i)});
    }
    evaluateEPParser(container);
    QCOMPARE(container.results.size(), 200);
    QCOMPARE(container.results.at(150), 300.0);
    container.clearVariables();
    QCOMPARE(container.results.size(), 200);
    evaluateEPParser(container);
    QVERIFY(container.results.isEmpty());
}

QTEST_APPLESS_MAIN(TestEndpoint)
#include "tst_endpoint.moc"
