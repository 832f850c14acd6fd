// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/diagnosis.h"
#include "tests/support/ordinaryarithmetic.h"

#include <QtTest>

#include <random>

static std::mt19937 generator(20240607);

static QString oneOf(const QString& texts)
{
    const QStringList list = texts.split('_');
    return list.at(int(generator() % uint(list.size())));
}

static QString wellFormed(int depth)
{
    const uint kind = generator() % (depth > 0 ? 8 : 2);
    if (kind < 2) {
        return oneOf("a_b_DOSE_t_x.1_exp_2_0.5_3._.25_1e3_2E0");
    }
    const QString left = wellFormed(depth - 1);
    return kind < 6 ? left + oneOf("+_-_*_/_^") + wellFormed(depth - 1)
                    : oneOf("_exp_log_log10_Abs_Sign_Sqrt_Sin_Cos_Tan") + '(' + left + ')';
}

/// Whether the findings have these places and hold these words: "5+1 no left; 7+0 missing".
static bool areFound(const QVector<Diagnosis>& diagnoses, const QString& expected)
{
    const QStringList parts = expected.split("; ", Qt::SkipEmptyParts);
    bool agree = diagnoses.size() == parts.size();
    for (int i = 0; agree && i < parts.size(); ++i) {
        const Diagnosis& found = diagnoses.at(i);
        const QString place = QString("%1+%2 ").arg(found.position).arg(found.length);
        agree =
            parts.at(i).startsWith(place) && found.message.contains(parts.at(i).mid(place.size()));
    }
    return agree;
}

class TestDiagnosis : public QObject
{
    Q_OBJECT

private slots:
    void findsFaultsOfForm()
    {
        // clang-format off
        const char* const rows[][2] = {
            {"THETA2*(exp(DOSE/ED_50)-1)", ""}, {"5", ""}, {"2 *( 3e2)", ""}, {"", "0+0 empty"},
            {"-x", "0+1 result is 0: write (0-x)"}, {"2*+3", "2+1 remove it"},
            {"2**3", "1+2 write ^"}, {"*3", "0+1 no left"}, {"(2/)*3", "2+1 no right"},
            {"exp()", "3+2 the result is 102"}, {"(", "0+1 nothing inside; 0+1 never closed"},
            {"2*(exp(3", "2+1 to the end; 6+1 to the end"}, {"2)", "1+1 the result is 0"},
            {")", "0+1 the result is 101"}, {"2+3)*4", "3+1 computed first"},
            {"2(3)", "1+0 result is 0"}, {"(2)(3)", "3+0 write *"},
            {"(2)3*", "3+0 missing: write; 4+1 operand: write"}, {"2* (3)", "2+1 the result is 0"},
            {"a * b", "1+1 beside \"a\"; 3+1 beside \"b\""}, {"(2  3)", "2+2 inside"},
            {"2+x\t", "3+1 white"}, {"Sqrt (x)", "0+6 write Sqrt("}, {" Sqrt(x)", "0+1 operand"},
            {"1+EXP(1)", "2+4 write exp("}, {"ln(2)", "0+3 write log("}, {"2+atan(1)", "2+5 arc"},
            {"2exp(x)", "0+5 into \"2\" and \"exp(\""}, {"THETA(12)*2", "0+9 \"THETA12\""},
            {"1.5e-3*x", "0+6 (1.5/1e3)"}, {"1+2e+3", "2+4 write 2e3"}, {"1e400-1", "0+5 large"},
            {"1-inf", "2+3 number inf"}, {"2x+1", "0+2 \"2*x\""}, {"1.2.3+1", "0+5 no number"},
            {"a$b", "1+1 taken for ^"}, {"0,5*x", "1+1 \".\""}, {"x\u22121", "1+1 \"-\""},
            {"x\U0001F600+1", "1+2 remove"}, {"DOSE", "0+4 here 2"}, {"f(x)", "0+2 no function"},
            {"x\u20121+x\u20131+x\u00d72+x\u00b72+x\u00f72",
             "1+1 \"-\"; 5+1 \"-\"; 9+1 \"*\"; 13+1 \"*\"; 17+1 \"/\""}};
        // clang-format on
        for (const auto& [text, expected] : rows) {
            QVERIFY2(areFound(diagnose(text), expected), text);
        }
        QVERIFY(areFound(diagnose(QString("1+x") + QChar(0xd83d)), "3+1 remove")); // half a pair
        for (const char* piece : {"-", "(", ")", "x x+", "f(", "1+", "2", "a", "1.", "$"}) {
            const auto found = diagnose(QString(piece).repeated(50000));
            const bool isCut = found.size() == 100 && found.last().message.contains("is more");
            QVERIFY2(found.size() <= 2 || isCut, piece);
        }
    }

    void findsFaultsOfNames()
    {
        const RowColumns usual{40, 21, 20};
        // clang-format off
        const std::tuple<const char*, const char*, const char*, RowColumns> rows[] = {
            {"(0-3-ofv/2)", "", "", usual}, {" ", "0+1 blank", "", usual},
            {"ofv", "0+3 lone", "0+3 lone", usual}, {"COL41+COL99", "", "", {0, 21, 20}},
            {"1+ofv", "2+3 COL21", "", {40, 1, 21}}, {"1+ofv", "2+3 of", "2+3 of", {19, 1, 20}},
            {"col1+Col02+COL3+column4+Column40", "", "", usual},
            {"COL41+COL0+COLUMN5+OFV", "0+5 column 41; 6+4 outside; 11+7 COL5; 19+3 write ofv",
             "0+5 column 41; 6+4 outside; 11+7 write COL5; 19+3 write ofv", usual},
            {"COL5COL2*2COL1", "0+8 for COL5; 9+5 product", "0+8 for COL5; 9+5 product", usual},
            {"THETA20*THETA21+THETA0", "8+7 column 41; 16+6 taken for COL20",
             "0+7 write COL40; 8+7 write COL41; 16+6 write COL20", usual},
            {"1+THETA1", "2+6 outside", "2+6 write COLn", {40, 0, 20}},
            {"THETATHETA3*theta1", "0+11 taken for COL23; 12+6 write THETA1",
             "0+11 write COL23; 12+6 write COLn or ofv", usual},
            {"ETA999+ETA1000+ETAETA2", "7+7 to 999; 15+7 taken for ETA2",
             "0+6 endpoints alone; 7+7 to 999; 15+7 endpoints alone", usual},
            {"DOSE/DoSe", "5+4 write DOSE", "0+4 endpoints alone; 5+4 write COLn", usual},
            {"Dose+1+dose", "0+4 write dose", "0+4 endpoints; 7+4 endpoints", usual},
            {"t*Cp+x", "0+1 time; 2+2 conc; 5+1 THETAn", "0+1 time; 2+2 conc; 5+1 COLn", usual},
            {"x/(1+x)", "0+1 THETAn; 5+1 THETAn", "0+1 COLn; 5+1 COLn", usual}};
        // clang-format on
        for (const auto& [text, endpoint, weight, columns] : rows) {
            QVERIFY2(areFound(diagnoseEndpoint(text, columns), endpoint), text);
            QVERIFY2(areFound(diagnoseWeight(text, columns), weight), text);
        }
    }

    void isExact()
    {
        const QString pieces =
            "__ _\t_$_(_)_^_*_/_+_-_._e_1_a_exp(_ASin(_EXP(_1e-3_1e400_inf_2(_\u2212";
        int clean = 0;
        for (int i = 0; i < 4000; ++i) {
            QString text = '(' + wellFormed(4) + ')';
            QVERIFY2(diagnose(text).isEmpty(), qPrintable(text));
            for (int edits = 0; edits < 3; ++edits) {
                const QVector<Diagnosis> found = diagnose(text);
                QVERIFY2(isTrue(text, found), qPrintable(text));
                clean += found.isEmpty() ? 1 : 0;
                const int position = int(generator() % uint(text.size() + 1));
                text.replace(position, int(generator() % 3), oneOf(pieces));
            }
        }
        QVERIFY(clean > 4400 && clean < 8000);
    }
};

QTEST_APPLESS_MAIN(TestDiagnosis)
#include "tst_diagnosis.moc"
