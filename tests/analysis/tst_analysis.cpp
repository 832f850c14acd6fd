// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/dosesearch.h"
#include "analysis/numberlist.h"
#include "analysis/probability.h"
#include "analysis/truth.h"
#include "analysis/weights.h"
#include "tests/support/compare.h"

#include <QtTest>

using Numbers = QVector<double>;
static const double notANumber = qQNaN();

class TestAnalysis : public QObject
{
    Q_OBJECT

private slots:
    void parsesNumberLists()
    {
        const std::pair<const char*, Numbers> rows[] = {// clang-format off
            {"0:1:4", {0, 1, 2, 3, 4}}, {"0:3:10", {0, 3, 6, 9, 12}}, {"10:1:0", {}}, {"2:-1:0", {0, 1, 2}},
            {"0:0:10", {}}, {"0:1:100000", {}}, {"0:1:inf", {}}, {"0:x:4", {}}, {"1:2", {}},
            {":0::1:2:", {0, 1, 2}}, {"3,1,2", {1, 2, 3}}, {"1,2,2,1.0", {1, 1, 2}}, {"", {}},
            {"1,x,,2 ,1e1", {1, 2, 10}}, {"nan,5,1", {1, 5, notANumber}}};
        // clang-format on

        for (const auto& [text, numbers] : rows) {
            QVERIFY2(almostEqual(parseNumberList(text), numbers, 0), text);
        }
        QCOMPARE(parseNumberList("1:1:100000").size(), 100000);
    }

    void weighsModels()
    {
        const double e = std::exp(-1.0);
        // values [model][sample], on the log scale, weights and selected model of sample 0
        const std::tuple<const char*, Table, bool, Numbers, int> rows[] = {
            // clang-format off
            {"logarithms", {{-100}, {-101}, {notANumber}}, true, {1 / (1 + e), e / (1 + e), 0}, 0},
            {"first is NaN", {{notANumber}, {-5000}, {-5000}}, true, {0, 0.5, 0.5}, 1},
            {"plain with NaN", {{1}, {notANumber}, {2}}, false, {notANumber, notANumber, notANumber}, 2},
            {"plain", {{1}, {3}}, false, {0.25, 0.75}, 1}, {"missing", {{1}, {}}, false, {1, 0}, 0},
            {"all excluded", {{notANumber}, {}}, true, {notANumber, notANumber}, -1},
            {"sum of zero", {{0}, {0}}, false, {notANumber, notANumber}, 0}};
        // clang-format on

        for (const auto& [name, values, logScale, weights, selected] : rows) {
            const Numbers found = relativeWeights(values, 1, logScale).first();
            QVERIFY2(almostEqual(found, weights, 1e-15), name);
            QVERIFY2(selectedModels(values, 1).first() == selected, name);
        }
    }

    void weighsUnevenResults()
    {
        endPoint model;
        model.weightParser.expression = "(0-ofv/2)";
        model.colNumOFV = 1;
        Study study;
        study.endPoints = {model, model};
        study.rawResults = {{{{2}, {4}, {}}}, {{{2}}}, {}};
        QVERIFY(almostEqual(weightValues(study, 0), {{-1, -2, notANumber}, {-1}, {}}, 0));
        QVERIFY(almostEqual(weightValues(study, 1), {{}, {}, {}}));
        study.endPoints[0].weightParser.expression = "ofv*3"; // compiled anew
        QVERIFY(almostEqual(weightValues(study, 0).first(), {6, 12, notANumber}, 0));
        QCOMPARE(defaultWeightExpression(parser("THETA2*DOSE/(THETA3+DOSE)")), "(0-2-ofv/2)");
        QCOMPARE(defaultWeightExpression(parser()), "(0-0-ofv/2)"); // not defined yet
    }

    void findsProbabilities()
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
        std::fill_n(halfHits.begin(), 500, Numbers{5});
        QCOMPARE(probabilityBySelection(halfHits, 1, target).first(), 50.00000000000044);

        const QVector<Table> endpoints{{{0.5}, {2}}, {{}, {1}}}; // [model][sample][dose]
        const Table weights{{1, 0}, {0.25, 0.75}};               // [sample][model]
        const Table invalid{{notANumber, 1}};
        QVERIFY(almostEqual(probabilityByAveraging(endpoints, weights, true, 1, target), {87.5}));
        QVERIFY(almostEqual(probabilityByAveraging(endpoints, weights, false, 1, target), {50}));
        QVERIFY(almostEqual(probabilityByAveraging(endpoints, invalid, true, 1, target), {0}, 0));
        QVERIFY(almostEqual(probabilityByAveraging({}, weights, true, 1, target), {0}, 0));

        // What the cache holds is looked up sample by sample; no model needs nothing.
        QVERIFY(holdsSelected(endpoints, {0, 1}) && holdsSelected(endpoints, {-1, 0}));
        QVERIFY(!holdsSelected(endpoints, {1, 1}) && !holdsSelected(endpoints, {0, 0, 0}));
        QVERIFY(almostEqual(pickSelected(endpoints, {0, 1, -1}), {{0.5}, {1}, {}}, 0));
    }

    void searchesDoses()
    {
        // clang-format off
        const std::tuple<const char*, Numbers, double> rows[] = { // dose of 0, 1, 2, 3, for a level of 50
            {"dip", {10, 60, 40, 90}, 3}, {"all above", {60, 70, 80, 90}, 0}, {"empty curve", {}, 0},
            {"equal", {10, 20, 30, 50}, notANumber}, {"NaN", {60, notANumber, 80, 90}, 2},
            {"longer than the doses", {0, 0, 0, 0, 0, 90}, notANumber}};
        // clang-format on
        for (const auto& [name, probability, dose] : rows) {
            const Numbers found = minimumEffectiveDoses(probability, {50}, {0, 1, 2, 3});
            QVERIFY2(almostEqual(found, {dose}, 0), name);
        }
        const Numbers doses{0, 1, 2, 3};
        const Numbers values{notANumber, 0, 50, 60};
        const Numbers targets{60, 0, notANumber, 50, -1}; // in any order
        for (int curve = 0; curve < 256; ++curve) {
            const Numbers probability{values.at(curve % 4), values.at(curve / 4 % 4),
                                      values.at(curve / 16 % 4), values.at(curve / 64)};
            Numbers expected;
            for (const double target : targets) {
                expected.append(
                    doses.value(minimumEffectiveDoseIndex(probability, target), notANumber));
            }
            QVERIFY(almostEqual(minimumEffectiveDoses(probability, targets, doses), expected, 0));
        }
    }

    void readsTrueModels()
    {
        // tables for three simulations and two models, the numbers, whether they are valid
        // clang-format off
        const std::tuple<const char*, Table, QVector<int>, bool> rows[] = {
            {"column", {{1}, {0, 7}, {1}}, {1, 0, 1}, true}, {"row", {{1.9, -0.5, 0.1}}, {1, 0, 0}, true},
            {"negative", {{0}, {-1}, {1}}, {0, -1, 1}, false}, {"no file", {}, {}, false},
            {"no such model", {{0, 2, 1}}, {0, 2, 1}, false}, {"too few", {{0, 1}}, {}, false},
            {"text and huge", {{notANumber, 1e300, 1}}, {-1, -1, 1}, false},
            {"two columns", {{0, 1}, {0, 1}, {0, 1}}, {}, false}};
        // clang-format on
        for (const auto& [name, table, numbers, isValid] : rows) {
            const TrueModelNumbers read = trueModelNumbers(table, 3, 2);
            QVERIFY2(read.numbers == numbers && read.isValid == isValid, name);
        }
    }

    void findsTheoreticalMeds()
    {
        const Numbers doses{0, 1, 2, 3};
        // true MED of a file, endpoints of the true model for a target (0.5, 1], dose
        const std::tuple<double, Numbers, double> rows[] = {
            {1.5, {0.2, 0.3, 0.6, 0.7}, 2}, {1, {0.2, 0.6, 0.9, 0.95}, 1},
            {-1, {0.6, 0.6, 0.9, 1}, 0},    {3.5, {0.2, 0.6, 0.9, 1.2}, notANumber},
            {2.5, {0.6, 0.6, 0.5, 0.6}, 3}, {notANumber, {1, 1, 1, 1}, 0}};
        for (const auto& [given, endpoints, med] : rows) {
            QVERIFY(almostEqual(roundedUpToDose(given, doses), med, 0));
            QVERIFY(almostEqual(theoreticalMed(endpoints, doses, {0.5, 1}), med, 0));
        }
        QVERIFY(std::isnan(theoreticalMed({}, doses, {0.5, 1})));
    }

    void comparesWithTruth()
    {
        // Level 0: above, equal, below, no estimate; level 1: only a missing truth differs.
        const Table doseChoice{{3, 1}, {2, 2}, {1, 1}, {notANumber, 4}, {9, 9}};
        const QVector<LevelComparison> found = compareWithTruth(doseChoice, {1, 2, 4, notANumber});
        QCOMPARE(found.size(), 2);
        QVERIFY(found.at(0).over == 1 && found.at(0).equal == 1 && found.at(0).under == 2);
        QCOMPARE(found.at(0).meanAbsoluteError, (2 + 3) / 2.0);
        QCOMPARE(found.at(1).under, 2);
        QVERIFY(std::isnan(found.at(1).meanAbsoluteError));
        QVERIFY(std::isnan(compareWithTruth({{1}}, {1}).first().meanAbsoluteError)); // no mismatch
        QVERIFY(compareWithTruth({}, {1}).isEmpty());
        // Nominal counts 8, 5, 3 and 10 of 10; the level of 100 takes no part.
        const QVector<LevelComparison> counts{
            {9, 0, 1, 0}, {2, 2, 6, 0}, {1, 4, 5, 0}, {0, 9, 1, 0}};
        QVERIFY(almostEqual(summariseComparison(counts, {80, 50, 30, 100}),
                            {{1 / 3.0, 0.5}, {2, 1}, {1 / 3.0, 0.5}, {1, 1}, {4, 2}, {1, 1}}));
        QVERIFY(std::isnan(summariseComparison({}, {50}).at(2).at(1))); // mean over no level
    }
};

QTEST_APPLESS_MAIN(TestAnalysis)
#include "tst_analysis.moc"
