// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/analysis/checkup.h"
#include "app/analysis/heading.h"

#include <QtTest>

static const double notANumber = qQNaN();

/// A heading line as the readers store it; ' stands for the double quote.
static QStringList pieces(QString line)
{
    return line.replace('\'', '"').split(',');
}

/// Columns model, minimization_successful, estimate_near_boundary, ofv, CL, OMEGA(2,1).
static const QString usualHeading =
    "'model','minimization_successful','estimate_near_boundary','ofv','CL','OMEGA(2,1)'";

/// Samples numbered first to last that converged.
static Table samples(int first, int last)
{
    Table table;
    for (int number = first; number <= last; ++number) {
        table.append({double(number), 1, 0, 100.0 + number, 2, 0.1});
    }
    return table;
}

/// The table with another value in one place.
static Table with(Table table, int row, int column, double value)
{
    table[row][column] = value;
    return table;
}

/// The table with a row of another length.
static Table resized(Table table, int row, int length)
{
    table[row].resize(length);
    return table;
}

static Table without(Table table, int row)
{
    table.removeAt(row);
    return table;
}

/// The check-up of models with the usual heading, columns set as they are.
static ImportCheckUp checkUsual(const RawResults& results)
{
    return checkUp(results, QVector<QStringList>(results.size(), pieces(usualHeading)),
                   {"linear", "emax"}, 4, 5);
}

/// Compares texts with patterns in which "*" stands for anything.
static bool match(const QStringList& texts, const QStringList& patterns)
{
    bool agree = texts.size() == patterns.size();
    for (int i = 0; agree && i < texts.size(); ++i) {
        const QString pattern = QRegularExpression::escape(patterns.at(i)).replace("\\*", ".*");
        agree = QRegularExpression('^' + pattern + '$').match(texts.at(i)).hasMatch();
    }
    if (!agree) {
        qWarning() << texts << "instead of" << patterns;
    }
    return agree;
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

    void findsNothingInUsualFiles()
    {
        const ImportCheckUp result = checkUsual({{samples(0, 9)}, {samples(0, 9)}});
        QCOMPARE(result.summary, QString("2 models, 1 data set, 10 samples each"));
        QCOMPARE(result.models.first().findings, QStringList());
        const QString text = result.models.first().text;
        QVERIFY(text.startsWith("linear\n10 samples, numbered 0 to 9, the first is the original "));
        QVERIFY(text.contains("6 names for 6 columns\n"));
        QVERIFY(text.contains("shift the headings shown from column 6 on\n"));
        QVERIFY(text.contains("ofv is column 4, which weights read\n"));
        QVERIFY(text.contains("ofv in endpoints reads column 20\n"));

        // Numbers from 1 leave the first row open, unless another file starts at 0.
        QCOMPARE(checkUsual({{samples(1, 9)}}).models.first().findings, QStringList());
        QVERIFY(checkUsual({{samples(1, 9)}}).models.first().text.contains("fit or, if that is"));
    }

    void findsFaultsOfSamples_data()
    {
        QTest::addColumn<Table>("table");
        QTest::addColumn<QStringList>("findings");
        const Table good = samples(0, 9);
        Table bootstrap = with(with(good, 3, 1, 0), 7, 1, 0);
        const auto row = [](const char* name, const Table& table, const QStringList& findings) {
            QTest::newRow(name) << table << findings;
        };
        row("not converged", bootstrap, {"2 of 10 samples (20 %) did not converge"});
        row("fit not converged", with(good, 0, 1, 0),
            {"1 of 10 samples (10 %) did not converge", "the original fit did not converge"});
        row("convergence unknown", with(good, 2, 1, notANumber),
            {"1 of 10 samples (10 %) left open whether they converged"});
        row("near a boundary", with(good, 5, 2, 1),
            {"1 of 10 samples (10 %) ended near a boundary"});
        row("no OFV", with(good, 9, 3, notANumber), {"1 of 10 samples (10 %) came without an OFV"});
        row("run failed", resized(good, 4, 3),
            {"1 of 10 samples (10 %) came without an OFV",
             "1 of 10 samples (10 %) came with another number of columns than 6 (3)"});
        row("wide rows", resized(resized(good, 1, 9), 2, 7),
            {"2 of 10 samples (20 %) came with another number of columns than 6 (7 to 9)"});
        row("no samples", {}, {"no samples"});
        row("gap", without(good, 4),
            {"5 of 9 samples (55.6 %) fell into a row with another sample number of linear",
             "not as many samples as linear (9, not 10)", "sample numbers left out: 1"});
        row("no fit", samples(1, 10),
            {"10 of 10 samples (100 %) fell into a row with another sample number of linear",
             "the original fit is missing"});
        row("number again", with(good, 9, 0, 8),
            {"1 of 10 samples (10 %) fell into a row with another sample number of linear",
             "sample numbers used again: 1"});
        row("numbers", with(with(good, 9, 0, notANumber), 0, 0, -1e300),
            {"1 of 10 samples (10 %) fell *", "sample numbers left out: 1000000000",
             "samples without a number: 1"});
    }

    void findsFaultsOfSamples()
    {
        QFETCH(Table, table);
        QFETCH(QStringList, findings);
        const ImportCheckUp result = checkUsual({{samples(0, 9)}, {table}});
        QCOMPARE(result.models.first().findings, QStringList());
        QVERIFY(match(result.models.last().findings, findings));
        QVERIFY(result.models.last().text.endsWith("\n- " + result.models.last().findings.last()));
    }

    void findsFaultsOfHeadings_data()
    {
        QTest::addColumn<QString>("heading");
        QTest::addColumn<int>("colNumOFV");
        QTest::addColumn<int>("colNumTHETA1");
        QTest::addColumn<QStringList>("findings");
        const auto row = [](const char* name, const QString& heading, int colNumOFV,
                            int colNumTHETA1, const QStringList& findings) {
            QTest::newRow(name) << heading << colNumOFV << colNumTHETA1 << findings;
        };
        const QString thetas = "model,a,b,ofv,THETA1,THETA2";
        row("ofv elsewhere", usualHeading, 3, 5,
            {"ofv is column 4, weights read column 3, named estimate_near_boundary"});
        row("ofv beyond the row", usualHeading, 20, 5, {"ofv is column 4, weights read column 20"});
        row("no ofv", "model,a,b,c,d,e", 20, 5,
            {"no column is named ofv; weights read column 20",
             "10 of 10 samples (100 %) came without an OFV"});
        row("THETA1 elsewhere", thetas, 4, 6, {"THETA1 is column 5, endpoints read column 6, *"});
        row("labels", usualHeading, 4, 4,
            {"the parameters follow ofv from column 5 on, endpoints read * column 4, named ofv"});
        row("later THETA", usualHeading, 4, 6, {});
        row("fewer names", "model,a,b,ofv,CL", 4, 5, {"the heading has 5 names, the samples 6 *"});
        row("numbers", "0,1,0,101.5,2,NA", 4, 5, {"the heading is made of numbers: *"});
        row("semicolons", QString(usualHeading).replace("',", "';"), 4, 5,
            {"columns are parted by semicolons, not by commas, and cannot be read"});
    }

    void findsFaultsOfHeadings()
    {
        QFETCH(QString, heading);
        QFETCH(int, colNumOFV);
        QFETCH(int, colNumTHETA1);
        QFETCH(QStringList, findings);
        const ImportCheckUp result =
            checkUp({{samples(0, 9)}}, {pieces(heading)}, {"emax"}, colNumOFV, colNumTHETA1);
        QVERIFY(match(result.models.first().findings, findings));
    }

    void survivesUnevenResults()
    {
        QCOMPARE(checkUp({}, {}, {}, 20, 21).summary, QString());
        const ImportCheckUp result = checkUp({{}, {{}, {{1}}, {{1}, {1}}}, {samples(0, 1)}},
                                             {{}, {""}}, {"", "a%1b%2"}, -7, -7);
        QVERIFY(match(result.models.at(0).findings, {"no data set was read"}));
        QVERIFY(match(result.models.at(1).findings, {"there is one column only"}));
        QVERIFY(result.models.at(1).text.startsWith("a%1b%2\n"));
        QVERIFY(result.models.at(2).text.startsWith("model 2\n2 samples\nthere is no heading\n"));
        QCOMPARE(result.summary, QString("3 models, 0 to 3 data sets, 0 to 2 samples each; model "
                                         "0: no data set was read; 3 more findings"));
    }

    void keepsManyDataSetsShort()
    {
        QVector<Table> first(500, samples(0, 9));
        QVector<Table> second = first;
        for (int dataSet = 0; dataSet < 500; ++dataSet) {
            first[dataSet][1][3] = second[dataSet][1][3] = dataSet; // otherwise the same ones
        }
        second[7] = with(with(second.at(7), 1, 1, 0), 2, 1, 0);
        for (const int dataSet : {8, 100, 499}) {
            second[dataSet] = with(second.at(dataSet), 0, 2, 1);
        }
        second[100] = with(second.at(100), 5, 2, 1);
        second[200] = second.at(199);
        second[300].append(second.at(300).last());
        second[400].clear();
        const ImportCheckUp result = checkUsual({first, second});
        QCOMPARE(result.models.first().findings, QStringList());
        QVERIFY(match(
            result.models.last().findings,
            {"no samples in data set 400", "not as many samples as linear in 2 of 500 data sets",
             "2 of 10 samples (20 %) did not converge in data set 7",
             "4 of 4991 samples (0.0801 %) ended near * in 3 of 500 data sets, most * set 100 (2)",
             "sample numbers used again: 1 in data set 300",
             "the same samples as in the data set before in data set 200"}));
        QVERIFY(result.models.last().text.count('\n') < 25);
        QCOMPARE(result.summary, QString("2 models, 500 data sets, 0 to 11 samples each; emax: "
                                         "no samples; 5 more findings"));
    }
};

QTEST_APPLESS_MAIN(TestCheckUp)

#include "tst_checkup.moc"
