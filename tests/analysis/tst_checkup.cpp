// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/checkup.h"
#include "analysis/checkup/heading.h"
#include "analysis/checkup/inputcheck.h"
#include "analysis/probability.h"
#include "model/randomng.h"
#include "tests/support/compare.h"
#include "tests/support/rows.h"

#include <QDataStream>
#include <QRandomGenerator>

static const double none = qQNaN();

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

static CheckUpCounts countsIn(const QByteArray& bytes)
{
    CheckUpCounts counts;
    QDataStream stream(bytes);
    stream >> counts;
    return counts;
}

/// Samples numbered from 0, whose OFVs are those of the resamples from first on, except one.
static Table fits(int first, int count, int left = -1, quint32 seed = 1)
{
    Table table;
    QRandomGenerator resamples(seed);
    for (int resample = 0; table.size() < count; ++resample) {
        const double ofv = resamples.bounded(1000.0);
        if (resample >= first && resample != left) {
            table.append({double(table.size()), 1, 0, ofv, 2, 0.1});
        }
    }
    return table;
}

class TestCheckUp : public QObject
{
    Q_OBJECT

private slots:
    void readsColumnNames_data()
    {
        const Rows<QString, QString> row("line", "names");
        row("commas within quotes", "'OMEGA(2,1)','V2,label=V, central',CL",
            "OMEGA(2,1)|V2,label=V, central|CL");
        row("quotes within quotes", "'a ''b'', c','''d''',e'f", "a 'b', c|'d'|e'f");
        row("blanks", " 'a,b' , ofv ,", "a,b|ofv|");
        row("byte order mark, return", QChar(0xfeff) + QString("'a','b'\r"), "a|b");
        row("quote never closed", "'model,'problem','ofv'", "model|problem|ofv");
        row("quotes amid names", "model','a'x,b'", "model|a'x|b");
    }
    void readsColumnNames()
    {
        QFETCH(QString, line);
        QTEST(columnNames(pieces(line)).join('|').replace('"', '\''), "names");
    }

    void describesColumns_data()
    {
        const Rows<int, QString, QString> row("colNumTHETA1", "names", "description");
        const QString labels = "ofv,CL,IVCL,SIGMA(1;1),seCL,";
        row("no number", 2, labels, "COL3, read as THETA2, named IVCL, no number in the first row");
        row("behind the THETAs", 2, labels, "COL4, named SIGMA(1;1), first value 1");
        row("beyond the row", 2, labels,
            "COL6, without a name, beyond the first row, which has 4 columns");
        // A wrong setting is told as it is, and does not end at the column it begins with.
        row("wrong setting", 4, "a,b,c,OMEGA(1;1),d",
            "COL4, read as THETA1, named OMEGA(1;1), first value 1");
        row("endpoints", 2, "", "COL20, read as ofv by endpoints, *");
    }
    void describesColumns()
    {
        QFETCH(int, colNumTHETA1);
        QFETCH(QString, names);
        QFETCH(QString, description);
        const int column = description.section(',', 0, 0).mid(3).toInt();
        const Table rows{{-5.5, 1234567, none, 1}};
        const QStringList all = describeColumns(20, names.split(','), rows, 1, colNumTHETA1);
        QCOMPARE(told({all.at(column - 1)}, description), description);
    }

    void describesColumnsNamedLikeErrors()
    {
        QStringList names; // reading each for itself would exceed the time of a test
        for (int column = 1; column <= 1'000'000; ++column) {
            names.append(QString("sensor%1").arg(column));
        }
        const QString last = describeColumns(20'000, names, {}, 1, 2).last();
        QCOMPARE(last, "COL20000, read as THETA19999, named sensor20000");
    }

    void findsNothingInUsualFiles()
    {
        const ModelCheckUp found = checkUsual({{samples(0, 9)}}).models.first();
        QCOMPARE(found.findings, QStringList());
        const QString text =
            "linear\n10 samples, numbered 0 to 9, the first is the original fit\n*from column 6 "
            "on\n"
            "ofv is column 4, which weights read\nofv in endpoints reads column 20\n"
            "all samples converged\nno sample ended near a boundary\n*";
        QCOMPARE(told({found.text}, text), text);
        const ModelCheckUp open = checkUsual({{samples(1, 9)}}).models.first();
        QCOMPARE(open.findings, QStringList());
        QVERIFY2(open.text.contains("fit or, if that is missing"), qPrintable(open.text));
    }

    void findsFaultsOfSamples_data()
    {
        const Rows<Table, QString> row("samples", "findings");
        const Table good = samples(0, 9);
        row("original fit failed", with(good, 0, 1, 0),
            "1 of 10 samples (10 %) did not converge/the original fit did not converge");
        row("convergence unknown", with(good, 2, 1, none),
            "1 of 10 samples (10 %) did not report whether they converged");
        row("run that failed", samples(0, 3) + samples(4, 4, 3) + samples(5, 9),
            "1 of 10 samples (10 %) had no OFV/1 of 10*another number of columns than 6 "
            "(3)");
        row("one column", samples(0, 9, 1), "there is only one column");
        row("wide rows", samples(0, 0) + samples(1, 1, 9) + samples(2, 2, 7) + samples(3, 9),
            "2 of 10 samples (20 %) had another number of columns than 6 (7 to 9)");
        row("number left out", samples(0, 3) + samples(5, 9),
            "5 of 9 samples (55.6 %) stood in a row with another sample number than in linear/"
            "a different number of samples than linear (9, not 10)/number of missing samples: 1");
        row("no original fit", with(samples(1, 10), 0, 1, 0),
            "10*/1 of */the original fit is missing");
        row("strange numbers", with(with(good, 9, 0, none), 0, 0, -1e300),
            "1 of 10*/number of missing samples: 1000000000/samples without a number: 1");
    }
    void findsFaultsOfSamples()
    {
        QFETCH(Table, samples);
        QFETCH(QString, findings);
        const ImportCheckUp result = checkUsual({{::samples(0, 9)}, {samples}});
        QCOMPARE(result.models.first().findings, QStringList());
        QCOMPARE(told(result.models.last().findings, findings), findings);
    }

    void findsFaultsOfHeadings_data()
    {
        const Rows<QString, int, int, QString> row("heading", "ofv", "theta", "findings");
        row("OFV elsewhere", usualHeading, 3, 5,
            "ofv is column 4, but weights read column 3, named estimate_near_boundary");
        row("no OFV", "model,a,b,c,d,e", 20, 5,
            "no column is named ofv; weights read column 20/10 of 10*");
        row("number among names", "model,2,b,ofv,CL,x", 4, 5, "");
        row("THETA1 elsewhere", "model,a,b,ofv,THETA1,x", 4, 6,
            "THETA1 is column 5, but endpoints read*");
        row("THETA1 at the OFV", usualHeading, 4, 4,
            "the parameters follow ofv from column 5 on, but endpoints read * column 4, named ofv");
        row("THETA1 in the last column", usualHeading, 4, 6, "");
        row("THETA1 behind all columns", usualHeading, 4, 7, "the parameters follow*");
        row("no heading", "0,1,0,101.5,2,NA", 4, 5, "the heading consists of numbers: *");
        row("semicolons", "model;'a,b';ofv", 4, 5, "columns are separated by semicolons, not*");
    }
    void findsFaultsOfHeadings()
    {
        QFETCH(QString, heading);
        QFETCH(int, ofv);
        QFETCH(int, theta);
        QFETCH(QString, findings);
        const auto result = checkUp({{samples(0, 9)}}, {pieces(heading)}, {"emax"}, ofv, theta);
        QCOMPARE(told(result.models.first().findings, findings), findings);
    }

    void findsUnpairedRows_data()
    {
        const Rows<RawResults, QString> row("results", "findings");
        const Table good = fits(0, 100);
        const Table other = fits(0, 100, -1, 5);
        row("same resamples", {{good}, {good}, {good}}, "");
        row("first model shifted", {{fits(3, 100)}, {good}, {good}},
            "linear: OFV * of emax (rank correlation * samples, 1 after moving its rows down by "
            "3)");
        row("the only other one, too far", {{fits(30, 100)}, {fits(9, 100)}},
            "emax: OFV * of linear (rank correlation * samples)");
        row("other resamples twice", {{good}, {other}, {other}, {good}, {good}},
            "emax: OFV * of linear */model 2: OFV * of linear *");
        row("fit twice", {{good}, {fits(0, 1) + fits(0, 99)}},
            "emax: OFV * samples, 1 after moving its rows up by 1)");
        row("row left out", {{fits(0, 200)}, {fits(0, 200, 162)}},
            "emax: OFV * in rows 161 to 200, 0.9* after moving its rows down by 1)");
        row("gaps", {{with(good, 7, 3, none)}, {with(other, 9, 3, qInf())}}, "emax: *");
        row("few", {{fits(0, 19)}, {fits(3, 19)}}, "");
        row("all the same", {{good}, {Table(100, good.first())}}, "");
        row("some data sets", {{good, good, good}, {good, fits(4, 100), other}},
            "emax: OFV * (rank correlation * in data set 1, 1 after*by 4) in 2 of 3 data sets");
    }
    void findsUnpairedRows()
    {
        QFETCH(RawResults, results);
        QFETCH(QString, findings);
        QStringList found;
        for (const ModelCheckUp& model : checkUsual(results).models) {
            for (const QString& finding : model.findings) {
                if (finding.contains("OFV does")) {
                    found.append(model.text.section('\n', 0, 0) + ": " + finding);
                }
            }
        }
        QCOMPARE(told(found, findings), findings);
    }

    void keepsManyDataSetsShort()
    {
        QVector<Table> first(500, samples(0, 9));
        QVector<Table> second = first;
        for (int dataSet = 0; dataSet < 500; ++dataSet) {
            first[dataSet][1][3] = second[dataSet][1][3] = dataSet; // otherwise the same ones
        }
        second[7][1][1] = second[7][2][1] = 0;
        second[8][0][2] = second[100][0][2] = second[100][5][2] = 1;
        second[200] = second.at(199);
        second[300].append(second.at(300).last());
        second[400].clear();
        const ImportCheckUp result = checkUsual({first, second});
        QCOMPARE(result.models.first().findings, QStringList());
        const QString findings =
            "no samples in data set 400/a different number of samples than linear in 2 of 500 data "
            "sets/"
            "2 of 10 samples (20 %) did not converge in data set 7/"
            "3 of 4991 samples (*) ended near * in 2 of 500 data sets, the largest * set 100 (2)/"
            "repeated sample numbers: 1 in data set 300/"
            "the same samples as in the data set before in data set 200";
        QCOMPARE(told(result.models.last().findings, findings), findings);
        QCOMPARE(result.summary, "2 models, 500 data sets, 0 to 11 samples each; emax: no samples; "
                                 "5 more findings");
    }

    /// Data sets of three models that are uneven, repeated, shifted and from other resamples.
    void joinsParts_data()
    {
        const Rows<int> row("firstOfSecondPart");
        for (int first = 0; first < 8; ++first) {
            row(qPrintable(QString::number(first)), first);
        }
    }
    void joinsParts()
    {
        QFETCH(int, firstOfSecondPart);
        const Table good = fits(0, 100);
        const Table other = fits(0, 100, -1, 5);
        const RawResults results{{good, good, good, samples(0, 9), other, {}, fits(0, 99)},
                                 {good, other, other, samples(0, 9, 3), fits(2, 100)},
                                 {good, fits(4, 100), good, {}, other, other, samples(1, 99)}};
        const QVector<Heading> headings =
            headingsOf({pieces(usualHeading), {}, pieces(usualHeading)});
        const QStringList names{"linear", "", "emax"};
        const ImportCheckUp whole = checkUp(results, headings, names, 3, 5);
        CheckUpRun first(headings, names, 3, 5);
        CheckUpRun second = first;
        second.follow(tablesOf(results, firstOfSecondPart - 1));
        for (int dataSet = 0; dataSet < 7; ++dataSet) {
            (dataSet < firstOfSecondPart ? first : second).add(dataSet, tablesOf(results, dataSet));
        }
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << second.counts();
        QVERIFY(first.append(countsIn(bytes)) && !first.append({}));
        const ImportCheckUp joined = first.result();
        QCOMPARE(joined.summary, whole.summary);
        for (int model = 0; model < 3; ++model) {
            QCOMPARE(joined.models.at(model).text, whole.models.at(model).text);
        }
        const SampleSums& sums = joined.models.at(2).samples;
        QCOMPARE((QVector<qint64>{sums.dataSets, sums.fewest, sums.most, sums.samples,
                                  sums.withoutOfv, sums.notConverged, sums.nearBoundary}),
                 (QVector<qint64>{7, 0, 100, 599, 0, 0, 0}));
        for (int byte = 0; byte < bytes.size(); ++byte) {
            QVERIFY(countsIn(bytes.left(byte)).models.isEmpty());
            QByteArray damaged = bytes;
            damaged[byte] = char(0x7f);
            CheckUpRun run(headings, names, 3, 5);
            run.append(countsIn(damaged));
            run.result();
        }
    }

    void summarisesTheGravest()
    {
        const Table one = with(samples(0, 9), 3, 1, 0);
        QCOMPARE(checkUsual({{one}, {with(one, 4, 1, 0)}}).summary,
                 "2 models, 1 data set, 10 samples each; 2 samples of emax did not converge; "
                 "1 more finding");
        const QString summary =
            checkUp({{one}, {samples(1, 9)}}, {2, pieces(usualHeading)}, {"linear", "emax"}, 3, 5)
                .summary;
        QVERIFY2(summary.contains("; linear: ofv is column 4, "), qPrintable(summary));
    }

    void remarksOnInputs_data()
    {
        const Rows<QStringList, QString> row("found", "remarks");
        row("range", checkDoses("0:0.1:0.3"), "");
        row("beyond the end", checkDoses("0:3:10"),
            "The last dose, 12, lies beyond the end of the range, 10.");
        row("falling beyond the end", checkDoses("9:-2:4"), "The last dose, 3, lies*, 4.");
        row("leading away", checkDoses("10:1:0"), "There are no doses./*leads away*");
        row("step of 0", checkDoses("0:0:1"), "There are no doses./*is 0.");
        row("endless range", checkDoses("0:1:inf"), "There are no doses./*more than 100000*");
        row("incomplete range", checkDoses("0:x:"), "There*/*\"0:x:\"*/*start:step:end*");
        row("words in a list", checkDoses("1,x,2,x,1 2"), "Left out, *: \"x\", \"1 2\".");
        row("repeated", checkDoses("1,2,2,2"), "Repeated*: \"2\".");
        row("equal", checkDoses("1,1.0, 1"), "Equal to another dose*: \"1.0\", \"1\".");
        row("level of 100", checkLevels("100,50"), "*reaches the level 100.");
        row("level below 0", checkLevels("-5,50"), "*the level -5, so the lowest*");
        row("share as level", checkLevels("0.5,0.29"), "*1 %: if 0.5 is meant*, write 50.");
        row("one percent", checkLevels("0.5,1"), "");
        row("bound placed", checkBound("-inf", true, -10), "\"-inf\" stands for -10; *");
        row("no bound", checkBound("", false, 10), "A bound that is not given stands for 10; *");
        row("lower bound", checkLowerBoundUsed("-inf", true, -10), "*of -10 and below*");
        row("upper bound", checkUpperBoundUsed("", false, 10), "*above 10 count as*");
        row("interval of nothing", checkInterval(1, 1), "No endpoint can be above 1 and*");
        row("interval of NaN", checkInterval(0, none), "No endpoint*nan.");
        row("column beyond", checkOmegaElement("COL25", 24), "Samples have 24*column 25*");
        row("omega of NaN", checkOmegaElement("nan", 24), "\"nan\" is not a finite*");
        row("column 0", checkOmegaElement("COL0", 24), "Columns are counted from 1*");
        row("no column", checkOmegaElement("col2", 24), "\"col2\" is neither*");
        row("rest of individuals", checkIndividuals(100, 8), "4 of 100*8 processors*");
        row("too few individuals", checkIndividuals(7, 8), "No individual*7 are too few for 8*");
        row("one individual", checkIndividuals(1, 8), "");
        row("nobody", checkIndividuals(0, 8), "No individual is simulated.");
        row("table in part", checkShown(9, 3, 2, 2), "*first 3 of 9 rows and*2 of 2 columns.");
    }
    void remarksOnInputs()
    {
        QFETCH(QStringList, found);
        QFETCH(QString, remarks);
        QCOMPARE(told(found, remarks), remarks);
    }

    void checksCovariances_data()
    {
        const Rows<Table, QString> row("omega", "remarks");
        row("square of 0", {{-1e-300}}, "");
        row("last ETA follows from the others", {{1, 1}, {1, 1}}, "");
        row("covariance too large", {{1, 2}, {2, 1}}, "*endpoints with ETA2 are NaN.");
        row("negative", {{0, 0, 0}, {0, -1, 0}, {0, 0, 1}}, "*ETA2, ETA3 are NaN.");
        row("spoilt below", {{1, 1, 0}, {1, 1, 0}, {0, 0, 1}}, "*with ETA3 are NaN.");
        row("NaN", {{none}}, "*ETA1 are NaN.");
        row("not symmetric", {{1, 0}, {0.5, 1}}, "*not symmetric*");
    }
    void checksCovariances()
    {
        QFETCH(Table, omega);
        QFETCH(QString, remarks);
        QCOMPARE(told(checkCovariance(omega), remarks), remarks);
        const QVector<double> etas = randomNG().multiNormal(omega);
        for (int eta = 0; eta < etas.size(); ++eta) {
            const bool isTold = remarks.contains(QString("ETA%1").arg(eta + 1));
            QCOMPARE(isTold, !std::isfinite(etas.at(eta)));
        }
    }
};

QTEST_APPLESS_MAIN(TestCheckUp)
#include "tst_checkup.moc"
