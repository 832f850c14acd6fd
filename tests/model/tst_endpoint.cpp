// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/deviates.h"
#include "model/endpoint.h"
#include "model/randomng.h"
#include "model/typedomega.h"
#include "tests/support/compare.h"
#include "tests/support/logcapture.h"
#include "tests/support/randomnumbers.h"
#include "tests/support/rows.h"

#include <cstring>
#include <numeric>

using Numbers = QVector<double>;
using Matrix = QVector<Numbers>;
using Columns = QVector<QVector<int>>;

static const double none = qQNaN();

/// Column n holds n.
static Numbers numberedRow(int size)
{
    Numbers row(size);
    std::iota(row.begin(), row.end(), 1);
    return row;
}

static endPoint definition(const QString& expression, const Numbers& doses,
                           const Matrix& omega = {})
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
        for (const Matrix& covariance : {Matrix{{1, 2}, {2, 1}}, {{1}, {2}}}) { // a short row
            const Matrix factor = randomNG().choleskyDecomposition(covariance);
            QVERIFY(almostEqual(factor, {{1, 0}, {2, none}}));
        }
        const MultiNormalSampler sampler(Matrix{{0}});
        RandomNumbers numbers;
        Numbers column{7, 7, 7};
        sampler.fillColumns(numbers, 1, {0, -1, 1}, column.data());
        QVERIFY(almostEqual(column, {0, none, none}));
        randomNG generator;
        seedRandomNumbers(1);
        const double u = nextUniform();
        const double deviate = std::sqrt(-2 * std::log(u)) * std::cos(2 * M_PI * nextUniform());
        seedRandomNumbers(1);
        QCOMPARE(generator.multiNormal({{0, 0}, {0, 0}}), Numbers({0, 0})); // draws nothing
        QVERIFY(almostEqual(generator.normal(), deviate, 1e-15));
    }

    /// The numbers of every processor, in each form of computing them.
    void givesTheSameDeviatesEverywhere()
    {
        const QVector<int> extremes{0,          1,          2,          536870912,
                                    1073741823, 1610612736, 2147483646, 2147483647};
        QVector<int> pairs{48271, 182605794, 1936030137, 2064876628};
        for (const int first : extremes) {
            for (const int second : extremes) {
                pairs << first << second;
            }
        }
        pairs.resize(2 * 1003);
        seedRandomNumbers(3);
        for (int i = 132; i < pairs.size(); ++i) {
            pairs[i] = int(nextUniform() * 2147483647.0);
        }
        Numbers single;
        for (int i = 0; i < pairs.size(); i += 2) {
            single.append(normalDeviate(pairs.at(i), pairs.at(i + 1)));
        }
        QVERIFY(almostEqual(single.mid(0, 2), {3.9818776490524952, 0.44208354497656094}, 0));
        QCOMPARE(single.at(2), qInf());
        for (const DeviateForm& form : deviateForms()) {
            for (const int count : {1, 2, 7, 8, 1003}) {
                Numbers deviates(count);
                const size_t size = size_t(count) * sizeof(double);
                form.fill(pairs.constData(), count, deviates.data());
                QVERIFY2(std::memcmp(deviates.constData(), single.constData(), size) == 0,
                         form.name);
            }
        }
    }

    void drawsThreeCorrelated()
    {
        const double a = std::sqrt(1.8);
        const double b = 0.6 / a;
        const double c = 0.1 / a;
        const double d = std::sqrt(1.1 - b * b);
        const double e = (0.5 - c * b) / d;
        const double f = std::sqrt(1.2 - (c * c + e * e));
        for (int seed = 1; seed < 20; ++seed) {
            seedRandomNumbers(seed);
            const Numbers drawn = randomNG().multiNormal(
                {{1.8, 0.6, 0, 0.1}, {0.6, 1.1, 0, 0.5}, {0, 0, 0, 0}, {0.1, 0.5, 0, 1.2}});
            seedRandomNumbers(seed);
            const double x = randomNG().normal();
            const double y = randomNG().normal();
            const double z = randomNG().normal();
            QCOMPARE(drawn, Numbers({a * x, b * x + d * y, 0, c * x + e * y + f * z}));
        }
        QCOMPARE(randomNG().choleskyDecomposition(
                     {{4, 2, 6, 2}, {2, 5, 1, 3}, {6, 1, 14, 4}, {2, 3, 4, 4}}),
                 Matrix({{2, 0, 0, 0}, {1, 2, 0, 0}, {3, -1, 2, 0}, {1, 1, 1, 1}}));
    }

    void bindsNames_data()
    {
        const Rows<QString, int, double> row("expression", "rowSize", "result");
        row("dose", "(DOSE)", 0, 2);
        row("THETA0 is the column before", "(THETA0)", 25, 20);
        row("OFV", "(ofv)", 20, 20);
        row("spellings of columns", "col1+Col2*10+COL3*100+column4*1e3+Column5*1e4", 5, 54321);
        row("column in capitals", "(COLUMN3)", 3, none);
        row("column 0", "(COL0)", 3, none);
        row("column beyond the row", "(COL4)", 3, none);
        row("largest THETA", "(THETA2147483647)", 25, none);
        row("ETA0", "(ETA0)", 25, none);
    }
    void bindsNames()
    {
        QFETCH(QString, expression);
        QFETCH(int, rowSize);
        QFETCH(double, result);
        endPoint model = definition(expression, {1, 2});
        model.populationSummary = 75; // without effect as nothing is simulated
        model.colNumTHETA1 = 1;
        model.evaluateEndpoint({});
        model.colNumTHETA1 = 21; // bound anew
        const Numbers row = numberedRow(rowSize);
        QCOMPARE(model.evaluateEndpoint(2.0, row), result);
        QCOMPARE(model.evaluateEndpoint(row).last(), result);
        QCOMPARE(model.numEtas, 0);
    }

    void bindsWeights_data()
    {
        const Rows<QString, int, double> row("expression", "ofvColumn", "result");
        row("OFV", "(0-ofv/2)", 21, -10.5);
        row("column", "(col20)", 21, 20);
        row("OFV beyond the row", "(ofv)", 26, none);
        row("malformed", "exp(-ofv/2)", 20, 0);
        row("blank", "  ", 20, none);
    }
    void bindsWeights()
    {
        QFETCH(QString, expression);
        QFETCH(int, ofvColumn);
        const LogCapture log;
        endPoint model;
        for (const QString& text : {QString("(ofv)"), expression}) { // bound anew
            model.weightParser.expression = text;
            model.weightParser.generate_tree();
            model.evaluateWeight(numberedRow(25));
            model.colNumOFV = ofvColumn;
        }
        QTEST(model.evaluateWeight(numberedRow(25)), "result");
    }

    void simulatesPopulations_data()
    {
        const Rows<int, int> row("summary", "count");
        for (const int summary : {-1, 0, 25, 50, 75, 100}) {
            for (const int count : {-1, 0, 1, 2, 3, 97, 100, 2000}) { // the last in parallel
                const QString name = summary < 0 ? "mean" : QString("percentile %1").arg(summary);
                row(qPrintable(name + QString(" of %1").arg(count)), summary, count);
            }
        }
    }
    /// Bit for bit what individuals drawn one after the other give, the rest of the division
    /// among the processors left out.
    void simulatesPopulations()
    {
        QFETCH(int, summary);
        QFETCH(int, count);
        const int processors = QThread::idealThreadCount();
        const int drawnCount = count < 2 ? count : count / processors * processors;
        const Numbers doses = numberedRow(2 * processors + 1); // some share a task
        endPoint model = definition("ETA2*DOSE-ETA1", doses, {{4, 1}, {1, 2}});
        model.populationSummary = summary;
        model.numSimulations = count;
        const auto expected = [&](double dose, int drawn, int counted) {
            Numbers individuals;
            for (int i = 0; i < drawn; ++i) {
                const Numbers etas = randomNG().multiNormal(model.omega);
                individuals.append(etas.at(1) * dose - etas.at(0));
            }
            if (summary < 0) {
                return std::accumulate(individuals.begin(), individuals.end(), 0.0) / counted;
            }
            std::sort(individuals.begin(), individuals.end());
            return individuals.value(counted * summary / 100, none);
        };
        seedRandomNumbers(7);
        const Numbers simulated = model.evaluateEndpoint(Numbers());
        const double single = model.evaluateEndpoint(3.0, {});
        seedRandomNumbers(7);
        for (const double dose : doses) {
            QVERIFY(almostEqual(simulated.at(dose - 1), expected(dose, drawnCount, count), 0));
        }
        QVERIFY(almostEqual(single, expected(3, 100, 100), 0));
    }

    void takesOmegaFromTheRow_data()
    {
        const Rows<Matrix, Columns, Matrix> row("omega", "columns", "taken");
        row("one side for both", {{5, 1}, {1, 6}}, {{0, 2}, {-1, 1}}, {{4, -3}, {-3, 9}});
        row("column beyond the row", {{5, 1}, {1, 6}}, {{3, 2}, {-1, -1}}, {{none, -3}, {-3, 6}});
        row("fewer columns than rows", {{5, 1}, {1, 6}}, {{0, 2}}, {{4, -3}, {-3, 6}});
        row("short row of omega", {{1}, {2, 5}}, {{0, 2}}, {{4}, {-3, 5}});
    }
    void takesOmegaFromTheRow()
    {
        QFETCH(Matrix, omega);
        QFETCH(Columns, columns);
        QFETCH(Matrix, taken);
        endPoint model = definition("ETA1+2*ETA2", {0}, omega);
        model.omegaColumns = columns;
        QVERIFY(almostEqual(model.omegaOf({4, 9, -3}), taken, 0));
        seedRandomNumbers(3);
        const Numbers simulated = model.evaluateEndpoint({4, 9, -3});
        QVERIFY(almostEqual(model.omega, omega, 0));
        seedRandomNumbers(3);
        endPoint plain = definition("ETA1+2*ETA2", {0}, taken);
        QVERIFY(almostEqual(simulated, plain.evaluateEndpoint(Numbers()), 0));
    }

    void countsRandomNumbers_data()
    {
        const Rows<QString, Matrix, Columns, int, qint64> row("expression", "omega", "columns",
                                                              "individuals", "count");
        const Matrix two{{4, 1}, {1, 2}};
        row("no ETAs", "(DOSE)", two, {}, 7, 0);
        row("a row of zeros", "ETA1+ETA3", {{4, 0, 0}, {0, 0, 0}, {0, 0, 2}}, {}, 7, 72);
        row("an ETA too many", "ETA1+ETA9", two, {}, 6, 72);
        row("nobody", "ETA1+DOSE", two, {}, 0, 0);
        row("too few for the processors", "ETA1+DOSE", two, {}, 2, 0);
        row("from columns", "ETA1+DOSE", Matrix(2, {0, 0}), {{0, 2}, {2, 1}}, 1, 6);
        row("beyond the row", "ETA1+DOSE", Matrix(2, {0, 0}), {{-1, -1}, {-1, 3}}, 1, 6);
    }
    void countsRandomNumbers()
    {
        QFETCH(QString, expression);
        QFETCH(Matrix, omega);
        QFETCH(Columns, columns);
        QFETCH(qint64, count);
        setProcessorCount(3);
        endPoint model = definition(expression, {1, 2, 3}, omega);
        model.omegaColumns = columns;
        QFETCH(int, individuals);
        model.numSimulations = individuals;
        QCOMPARE(model.randomNumberCount({0, 9, 0}), count);
        seedRandomNumbers(77);
        model.evaluateEndpoint({0, 9, 0});
        QCOMPARE(*randomPosition(), randomPositionAfter(77, quint64(count)));
        setProcessorCount(0);
        QCOMPARE(processorCount(), QThread::idealThreadCount());
        QCOMPARE(randomPositionAfter(77, quint64(randomPeriod) * count + 1),
                 randomPositionAfter(77, 1));
    }

    void sharesTheWorkOfFew()
    {
        endPoint model = definition("ETA1*DOSE", {1, 2}, {{1}});
        QVERIFY(model.startEvaluation({}));
        model.numSimulations = 100'000'000;
        QVERIFY(!model.startEvaluation({}));
    }

    void growsOmega()
    {
        endPoint model = definition("ETA3+THETA1", {0}, {{1, 2}, {2, 5}});
        model.evaluateEndpoint(numberedRow(25));
        QCOMPARE(model.omega, Matrix({{1, 2, 0}, {2, 5, 0}, {0, 0, 0}}));
        QCOMPARE(model.omegaColumns, Columns(3, {-1, -1, -1}));
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
        QCOMPARE(model.omega, Matrix({{9, 0}, {0, 0}}));
    }
};

QTEST_APPLESS_MAIN(TestEndpoint)
#include "tst_endpoint.moc"
