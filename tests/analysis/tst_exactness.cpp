// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/modelfindings.h"
#include "analysis/probability.h"
#include "expr/parser.h"
#include "model/randomng.h"
#include "tests/support/randomnumbers.h"

#include <QtTest>

#include <cmath>

using Numbers = QVector<double>;

/// Numbers to their last bit, and which of two ways to the same number is gone.
class TestExactness : public QObject
{
    Q_OBJECT

private slots:
    void addsStepsUp_data()
    {
        QTest::addColumn<int>("samples");
        QTest::addColumn<Numbers>("selected");
        QTest::addColumn<Numbers>("averaged");
        QTest::newRow("38") << 38 << Numbers{100.00000000000001, 49.99999999999998}
                            << Numbers{99.9999999999998, 49.99999999999996};
        QTest::newRow("142") << 142 << Numbers{99.99999999999997, 50.00000000000009}
                             << Numbers{99.99999999999973, 49.999999999999986};
        QTest::newRow("335") << 335 << Numbers{100.00000000000054, 49.85074626865671}
                             << Numbers{99.99999999999945, 49.850746268656984};
    }
    /// Dose 0 hits in all samples, dose 1 in every other one; for the average in three models.
    void addsStepsUp()
    {
        QFETCH(int, samples);
        Table endpoints(samples, {1, 9});
        for (int sample = 1; sample < samples; sample += 2) {
            endpoints[sample] = {1, 1};
        }
        QTEST(probabilityBySelection(endpoints, 2, {0, 2}), "selected");
        QTEST(probabilityByAveraging(QVector<Table>(3, endpoints),
                                     Table(samples, {1 / 3.0, 1 / 6.0, 0.5}), true, 2, {0, 2}),
              "averaged");
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
            const Numbers drawn =
                randomNG().multiNormal({{1.8, 0.6, 0.1}, {0.6, 1.1, 0.5}, {0.1, 0.5, 1.2}});
            seedRandomNumbers(seed);
            const double x = randomNG().normal();
            const double y = randomNG().normal();
            const double z = randomNG().normal();
            QCOMPARE(drawn, Numbers({a * x, b * x + d * y, c * x + e * y + f * z}));
        }
        QCOMPARE(randomNG().choleskyDecomposition(
                     {{4, 2, 6, 2}, {2, 5, 1, 3}, {6, 1, 14, 4}, {2, 3, 4, 4}}),
                 Table({{2, 0, 0, 0}, {1, 2, 0, 0}, {3, -1, 2, 0}, {1, 1, 1, 1}}));
    }

    /// The parenthesis is found last, and told in its place.
    void ordersDiagnoses()
    {
        Study study;
        study.endPoints.resize(1);
        study.endPoints[0].endPointParser.expression = "2*(3--1)+(1+-1";
        const QStringList found = endpointFindings(study, 0).filter("Character");
        QCOMPARE(found.size(), 3);
        for (int i = 0; i < 3; ++i) {
            const int place = QVector<int>{6, 10, 13}.at(i);
            QVERIFY(found.at(i).startsWith(QString("Character %1: ").arg(place)));
        }
    }

    /// Where the tree was made senseless behind the program's back, the program answers.
    void asksTheProgram()
    {
        parser expression("(DOSE*2+x)/4");
        expression.generate_tree();
        for (const parser_token& token : qAsConst(expression.tree)) {
            const_cast<parser_token&>(token).type = parser_token::Error;
        }
        const Numbers values{0, 0, 3, 5};
        QCOMPARE(expression.evaluate_tree(values), 2.75);
        QCOMPARE(expression.evaluateAll({values, values}), Numbers(2, 2.75));
    }
};

QTEST_APPLESS_MAIN(TestExactness)
#include "tst_exactness.moc"
