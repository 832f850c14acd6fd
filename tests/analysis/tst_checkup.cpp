// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/checkup.h"
#include "analysis/checkup/heading.h"
#include "analysis/checkup/inputcheck.h"
#include "analysis/numberlist.h"
#include "analysis/probability.h"
#include "model/randomng.h"

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

/// Samples numbered first to last that converged, of other than 6 columns where given.
static Table samples(int first, int last, int columns = 6)
{
    Table table;
    for (int number = first; number <= last; ++number) {
        table.append({double(number), 1, 0, 100.0 + number, 2, 0.1});
        table.last().resize(columns);
    }
    return table;
}

/// The table with another value in one place.
static Table with(Table table, int row, int column, double value)
{
    table[row][column] = value;
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
            {1, {}, 1, 1, "COL2, read as THETA2, without a name, first value 1.23457e+06"}};
        // clang-format on

        for (const auto& [column, names, colNumOFV, colNumTHETA1, text] : cases) {
            QCOMPARE(describeColumns(6, names, rows, colNumOFV, colNumTHETA1).at(column), text);
        }
        QCOMPARE(describeColumns(20, {}, {}, 20, 99).last(), "COL20, read as ofv, without a name");
        QCOMPARE(describeColumns(20, {}, {}, 1, 99).last(),
                 "COL20, read as ofv by endpoints, without a name");
    }

    void findsNothingInUsualFiles()
    {
        const ImportCheckUp result = checkUsual({{samples(0, 9)}, {samples(0, 9)}});
        QCOMPARE(result.summary, QString("2 models, 1 data set, 10 samples each"));
        QCOMPARE(result.models.first().findings, QStringList());
        const QString text = result.models.first().text;
        QVERIFY(text.startsWith("linear\n10 samples, numbered 0 to 9, the first is the original "));
        for (const char* line :
             {"6 names for 6 columns\n", "shift the headings shown from column 6 on\n",
              "ofv is column 4, which weights read\n", "ofv in endpoints reads column 20\n"}) {
            QVERIFY2(text.contains(line), line);
        }

        // Numbers from 1 leave the first row open, unless another file starts at 0.
        QCOMPARE(checkUsual({{samples(1, 9)}}).models.first().findings, QStringList());
        QVERIFY(checkUsual({{samples(1, 9)}}).models.first().text.contains("fit or, if that is"));
    }

    void findsFaultsOfSamples()
    {
        const Table good = samples(0, 9);
        const std::pair<Table, QStringList> cases[] = {
            // clang-format off
            {with(with(good, 3, 1, 0), 7, 1, 0), {"2 of 10 samples (20 %) did not converge"}},
            {with(good, 0, 1, 0), {"1 of 10 samples (10 %) did not converge", "the original fit did not converge"}},
            {with(good, 2, 1, notANumber), {"1 of 10 samples (10 %) left open whether they converged"}},
            {with(good, 5, 2, 1), {"1 of 10 samples (10 %) ended near a boundary"}},
            {with(good, 9, 3, notANumber), {"1 of 10 samples (10 %) came without an OFV"}},
            {samples(0, 3) + samples(4, 4, 3) + samples(5, 9), // a run that failed
             {"1 of 10 samples (10 %) came without an OFV",
              "1 of 10 samples (10 %) came with another number of columns than 6 (3)"}},
            {samples(0, 0) + samples(1, 1, 9) + samples(2, 2, 7) + samples(3, 9),
             {"2 of 10 samples (20 %) came with another number of columns than 6 (7 to 9)"}},
            {{}, {"no samples"}},
            {samples(0, 3) + samples(5, 9),
             {"5 of 9 samples (55.6 %) fell into a row with another sample number of linear",
              "not as many samples as linear (9, not 10)", "sample numbers left out: 1"}},
            {samples(1, 10),
             {"10 of 10 samples (100 %) fell into a row with another sample number of linear",
              "the original fit is missing"}},
            {with(good, 9, 0, 8),
             {"1 of 10 samples (10 %) fell into a row with another sample number of linear",
              "sample numbers used again: 1"}},
            {with(with(good, 9, 0, notANumber), 0, 0, -1e300),
             {"1 of 10 samples (10 %) fell *", "sample numbers left out: 1000000000", "samples without a number: 1"}}};
        // clang-format on
        for (const auto& [table, findings] : cases) {
            const ImportCheckUp result = checkUsual({{good}, {table}});
            QCOMPARE(result.models.first().findings, QStringList());
            QVERIFY(match(result.models.last().findings, findings));
            QVERIFY(
                result.models.last().text.endsWith("\n- " + result.models.last().findings.last()));
        }
    }

    void findsFaultsOfHeadings()
    {
        const QString thetas = "model,a,b,ofv,THETA1,THETA2";
        const std::tuple<QString, int, int, QStringList> cases[] = {
            // clang-format off
            {usualHeading, 3, 5, {"ofv is column 4, weights read column 3, named estimate_near_boundary"}},
            {usualHeading, 20, 5, {"ofv is column 4, weights read column 20"}},
            {"model,a,b,c,d,e", 20, 5,
             {"no column is named ofv; weights read column 20", "10 of 10 samples (100 %) came without an OFV"}},
            {thetas, 4, 6, {"THETA1 is column 5, endpoints read column 6, *"}},
            {usualHeading, 4, 4,
             {"the parameters follow ofv from column 5 on, endpoints read * column 4, named ofv"}},
            {usualHeading, 4, 6, {}},
            {"model,a,b,ofv,CL", 4, 5, {"the heading has 5 names, the samples 6 *"}},
            {"0,1,0,101.5,2,NA", 4, 5, {"the heading is made of numbers: *"}},
            {QString(usualHeading).replace("',", "';"), 4, 5,
             {"columns are parted by semicolons, not by commas, and cannot be read"}}};
        // clang-format on
        for (const auto& [heading, colNumOFV, colNumTHETA1, findings] : cases) {
            const ImportCheckUp result =
                checkUp({{samples(0, 9)}}, {pieces(heading)}, {"emax"}, colNumOFV, colNumTHETA1);
            QVERIFY(match(result.models.first().findings, findings));
        }
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

    void checksNumberLists()
    {
        const std::pair<const char*, QStringList> doses[] = {
            // clang-format off
            {"0:1:4", {}}, {"0:0.1:0.3", {}}, {"4:-1:0", {}}, {"5:1:5", {}}, {"1,2.5, 3", {}}, {"7", {}},
            {"0:3:10", {"The last dose, 12, lies beyond the end of the range, 10."}},
            {"1:0.1:1.3", {"The last dose, 1.4, lies beyond*"}}, {"9:-2:4", {"The last dose, 3, lies*, 4."}},
            {"5:10:4", {"The last dose, 5, lies beyond*"}},
            {"10:1:0", {"There are no doses.", "*leads away*"}}, {"0:0:1", {"There are no doses.", "*is 0."}},
            {"0:1:inf", {"There are no doses.", "*more than 100000*"}},
            {"nan:1:2", {"There are no doses.", "*no finite numbers."}}, {"0:inf:5", {"A dose is infinite*"}},
            {"0:x:", {"There are no doses.", "*\"0:x:\"*", "*start:step:end*"}},
            {"0:x:y", {"There are no doses.", "No number in the range: \"x\", \"y\"."}},
            {"", {"There are no doses."}}, {",,", {"There are no doses."}},
            {"1,x,2,x,1 2", {"Left out, being no number: \"x\", \"1 2\"."}},
            {"a,b,c,d,e,f,g,1", {"*\"e\" and 2 more."}}, {"1,2,2,2", {"Repeated*: \"2\"."}},
            {"1,1.0, 1", {"Equal to another dose*: \"1.0\", \"1\"."}}, {"1,nan", {"A dose is infinite*"}}};
        const std::pair<const char*, QStringList> levels[] = {
            {"0,50,99.9", {}}, {"100,50", {"*reaches the level 100."}}, {"-5,50", {"*the level -5, so the lowest*"}},
            {"90:20:120", {"The last level, 130*", "*110, 130."}}, {"inf", {"A level is infinite*", "*level inf."}},
            {"0.5,0.29", {"*1 %: if 0.5 is meant as a share, write 50."}}, {"0,-1", {"*the level -1, so*"}}, {"0.5,1", {}}};
        // clang-format on

        for (const auto& [text, remarks] : doses) {
            QVERIFY2(match(checkDoses(text), remarks), text);
            const bool saysEmpty = checkDoses(text).value(0) == "There are no doses.";
            QCOMPARE(saysEmpty, parseNumberList(text).isEmpty());
        }
        for (const auto& [text, remarks] : levels) {
            QVERIFY2(match(checkLevels(text), remarks), text);
        }
    }

    void checksTarget()
    {
        QVERIFY(match(checkBound("-inf", true, -10), {"\"-inf\" stands for -10; *"}));
        QVERIFY(match(checkBound("", false, 10), {"No bound stands for 10; *"}));
        QVERIFY(match(checkBound("nan", false, 10), {"*NaN."}));
        QCOMPARE(checkBound("inf", false, 10) + checkBound(" 0.4", false, 10), QStringList());
        QVERIFY(
            match(checkLowerBoundUsed("-inf", true, -10), {"*-10: endpoints of -10 and below*"}));
        QVERIFY(match(checkUpperBoundUsed("", false, 10), {"*10: endpoints above 10 count as*"}));
        QCOMPARE(checkUpperBoundUsed("inf", false, 10), QStringList());

        // Said exactly where no endpoint counts, an endpoint equal to the upper bound included.
        for (const auto& [lower, upper] :
             {std::pair(0.0, 1.0), {1, 1}, {2, 1}, {notANumber, 1}, {0, notANumber}, {0, qInf()}}) {
            const double counting = probabilityBySelection({{upper}}, 1, {lower, upper}).first();
            QCOMPARE(checkInterval(lower, upper).isEmpty(), counting > 0);
        }
    }

    void checksOmega()
    {
        const std::pair<const char*, QStringList> cells[] = {
            // clang-format off
            {"0.5", {}}, {"COL24", {}}, {"Column24", {}}, {"COL25", {"Samples have 24 columns: *column 25*"}},
            {"nan", {"\"nan\" is no finite*"}}, {"COL0", {"Columns count from 1*"}},
            {"col2", {"\"col2\" is neither*"}}, {"", {"\"\" is neither*"}}, {"COLx", {"* is neither*"}}};
        const std::pair<QVector<QVector<double>>, QStringList> matrices[] = {
            {{}, {}}, {{{4, 2}, {2, 3}}, {}}, {{{0, 0}, {0, 1}}, {}}, {{{0}}, {}},
            {{{1, 1}, {1, 1}}, {}}, // the last ETA follows from the others
            {{{1, 2}, {2, 1}}, {"*endpoints with ETA2 are NaN."}},
            {{{0, 0, 0}, {0, -1, 0}, {0, 0, 1}}, {"*ETA2, ETA3 are NaN."}},
            {{{1, 1, 0}, {1, 1, 0}, {0, 0, 1}}, {"*with ETA3 are NaN."}},
            {{{notANumber}}, {"*ETA1 are NaN."}}, {{{1, 0}, {0.5, 1}}, {"*not symmetric*"}}};
        // clang-format on

        for (const auto& [text, remarks] : cells) {
            QVERIFY2(match(checkOmegaElement(text, 24), remarks), text);
        }
        for (const auto& [omega, remarks] : matrices) {
            const QStringList found = checkCovariance(omega);
            QVERIFY(match(found, remarks));
            const QVector<double> etas = randomNG().multiNormal(omega);
            for (int eta = 0; eta < etas.size(); ++eta) {
                const bool told = found.join(' ').contains(QString("ETA%1").arg(eta + 1));
                QCOMPARE(told, !std::isfinite(etas.at(eta)));
            }
        }
    }

    void checksIndividuals()
    {
        const int processors = qMax(1, QThread::idealThreadCount());
        endPoint definition;
        definition.endPointParser.expression = "1+0*ETA1";
        definition.checkETA();
        definition.bringUpToDate({1});
        for (const int individuals : {1, 2, 3, 100, 101}) {
            definition.numSimulations = individuals;
            const QStringList remarks = checkIndividuals(individuals, processors);
            // The mean of ones falls below 1 by the share that is not simulated.
            const double mean = definition.evaluateEndpoint({}).first();
            const QString rest = QString::number(qRound((1 - mean) * individuals));
            QCOMPARE(remarks.isEmpty(), mean == 1);
            QVERIFY(mean == 1 || mean == 0 || remarks.first().startsWith(rest + " of "));
        }
        QVERIFY(match(checkIndividuals(100, 8), {"4 of 100 individuals*8 processors*"}));
        QVERIFY(match(checkIndividuals(7, 8), {"No individual*7 are too few for 8*"}));
        QCOMPARE(checkIndividuals(1, 8) + checkIndividuals(96, 8), QStringList());
        QVERIFY(match(checkIndividuals(0, 8), {"No individual is simulated."}));
        QVERIFY(
            match(checkShown(9, 3, 2, 2), {"*first 3 of 9 rows and the first 2 of 2 columns."}));
        QCOMPARE(checkShown(0, 0, 0, 4) + checkShown(9, 9, 2, 2), QStringList());
    }
};

QTEST_APPLESS_MAIN(TestCheckUp)

#include "tst_checkup.moc"
