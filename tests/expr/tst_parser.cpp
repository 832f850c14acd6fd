// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "expr/parser.h"
#include "tests/support/compare.h"
#include "tests/support/logcapture.h"
#include "tests/support/rows.h"

static parser compiled(const QString& expression)
{
    parser result(expression);
    result.generate_tree();
    return result;
}

class TestParser : public QObject
{
    Q_OBJECT

private slots:
    void listsVariables_data()
    {
        const Rows<QString, QString> row("expression", "names");
        row("second name of the dose", "Dose*DOSE", "Time,C,DOSE,Dose");
        row("names of all three", "cp+t*IndepVariable", "t,cp,IndepVariable");
        row("blank and number", "b a+1e3*b", "Time,C,DOSE,b,a");
        row("functions in any case", "EXP(x)+sqrt(y)", "Time,C,DOSE,x,y");
        row("sign of an exponent", "1e-3", "Time,C,DOSE,1e");
    }
    void listsVariables()
    {
        QFETCH(QString, expression);
        QTEST(parser(expression).extract_variables().join(','), "names");
    }

    void evaluates_data()
    {
        const Rows<QString, double> row("expression", "result"); // DOSE 16, a 4, b 0.5
        row("powers, products, sums", "2+3*4^2", 50);
        row("parentheses", "((2+3)*a)/b", 40);
        row("powers from the right", "2^3^2", 512);
        row("differences and quotients from the left", "8-3-2/4/2", 4.75);
        row("dose in parentheses", "(DOSE)", 16);
        row("exponential and logarithm", "exp(0-a/2)+log(3)", 1.2339475719047224);
        row("decimal logarithm", "log10(1000)", 2.9999999999999996);
        row("absolute value, also of -0", "Abs(2-5)/Abs(0/(0-1))", -qInf());
        row("sign of zero", "Sign(0)", 1);
        row("root of minus infinity", "Sqrt(0-1/0)", qInf());
        row("trigonometry", "Sin(1)*100+Cos(1)*10-Tan(1)", 87.992713814816142);
        row("equal subexpressions", "(a-b)*(a-3)-(b-a)*(a-b)", 15.75);
        row("results used again", "Sqrt(a)-a*(b-a*(3-b))/Sqrt(a)", 21);
    }
    void evaluates()
    {
        QFETCH(QString, expression);
        QFETCH(double, result);
        const QVector<double> values{0, 0, 16, 4, 0.5};
        parser fast = compiled(expression);
        parser walk = fast;
        walk.tree.detach(); // no longer the tree that was compiled
        QCOMPARE(fast.operationCount(), fast.tree.size());
        QCOMPARE(walk.operationCount(), fast.tree.size() * 100);
        QVERIFY(almostEqual(fast.evaluate_tree(values), result, 0));
        QVERIFY(almostEqual(walk.evaluate_tree(values), result, 0));

        const int count = 130; // more than in one pass
        const QVector<double> doses{16, 0, 2.5};
        for (const QVector<int>& varying : QVector<QVector<int>>{{3}, {4, 2}, {}, {3, 4}}) {
            ValueBlock block{values, varying, {}, count};
            QVector<QVector<double>> vectors(count, values);
            QVector<double> atDoses(count * doses.size()); // [individual][dose]
            for (int i = 0; i < varying.size() * count; ++i) {
                block.varying.append(2.5 + std::sin(i));
                vectors[i % count][varying.at(i / count)] = block.varying.last();
            }
            for (int i = 0; i < atDoses.size(); ++i) {
                QVector<double> vector = vectors.at(i / doses.size());
                vector[DoseSlot] = doses.at(i % doses.size());
                atDoses[i] = walk.evaluate_tree(vector);
            }
            const QVector<double> walked = walk.evaluateAll(vectors);
            QVERIFY(almostEqual(fast.evaluateAll(vectors), walked, 0));
            for (parser* evaluated : {&fast, &walk}) {
                QVector<double> results(count);
                evaluated->evaluateBlock(block, results.data());
                QVERIFY(almostEqual(results, walked, 0));
                if (!varying.contains(DoseSlot)) {
                    results.resize(atDoses.size());
                    evaluated->evaluateBlock(block, DoseSlot, doses, results.data());
                    QVERIFY(almostEqual(results, atDoses, 0));
                }
            }
        }
    }

    void givesSomethingForMalformedTexts_data()
    {
        const Rows<QString, double> row("expression", "result"); // in slot 3: 4
        row("lone name gives its slot", "a", 3);
        row("never closed", "(2+3", 5);
        row("sign in a call", "exp(-a/2)", 0);
        row("dollar", "2$3", 8);
        row("many never closed", QString("(7").repeated(20000), 0);
        row("long sum without start", QString("+1").repeated(20000), 0);
    }
    void givesSomethingForMalformedTexts()
    {
        QFETCH(QString, expression);
        const LogCapture log;
        QTEST(compiled(expression).evaluate_tree({0, 0, 16, 4}), "result");
    }

    /// Where the tree was made senseless behind the program's back, the program answers.
    void asksTheProgram()
    {
        parser expression("(DOSE*2+x)/4");
        expression.generate_tree();
        for (const parser_token& token : qAsConst(expression.tree)) {
            const_cast<parser_token&>(token).type = parser_token::Error;
        }
        const QVector<double> values{0, 0, 3, 5};
        QCOMPARE(expression.evaluate_tree(values), 2.75);
        QCOMPARE(expression.evaluateAll({values, values}), QVector<double>(2, 2.75));
    }

    void walksWithoutWhatTheProgramNeeds()
    {
        parser p = compiled("a*2+DOSE");
        QTest::ignoreMessage(QtDebugMsg, "not enough variable values"); // of slot 3
        QCOMPARE(p.evaluate_tree({0, 0, 5}), 5.0);
        p.tree.resize(3); // a 2 *
        QCOMPARE(p.evaluate_tree({0, 0, 5, 7}), 14.0);
        const QVector<double> inverted =
            compiled("1/a").evaluateAll({{1, 1, 1, 0}, {1, 1, 1, -0.0}});
        QCOMPARE(inverted, QVector<double>({qInf(), -qInf()}));
        p.expression = "1+1";
        QVERIFY(!p.treeIsCurrent());
    }
};

QTEST_APPLESS_MAIN(TestParser)
#include "tst_parser.moc"
