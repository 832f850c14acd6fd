// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/analysis/dosesearch.h"
#include "app/analysis/numberlist.h"
#include "app/analysis/probability.h"
#include "app/analysis/truth.h"
#include "app/analysis/weights.h"
#include "tests/support/compare.h"

#include <QtTest>

#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
using Numbers = QVector<double>;

endPoint weightedModel(const QString& weightExpression)
{
    endPoint model;
    model.weightParser.expression = weightExpression;
    model.colNumOFV = 1;
    return model;
}

} // namespace

class TestAnalysis : public QObject
{
    Q_OBJECT

private slots:
    void parsesNumberLists_data();
    void parsesNumberLists();
    void weighsModels_data();
    void weighsModels();
    void weighsUnevenResults();
    void proposesWeights_data();
    void proposesWeights();
    void countsHits();
    void averagesHits();
    void searchesDoses_data();
    void searchesDoses();
    void readsTrueModels_data();
    void readsTrueModels();
    void findsTheoreticalMeds_data();
    void findsTheoreticalMeds();
    void comparesWithTruth();
    void summarisesComparisons();
};

void TestAnalysis::parsesNumberLists_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Numbers>("numbers");
    QTest::newRow("range") << "0:1:4" << Numbers{0, 1, 2, 3, 4};
    QTest::newRow("last beyond the end") << "0:3:10" << Numbers{0, 3, 6, 9, 12};
    QTest::newRow("wrong way") << "10:1:0" << Numbers();
    QTest::newRow("downwards") << "2:-1:0" << Numbers{0, 1, 2};
    QTest::newRow("no step") << "0:0:10" << Numbers();
    QTest::newRow("too long") << "0:1:100000" << Numbers();
    QTest::newRow("infinite") << "0:1:inf" << Numbers();
    QTest::newRow("range with a word") << "0:x:4" << Numbers();
    QTest::newRow("two parts") << "1:2" << Numbers();
    QTest::newRow("empty parts of a range") << ":0::1:2:" << Numbers{0, 1, 2};
    QTest::newRow("list, sorted") << "3,1,2" << Numbers{1, 2, 3};
    QTest::newRow("repeated text counts once") << "1,2,2,1.0" << Numbers{1, 1, 2};
    QTest::newRow("words skipped") << "1,x,,2 ,1e1" << Numbers{1, 2, 10};
    QTest::newRow("NaN last") << "nan,5,1" << Numbers{1, 5, notANumber};
    QTest::newRow("empty") << "" << Numbers();
}

void TestAnalysis::parsesNumberLists()
{
    QFETCH(QString, text);
    QFETCH(Numbers, numbers);
    QVERIFY(almostEqual(parseNumberList(text), numbers, 0));
}

void TestAnalysis::weighsModels_data()
{
    QTest::addColumn<Table>("values"); // [model][sample]
    QTest::addColumn<bool>("logScale");
    QTest::addColumn<Numbers>("weights"); // of sample 0
    QTest::addColumn<int>("selected");
    const double e = std::exp(-1.0);
    QTest::newRow("logarithms") << Table{{-100}, {-101}, {notANumber}} << true
                                << Numbers{1 / (1 + e), e / (1 + e), 0} << 0;
    QTest::newRow("logarithms, first is NaN")
        << Table{{notANumber}, {-5000}, {-5000}} << true << Numbers{0, 0.5, 0.5} << 1;
    QTest::newRow("plain") << Table{{1}, {3}} << false << Numbers{0.25, 0.75} << 1;
    QTest::newRow("plain with NaN") << Table{{1}, {notANumber}, {2}} << false
                                    << Numbers{notANumber, notANumber, notANumber} << 2;
    QTest::newRow("missing sample") << Table{{1}, {}} << false << Numbers{1, 0} << 0;
    QTest::newRow("all excluded") << Table{{notANumber}, {}} << true
                                  << Numbers{notANumber, notANumber} << -1;
    QTest::newRow("sum of zero") << Table{{0}, {0}} << false << Numbers{notANumber, notANumber}
                                 << 0;
}

void TestAnalysis::weighsModels()
{
    QFETCH(Table, values);
    QFETCH(bool, logScale);
    QFETCH(Numbers, weights);
    QVERIFY(almostEqual(relativeWeights(values, 1, logScale).first(), weights, 1e-15));
    QTEST(selectedModels(values, 1).first(), "selected");
}

void TestAnalysis::weighsUnevenResults()
{
    QVector<endPoint> models{weightedModel("(0-ofv/2)"), weightedModel("(0-ofv/2)")};
    const RawResults results{{{{2}, {4}, {}}}, {{{2}}}, {}};
    QVERIFY(almostEqual(weightValues(models, results, 0), {{-1, -2, notANumber}, {-1}, {}}, 0));
    QVERIFY(almostEqual(weightValues(models, results, 1), {{}, {}, {}}));
    models[0].weightParser.expression = "ofv*3"; // compiled anew
    QVERIFY(almostEqual(weightValues(models, results, 0).first(), {6, 12, notANumber}, 0));
}

void TestAnalysis::proposesWeights_data()
{
    QTest::addColumn<QString>("endpoint");
    QTest::addColumn<QString>("weight");
    QTest::newRow("two parameters") << "THETA2*DOSE/(THETA3+DOSE)"
                                    << "(0-2-ofv/2)";
    QTest::newRow("not defined yet") << ""
                                     << "(0-0-ofv/2)";
}

void TestAnalysis::proposesWeights()
{
    QFETCH(QString, endpoint);
    QTEST(defaultWeightExpression(parser(endpoint)), "weight");
}

void TestAnalysis::countsHits()
{
    const TargetInterval target{0, 1};
    QVERIFY(almostEqual(
        probabilityBySelection({{0.5, 0}, {2, 1}, {0.7, notANumber}, {0.9, 1}}, 2, target),
        {75, 50}, 0));
    // A sample without a model counts; an entry longer or shorter than the doses is safe.
    QVERIFY(almostEqual(probabilityBySelection({{}, {1, 1, 1}}, 2, target), {50, 50}, 0));
    QVERIFY(almostEqual(probabilityBySelection({}, 2, target), {0, 0}, 0));
    // Repeated steps, not a count times a step: a level of 50 is just exceeded.
    Table halfHits(1000, {0.5});
    for (int sample = 0; sample < 500; ++sample) {
        halfHits[sample] = {5};
    }
    QCOMPARE(probabilityBySelection(halfHits, 1, target).first(), 50.00000000000044);
}

void TestAnalysis::averagesHits()
{
    const TargetInterval target{0, 1};
    const QVector<Table> endpoints{{{0.5}, {2}}, {{}, {1}}}; // [model][sample][dose]
    const Table weights{{1, 0}, {0.25, 0.75}};               // [sample][model]
    QVERIFY(almostEqual(probabilityByAveraging(endpoints, weights, true, 1, target), {87.5}));
    QVERIFY(almostEqual(probabilityByAveraging(endpoints, weights, false, 1, target), {50}));
    QVERIFY(
        almostEqual(probabilityByAveraging(endpoints, {{notANumber, 1}}, true, 1, target), {0}, 0));
    QVERIFY(almostEqual(probabilityByAveraging({}, weights, true, 1, target), {0}, 0));
}

void TestAnalysis::searchesDoses_data()
{
    QTest::addColumn<Numbers>("probability");
    QTest::addColumn<double>("target");
    QTest::addColumn<double>("dose"); // of 0, 1, 2, 3
    QTest::newRow("dip disqualifies") << Numbers{10, 60, 40, 90} << 50.0 << 3.0;
    QTest::newRow("all above") << Numbers{60, 70, 80, 90} << 50.0 << 0.0;
    QTest::newRow("equal is not above") << Numbers{10, 20, 30, 50} << 50.0 << notANumber;
    QTest::newRow("NaN is not above") << Numbers{60, notANumber, 80, 90} << 50.0 << 2.0;
    QTest::newRow("empty curve") << Numbers() << 50.0 << 0.0;
    QTest::newRow("longer than the doses") << Numbers{0, 0, 0, 0, 0, 90} << 50.0 << notANumber;
}

void TestAnalysis::searchesDoses()
{
    QFETCH(Numbers, probability);
    QFETCH(double, target);
    QFETCH(double, dose);
    QVERIFY(almostEqual(minimumEffectiveDoses(probability, {target}, {0, 1, 2, 3}), {dose}, 0));
}

void TestAnalysis::readsTrueModels_data()
{
    QTest::addColumn<Table>("table"); // for three simulations and two models
    QTest::addColumn<QVector<int>>("numbers");
    QTest::addColumn<bool>("valid");
    using Integers = QVector<int>;
    QTest::newRow("column") << Table{{0}, {1}, {1}} << Integers{0, 1, 1} << true;
    QTest::newRow("row") << Table{{0, 1, 1}} << Integers{0, 1, 1} << true;
    QTest::newRow("column, more in later rows")
        << Table{{1}, {0, 7}, {1}} << Integers{1, 0, 1} << true;
    QTest::newRow("fractions are cut") << Table{{1.9, -0.5, 0.1}} << Integers{1, 0, 0} << true;
    QTest::newRow("negative") << Table{{0}, {-1}, {1}} << Integers{0, -1, 1} << false;
    QTest::newRow("no such model") << Table{{0, 2, 1}} << Integers{0, 2, 1} << false;
    QTest::newRow("text and huge") << Table{{notANumber, 1e300, 1}} << Integers{-1, -1, 1} << false;
    QTest::newRow("too few") << Table{{0, 1}} << Integers() << false;
    QTest::newRow("two columns") << Table{{0, 1}, {0, 1}, {0, 1}} << Integers() << false;
    QTest::newRow("no file") << Table() << Integers() << false;
}

void TestAnalysis::readsTrueModels()
{
    QFETCH(Table, table);
    const TrueModelNumbers read = trueModelNumbers(table, 3, 2);
    QTEST(read.numbers, "numbers");
    QTEST(read.isValid, "valid");
}

void TestAnalysis::findsTheoreticalMeds_data()
{
    QTest::addColumn<double>("given");      // true MED of a file
    QTest::addColumn<Numbers>("endpoints"); // of the true model, target (0.5, 1]
    QTest::addColumn<double>("med");
    QTest::newRow("between doses") << 1.5 << Numbers{0.2, 0.3, 0.6, 0.7} << 2.0;
    QTest::newRow("at a dose") << 1.0 << Numbers{0.2, 0.6, 0.9, 0.95} << 1.0;
    QTest::newRow("none") << 3.5 << Numbers{0.2, 0.6, 0.9, 1.2} << notANumber;
    QTest::newRow("all") << -1.0 << Numbers{0.6, 0.6, 0.9, 1} << 0.0;
    QTest::newRow("undefined") << notANumber << Numbers{1, 1, 1, 1} << 0.0;
    QTest::newRow("dip") << 2.5 << Numbers{0.6, 0.6, 0.5, 0.6} << 3.0;
}

void TestAnalysis::findsTheoreticalMeds()
{
    QFETCH(double, given);
    QFETCH(Numbers, endpoints);
    QFETCH(double, med);
    const Numbers doses{0, 1, 2, 3};
    QVERIFY(almostEqual(roundedUpToDose(given, doses), med, 0));
    QVERIFY(almostEqual(theoreticalMed(endpoints, doses, {0.5, 1}), med, 0));
    QVERIFY(std::isnan(theoreticalMed({}, doses, {0.5, 1})));
}

void TestAnalysis::comparesWithTruth()
{
    // Level 0: above, equal, below, no estimate; level 1: only a missing truth differs.
    const Table doseChoice{{3, 1}, {2, 2}, {1, 1}, {notANumber, 4}, {9, 9}};
    const QVector<LevelComparison> found = compareWithTruth(doseChoice, {1, 2, 4, notANumber});
    QCOMPARE(found.size(), 2);
    QCOMPARE(found.at(0).over, 1);
    QCOMPARE(found.at(0).equal, 1);
    QCOMPARE(found.at(0).under, 2);
    QCOMPARE(found.at(0).meanAbsoluteError, (2 + 3) / 2.0);
    QCOMPARE(found.at(1).under, 2);
    QVERIFY(std::isnan(found.at(1).meanAbsoluteError));
    QVERIFY(std::isnan(compareWithTruth({{1}}, {1}).first().meanAbsoluteError)); // no mismatch
    QVERIFY(compareWithTruth({}, {1}).isEmpty());
}

void TestAnalysis::summarisesComparisons()
{
    const auto counts = [](int over, int equal, int under) {
        LevelComparison comparison;
        comparison.over = over;
        comparison.equal = equal;
        comparison.under = under;
        return comparison;
    };
    // Nominal counts 8, 5, 3 and 10 of 10; the level of 100 takes no part.
    QVERIFY(almostEqual(
        summariseComparison({counts(9, 0, 1), counts(2, 2, 6), counts(1, 4, 5), counts(0, 9, 1)},
                            {80, 50, 30, 100}),
        {{1 / 3.0, 0.5}, {2, 1}, {1 / 3.0, 0.5}, {1, 1}, {4, 2}, {1, 1}}));
    QVERIFY(almostEqual(summariseComparison({}, {50}), {{notANumber, notANumber},
                                                        {notANumber, notANumber},
                                                        {notANumber, notANumber},
                                                        {0, 0},
                                                        {0, 0},
                                                        {0, 0}}));
}

QTEST_APPLESS_MAIN(TestAnalysis)
#include "tst_analysis.moc"
