// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/diagnosis.h"
#include "tests/support/rows.h"

/// Places and messages, "5+1 no left; 7+0 missing", of a message those words alone that are
/// expected and in it.
static QString told(const QVector<Diagnosis>& diagnoses, const QString& expected)
{
    QStringList parts;
    for (const Diagnosis& found : diagnoses) {
        const QString part = expected.section("; ", parts.size(), parts.size());
        const QString words = part.section(' ', 1);
        parts.append(QString::number(found.position) + '+' + QString::number(found.length) + ' '
                     + (!words.isEmpty() && found.message.contains(words) ? words : found.message));
    }
    return parts.join("; ");
}

Q_DECLARE_METATYPE(RowColumns)

class TestDiagnosis : public QObject
{
    Q_OBJECT

private slots:
    void findsFaultsOfForm_data()
    {
        const Rows<QString, QString> row("text", "findings");
        row("usual expression", "THETA2*(exp(DOSE/ED_50)-1)", "");
        row("nothing", "", "0+0 empty");
        row("minus sign", "-x", "0+1 result is 0: write (0-x)");
        row("two stars", "2**3", "1+2 write ^");
        row("star first", "*3", "0+1 no left");
        row("slash last in parentheses", "(2/)*3", "2+1 no right");
        row("call without operand", "exp()", "3+2 the result is 102");
        row("only opened", "(", "0+1 nothing inside; 0+1 never closed");
        row("closed at the end", "2)", "1+1 the result is 0");
        row("closed in between", "2+3)*4", "3+1 computed first");
        row("number before parenthesis", "2(3)", "1+0 result is 0");
        row("parenthesis before number", "(2)3*", "3+0 missing: write; 4+1 operand: write");
        row("blanks next to names", "a * b", "1+1 next to \"a\"; 3+1 next to \"b\"");
        row("blanks within numbers", "(2  3)", "2+2 inside");
        row("tab", "2+x\t", "3+1 white");
        row("blank behind function", "Sqrt (x)", "0+6 write Sqrt(");
        row("misspelt functions", "1+EXP(1)+ln(2)", "2+4 write exp(; 9+3 write log(");
        row("arc function", "2+atan(1)", "2+5 arc");
        row("number before function", "2exp(x)", "0+5 into \"2\" and \"exp(\"");
        row("name before parenthesis", "f(x)", "0+2 not a function");
        row("number in parentheses", "THETA(12)*2", "0+9 \"THETA12\"");
        row("signs of exponents", "1.5e-3*x+2e+3", "0+6 (1.5/1e3); 9+4 write 2e3");
        row("infinite", "1-inf", "2+3 number inf");
        row("product without star", "2x+1", "0+2 \"2*x\"");
        row("two points", "1.2.3+1", "0+5 not a number");
        row("dollar", "a$b", "1+1 read as ^");
        row("decimal comma", "0,5*x", "1+1 \".\"");
        row("dashes", u8"x−1+x‒1+x–1", "1+1 \"-\"; 5+1 \"-\"; 9+1 \"-\"");
        row("typeset operators", u8"x×2+x·2+x÷2", "1+1 \"*\"; 5+1 \"*\"; 9+1 \"/\"");
        row("character of two units", u8"x😀+1", "1+2 remove");
        row("half of one", QString("1+x") + QChar(0xd83d), "3+1 remove");
        row("lone name", "DOSE", "0+4 here 2");
    }
    void findsFaultsOfForm()
    {
        QFETCH(QString, text);
        QFETCH(QString, findings);
        QCOMPARE(told(diagnose(text), findings), findings);
    }

    void cutsLongListsShort_data()
    {
        const Rows<QString, int> row("piece", "count");
        row("signs", "-", 100);
        row("one number", "2", 1);
    }
    void cutsLongListsShort()
    {
        QFETCH(QString, piece);
        QFETCH(int, count);
        const QVector<Diagnosis> found = diagnose(piece.repeated(50000));
        QCOMPARE(found.size(), count);
        QCOMPARE(found.last().message.contains("is more"), count == 100);
    }

    void findsFaultsOfNames_data()
    {
        const RowColumns usual{40, 21, 20};
        const Rows<RowColumns, QString, QString, QString> row("columns", "text", "inEndpoint",
                                                              "inWeight");
        row("usual weight", usual, "(0-ofv/2)", "", "");
        row("blank weight", usual, " ", "0+1 blank", "");
        row("unknown number of columns", {0, 21, 20}, "COL41+COL99", "", "");
        row("OFV elsewhere", {40, 1, 21}, "1+ofv",
            "2+3 is column 20 in an endpoint, and not the OFV column: write COL21", "");
        row("row without OFV", {19, 1, 20}, "1+ofv", "2+3 of", "2+3 of");
        row("all spellings of columns", usual, "col1+Col02+COL3+column4+Column40", "", "");
        row("columns that are none", usual, "COL41+COL0+COLUMN5+OFV",
            "0+5 column 41; 6+4 outside; 11+7 COL5; 19+3 write ofv",
            "0+5 column 41; 6+4 outside; 11+7 write COL5; 19+3 write ofv");
        row("THETAs at the limits", usual, "THETA20*THETA21+THETA0",
            "8+7 column 41; 16+6 read as COL20",
            "0+7 write COL40; 8+7 write COL41; 16+6 write COL20");
        row("THETA before all columns", {40, 0, 20}, "1+THETA1", "2+6 outside", "2+6 write COLn");
        row("misspelt THETAs", usual, "THETATHETA3*theta1", "0+11 read as COL23; 12+6 write THETA1",
            "0+11 write COL23; 12+6 write COLn or ofv");
        row("ETAs", usual, "ETA999+ETA1000+ETAETA2", "7+7 to 999; 15+7 read as ETA2",
            "0+6 only endpoints; 7+7 to 999; 15+7 only endpoints");
        row("doses", usual, "DOSE/DoSe", "5+4 write DOSE", "0+4 only endpoints; 5+4 write COLn");
        row("time and others", usual, "t*Cp+x+x", "0+1 time; 2+2 conc; 5+1 THETAn; 7+1 THETAn",
            "0+1 time; 2+2 conc; 5+1 COLn; 7+1 COLn");
    }
    void findsFaultsOfNames()
    {
        QFETCH(RowColumns, columns);
        QFETCH(QString, text);
        QFETCH(QString, inEndpoint);
        QFETCH(QString, inWeight);
        QCOMPARE(told(diagnoseEndpoint(text, columns), inEndpoint), inEndpoint);
        QCOMPARE(told(diagnoseWeight(text, columns), inWeight), inWeight);
    }
};

QTEST_APPLESS_MAIN(TestDiagnosis)
#include "tst_diagnosis.moc"
