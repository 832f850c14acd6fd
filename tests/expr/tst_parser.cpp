// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "expr/parser.h"
#include "tests/support/compare.h"
#include "tests/support/logcapture.h"

#include <QtTest>

static parser compiled(const QString& expression)
{
    parser p(expression);
    p.generate_tree();
    return p;
}

class TestParser : public QObject
{
    Q_OBJECT

private slots:
    void listsVariables()
    {
        // clang-format off
        const char* const rows[][2] = {
            {"Emax*DOSE/(ED50+DOSE)", "Time,C,DOSE,Emax,ED50"}, {"dose*2", "Time,C,dose"},
            {"Dose*DOSE", "Time,C,DOSE,Dose"}, {"cp+t*IndepVariable", "t,cp,IndepVariable"},
            {"a b+1e3", "Time,C,DOSE,a,b"}, {"EXP(x)+sqrt(y)", "Time,C,DOSE,x,y"},
            {"1e-3", "Time,C,DOSE,1e"}, {"", "Time,C,DOSE"}};
        // clang-format on
        for (const auto& [expression, names] : rows) {
            QCOMPARE(parser(expression).extract_variables().join(','), QString(names));
        }
    }

    void evaluates()
    {
        // The values are Time 0, C 0, DOSE 16, then 4, 0.5, 3 for further names.
        // clang-format off
        const std::pair<const char*, double> rows[] = {
            {"2+3*4", 14}, {"(2+3)*4", 20}, {"2^3^2", 512}, {"8-3-2", 3}, {"8/4/2", 1}, {"2*3^2", 18},
            {"(2*(3+4))^2", 196}, {"a*DOSE/(b+DOSE)", 4 * 16 / 16.5}, {"a^k", 2}, {"log(1)", 0},
            {"exp(0-a/2)", 0.1353352832366127}, {"log10(1000)", 2.9999999999999996},
            {"Abs(2-5)", 3}, {"Sign(0)", 1}, {"Sign(2-3)", -1}, {"Sqrt(DOSE)", 4}, {"Sqrt(0-4)", qQNaN()},
            {"Sqrt(0-1/0)", qInf()}, {"Sin(1)", 0.8414709848078965}, {"Cos(1)", 0.5403023058681398},
            {"Tan(1)", 1.5574077246549023}, {"log(0)", -qInf()}, {"0/0", qQNaN()}, {"((a))", 4}, {"5", 5},
            {"(DOSE)", 16}, {"(2+3", 5}, {"(2+3)*4)", 20},
            // What occurs twice is computed once, columns are used again.
            {"(a-b)*(a-k)-(b-a)*(a-b)", 3.5 * 1 + 3.5 * 3.5}, {"a*b-exp(a*b)", 2 - 7.38905609893065},
            {"Sqrt(a)-a*(b-a*(k-b))/Sqrt(a)", 21}, {"Sin(a)*Cos(a)-Cos(a)*Sin(a)", 0},
            // A lone name gives its slot; malformed texts give 0 or less than they say.
            {"DOSE", 2}, {"a", 3}, {"exp(-a/2)", 0}, {"-a", 0}, {"2)", 0}, {"ASin(1)", 0}, {"THETA(1)", 0},
            {"2 3", 0}, {"2**3", 0}, {"()", 100}, {"sqrt(4)", 0}, {"a$k", 1}, {"", 0}};
        // clang-format on
        const QVector<double> values{0, 0, 16, 4, 0.5, 3};
        for (const auto& [expression, result] : rows) {
            LogCapture log;
            parser p = compiled(expression);
            parser walk = p; // over the tokens, as its program belongs to another tree
            walk.tree.detach();
            QVERIFY2(almostEqual(p.evaluate_tree(values), result, 1e-15), expression);
            QVERIFY2(almostEqual(walk.evaluate_tree(values), result, 1e-15), expression);

            // Blocks of more than two passes with nothing, one, two and all names varying.
            QVector<ValueBlock> blocks;
            QVector<double> expected;
            for (const QVector<int>& varying : QVector<QVector<int>>{{}, {3}, {5, 2}, {3, 4, 5}}) {
                ValueBlock block{values, varying, {}, 300};
                QVector<QVector<double>> singles(block.count, values);
                for (int i = 0; i < varying.size() * block.count; ++i) {
                    block.varying.append(2.5 + std::sin(i * 1.7));
                    singles[i % block.count][varying.at(i / block.count)] = block.varying.last();
                }
                expected += walk.evaluateAll(singles);
                QVERIFY2(almostEqual(p.evaluateAll(singles), expected.mid(blocks.size() * 300), 0),
                         expression);
                blocks.append(block);
            }
            QVector<double> results(expected.size());
            p.evaluateBlocks(blocks, results.data());
            QVERIFY2(almostEqual(results, expected, 0), expression);
        }
    }

    /// Tokens that no text gives, with kinds, codes and indices of any value.
    void operatesOnAnyTokens()
    {
        // clang-format off
        const std::tuple<const char*, double, const char*> rows[] = { // kind:value, operator last
            {"0:1 2:111", 1.5707963267948966, ""}, {"0:0 2:112", 1.5707963267948966, ""},
            {"0:1 2:113", 0.7853981633974483, ""}, {"0:4 2:114", 0, ""}, {"0:4 2:nan", 0, ""},
            {"0:4 0:3 2:5", 0, ""}, {"0:4 0:3 2:-1", 0, ""}, {"0:4 0:3 2:0.5", 64, ""},
            {"0:4 0:3 2:100", 0, ""}, {"-1:4 1:-0.5 2:4", -3, ""},
            {"0:4 1:-1 2:3", 4, "not en"}, {"1:1e300 2:105", 0, "not en"},
            {"-2:4 2:102", 102, "Cannot"}, {"-2:4 0:3 2:3", 3, "Cannot"}, {"0:4 2:5 2:3", 3, "Cannot"},
            {"0:4 2:1", 1, "This t"}, {"0:4 2:101", 101, "This t"}, {"0:4 0:3 2:101", 101, "This t"},
            {"0:4 0:3", 3, "This t"}, {"0:4 0:3 -2:1", 1, "This t"}};
        // clang-format on
        const QVector<double> values{7};
        for (const auto& [text, value, message] : rows) {
            QVector<parser_token> tree;
            for (const QString& token : QString(text).split(' ')) {
                tree.append(parser_token());
                tree.last().type = token.section(':', 0, 0).toInt();
                tree.last().value = token.section(':', 1).toDouble();
            }
            const LogCapture log;
            parser_token last = tree.constLast();
            tree.size() == 2 ? last.operate(tree.at(0), values)
                             : last.operate(tree.at(0), tree.at(1), values);
            const QString told = log.messages().join('\n').section(": ", 1).left(6);
            QVERIFY2(told == message && almostEqual(last.value, value), text);
            QCOMPARE(last.type == parser_token::Number, told.isEmpty() || told == "not en");
            const Program program(tree); // gives the same; none where there is something to tell
            QVERIFY2(!program.isValid()
                         || (told.isEmpty() && program.evaluate(values.data()) == last.value),
                     text);
        }
    }

    void followsItsTree()
    {
        parser p = compiled("THETA1*2+DOSE");
        p.tree.resize(3); // THETA1 2 *
        QCOMPARE(p.evaluate_tree({0, 0, 5, 7}), 14.0);
        p.expression = "1+1";
        QVERIFY(!p.treeIsCurrent());
    }

    void survivesLongExpressions()
    {
        const int count = 20000;
        for (const char* pieces : {"(7", "+1", "1+(", "a ", "-"}) {
            LogCapture log;
            const double result =
                compiled(QString(pieces).repeated(count)).evaluate_tree({0, 0, 0});
            QVERIFY(result == 0.0 || result == count || result == 7.0);
        }
    }
};

QTEST_APPLESS_MAIN(TestParser)
#include "tst_parser.moc"
