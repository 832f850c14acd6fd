// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/analysis/heading.h"

#include <QtTest>

static const double notANumber = qQNaN();

/// A heading line as the readers store it; ' stands for the double quote.
static QStringList pieces(QString line)
{
    return line.replace('\'', '"').split(',');
}

class TestCheckUp : public QObject
{
    Q_OBJECT

private slots:
    void readsColumnNames()
    {
        const std::pair<QString, QStringList> rows[] = {
            // clang-format off
            {"'model','ofv'", {"model", "ofv"}}, {"model, ofv ,", {"model", "ofv", ""}},
            {"'OMEGA(2,1)','V2,label=V, central',CL", {"OMEGA(2,1)", "V2,label=V, central", "CL"}},
            {"'a ''b'', c','''d''',e'f", {"a 'b', c", "'d'", "e'f"}},
            {"'','',x", {"", "", "x"}}, {"'a','b'\r", {"a", "b"}}, {" 'a,b' ,'c'", {"a,b", "c"}},
            {QString(QChar(0xfeff)) + "'model','ofv'", {"model", "ofv"}},
            {"'model,'problem','ofv'", {"model", "problem", "ofv"}}, // never closed
            {"model','a,b", {"model", "a", "b"}}, {"'a'x,b'", {"a'x", "b"}}, {"'", {""}}};
        // clang-format on

        for (const auto& [line, names] : rows) {
            QCOMPARE(columnNames(pieces(line)).replaceInStrings("\"", "'"), names);
        }
        QCOMPARE(columnNames({}), QStringList());
        QCOMPARE(foreignSeparator(pieces("'model';'ofv';'OMEGA(2,1)'")), QChar(';'));
        QCOMPARE(foreignSeparator(pieces("model\tofv")), QChar('\t'));
        QCOMPARE(foreignSeparator(pieces("'a;b;c','d'")), QChar());
    }

    void describesColumns()
    {
        const QStringList labels{"ofv", "CL", "IVCL", "SIGMA(1,1)", "seCL", ""};
        const QStringList thetas{"ofv", "THETA1", "THETA2", "OMEGA(1,1)"};
        const Table rows{{-5.5, 1234567, notANumber, 1}};
        const std::tuple<int, QStringList, int, int, QString> cases[] = {
            // clang-format off
            {0, labels, 1, 2, "COL1, read as ofv by weights, named ofv, first value -5.5"},
            {1, labels, 1, 2, "COL2, read as THETA1, named CL, first value 1.23457e+06"},
            {2, labels, 1, 2, "COL3, read as THETA2, named IVCL, no number in the first row"},
            {3, labels, 1, 2, "COL4, named SIGMA(1,1), first value 1"},
            {4, labels, 1, 2, "COL5, named seCL, beyond the first row, which has 4 columns"},
            {5, labels, 1, 2, "COL6, without a name, beyond the first row, which has 4 columns"},
            // A wrong setting is told as it is, and does not end at the column it begins with.
            {3, thetas, 1, 4, "COL4, read as THETA1, named OMEGA(1,1), first value 1"},
            {1, thetas, 1, 1, "COL2, read as THETA2, named THETA1, first value 1.23457e+06"},
            {0, thetas, 1, -1, "COL1, read as ofv by weights, named ofv, first value -5.5"},
            {-1, thetas, 0, 0, ""}};
        // clang-format on

        for (const auto& [column, names, colNumOFV, colNumTHETA1, text] : cases) {
            QCOMPARE(describeColumn(column, names, rows, colNumOFV, colNumTHETA1), text);
        }
        QCOMPARE(describeColumn(19, {}, {}, 20, 99), QString("COL20, read as ofv, without a name"));
        QCOMPARE(describeColumn(19, {}, {}, 1, 99),
                 QString("COL20, read as ofv by endpoints, without a name"));
    }
};

QTEST_APPLESS_MAIN(TestCheckUp)

#include "tst_checkup.moc"
