// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "expr/parser.h"
#include "tests/support/compare.h"
#include "tests/support/logcapture.h"

#include <QtTest>

#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
const char operateUnary[] = "void parser_token::operate(parser_token, QVector<double>)";
const char evaluateTree[] = "double parser::evaluate_tree(QVector<double>)";

} // namespace

class TestParser : public QObject
{
    Q_OBJECT

private slots:
    void splitsText_data();
    void splitsText();
    void listsVariables_data();
    void listsVariables();
    void evaluates_data();
    void evaluates();
    void reports_data();
    void reports();
    void walksWhatWasNotCompiled();
    void evaluatesBlocksAsSingles_data();
    void evaluatesBlocksAsSingles();
    void survivesLongExpressions();
};

void TestParser::splitsText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("pieces"); // kind:label or text, separated by blanks
    QTest::newRow("two numbers") << "2*3"
                                 << "0:2 2:* 0:3";
    QTest::newRow("leading operator") << "*3"
                                      << "2:* 0:3";
    QTest::newRow("trailing operator") << "2*"
                                       << "0:2 2:*";
    QTest::newRow("two operators") << "2**3"
                                   << "0:2 2:* 2:* 0:3";
    QTest::newRow("mark counts as operator") << "a$b"
                                             << "-1:a 2:* -1:b";
    QTest::newRow("no operator, a name") << "THETA1"
                                         << "-1:THETA1";
    QTest::newRow("no operator, a number") << "1.5e3"
                                           << "0:1500";
    QTest::newRow("empty") << ""
                           << "";
}

void TestParser::splitsText()
{
    QFETCH(QString, text);
    parser_token token;
    token.text = text;
    QStringList pieces;
    for (const parser_token& piece : token.split("*", parser_token::Operator, 1)) {
        pieces += QString("%1:%2")
                      .arg(piece.type)
                      .arg(piece.type == parser_token::Unresolved ? piece.text : piece.label);
    }
    QTEST(pieces.join(' '), "pieces");
}

void TestParser::listsVariables_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("names");
    QTest::newRow("order of appearance") << "Emax*DOSE/(ED50+DOSE)"
                                         << "Time,C,DOSE,Emax,ED50";
    QTest::newRow("alias") << "dose*2"
                           << "Time,C,dose";
    QTest::newRow("second alias is a name") << "Dose*DOSE"
                                            << "Time,C,DOSE,Dose";
    QTest::newRow("all groups") << "cp+t*IndepVariable"
                                << "t,cp,IndepVariable";
    QTest::newRow("blanks cut") << "a b+1e3"
                                << "Time,C,DOSE,a,b";
    QTest::newRow("any case of functions") << "EXP(x)+sqrt(y)"
                                           << "Time,C,DOSE,x,y";
    QTest::newRow("signed exponent is cut") << "1e-3"
                                            << "Time,C,DOSE,1e";
    QTest::newRow("empty") << ""
                           << "Time,C,DOSE";
}

void TestParser::listsVariables()
{
    QFETCH(QString, expression);
    QTEST(parser(expression).extract_variables().join(','), "names");
}

void TestParser::evaluates_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<double>("result");
    // The values are Time 0, C 0, DOSE 16, then 4, 0.5, 3 for further names.
    const QVector<QPair<const char*, double>> rows{{"2+3*4", 14},
                                                   {"(2+3)*4", 20},
                                                   {"2^3^2", 512},
                                                   {"8-3-2", 3},
                                                   {"8/4/2", 1},
                                                   {"2*3^2", 18},
                                                   {"(2*(3+4))^2", 196},
                                                   {"a*DOSE/(b+DOSE)", 4 * 16 / 16.5},
                                                   {"a^k", 2},
                                                   {"exp(0-a/2)", std::exp(-2.0)},
                                                   {"log(1)", 0},
                                                   {"log10(1000)", 2.9999999999999996},
                                                   {"Abs(2-5)", 3},
                                                   {"Sign(0)", 1},
                                                   {"Sign(2-3)", -1},
                                                   {"Sqrt(DOSE)", 4},
                                                   {"Sqrt(0-4)", notANumber},
                                                   {"Sqrt(0-1/0)", infinity},
                                                   {"Sin(0)+Cos(0)+Tan(0)", 1},
                                                   {"log(0)", -infinity},
                                                   {"0/0", notANumber},
                                                   {"5", 5},
                                                   {"DOSE", 2},
                                                   {"(DOSE)", 16},
                                                   {"a", 3},
                                                   {"((a))", 4},
                                                   {"(2+3", 5},
                                                   {"(2+3)*4)", 20},
                                                   // Malformed texts give 0, never an error.
                                                   {"exp(-a/2)", 0},
                                                   {"-a", 0},
                                                   {"2)", 0},
                                                   {"ASin(1)", 0},
                                                   {"THETA(1)", 0},
                                                   {"2 3", 0},
                                                   {"2**3", 0},
                                                   {"()", 100},
                                                   {"sqrt(4)", 0},
                                                   {"a$k", 1},
                                                   {"", 0}};
    for (const auto& row : rows) {
        QTest::newRow(row.first) << row.first << row.second;
    }
}

void TestParser::evaluates()
{
    QFETCH(QString, expression);
    QFETCH(double, result);
    LogCapture log;
    parser p(expression);
    p.generate_tree();
    QVERIFY(almostEqual(p.evaluate_tree({0, 0, 16, 4, 0.5, 3}), result, 1e-15));
}

void TestParser::reports_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QString>("function");
    QTest::newRow("well-formed") << "(x+1)*2" << QStringList() << "";
    QTest::newRow("no tree") << "" << QStringList{"the parser tree does not exist"} << evaluateTree;
    QTest::newRow("surplus )") << "2)" << QStringList{"This token is not an operator"}
                               << operateUnary;
    QTest::newRow("short vector, each use")
        << "exp(y)*exp(z)*exp(z)"
        << QStringList{"not enough variable values", "not enough variable values"} << operateUnary;
    QTest::newRow("left over values") << "2 3 4" << QStringList() << "";
    QTest::newRow("error as operand")
        << "2))+3" << QStringList{"This token is not an operator", "Cannot operate on operator"}
        << operateUnary;
}

void TestParser::reports()
{
    QFETCH(QString, expression);
    QFETCH(QStringList, texts);
    parser p(expression);
    p.generate_tree();
    QStringList reported;
    LogCapture log;
    p.evaluate_tree({0, 0, 0, 1});
    for (const LogCapture::Message& message : log.messages()) {
        reported += message.text;
        QCOMPARE(message.type, QtDebugMsg);
    }
    QCOMPARE(reported, texts);
    if (!texts.isEmpty()) {
        QTEST(log.messages().first().function, "function");
    }
}

void TestParser::walksWhatWasNotCompiled()
{
    parser p("THETA1*2+DOSE");
    p.generate_tree();
    const parser copy = p;
    p.tree.removeLast();
    p.tree.removeLast(); // leaves THETA1 2 *
    QCOMPARE(p.evaluate_tree({0, 0, 5, 7}), 14.0);
    p = copy;
    QCOMPARE(p.evaluate_tree({0, 0, 5, 7}), 19.0);
    p.expression = "1+1";
    QVERIFY(!p.treeIsCurrent());
}

void TestParser::evaluatesBlocksAsSingles_data()
{
    QTest::addColumn<QString>("expression");
    for (const char* expression :
         {"a*DOSE/(b+DOSE)+ETA1", "a*exp(ETA1)*DOSE^(c+ETA2)/(b^(c+ETA2)+DOSE^(c+ETA2))", "a*DOSE",
          "2+3", "(ETA1)", "ETA1", "Sqrt(ETA1)-ETA1*(ETA2-ETA1*(a-ETA2))", "-ETA1"}) {
        QTest::newRow(expression) << expression;
    }
}

void TestParser::evaluatesBlocksAsSingles()
{
    QFETCH(QString, expression);
    parser p(expression);
    p.generate_tree();
    ValueBlock block;
    block.count = 300; // two full passes and a part of one
    block.common = {notANumber, notANumber, 0.7};
    for (int slot = FirstFreeSlot; slot < p.variables.size(); ++slot) {
        block.common.append(0.3 * slot);
        if (p.variables.at(slot).startsWith("ETA")) {
            block.varyingSlots.append(slot);
        }
    }
    QVector<QVector<double>> singles(block.count, block.common);
    for (const int slot : qAsConst(block.varyingSlots)) {
        for (int i = 0; i < block.count; ++i) {
            const double value = std::sin(i * 1.7 + slot);
            block.varying.append(value);
            singles[i][slot] = value;
        }
    }
    QVector<double> results(block.count);
    p.evaluateBlock(block, results.data());
    QVector<double> expected;
    for (const QVector<double>& values : qAsConst(singles)) {
        expected.append(p.evaluate_tree(values));
    }
    QVERIFY(almostEqual(results, expected, 0));
    QVERIFY(almostEqual(p.evaluateAll(singles), expected, 0));
}

void TestParser::survivesLongExpressions()
{
    const int count = 20000;
    for (const QString& text : {QString("(").repeated(count) + "7",
                                "7" + QString("+1").repeated(count), QString("1+(").repeated(count),
                                QString("a ").repeated(count), QString("-").repeated(count)}) {
        LogCapture log;
        parser p(text);
        p.generate_tree();
        const double result = p.evaluate_tree({0, 0, 0});
        QVERIFY(result == 0.0 || result == 7.0 || result == 7.0 + count);
    }
}

QTEST_APPLESS_MAIN(TestParser)
#include "tst_parser.moc"
