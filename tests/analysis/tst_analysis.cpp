// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/dosesearch.h"
#include "analysis/numberlist.h"
#include "analysis/probability.h"
#include "analysis/truth.h"
#include "analysis/weights.h"
#include "tests/support/compare.h"
#include "tests/support/rows.h"

using Numbers = QVector<double>;
static const double none = qQNaN();
Q_DECLARE_METATYPE(LevelComparison)

class TestAnalysis : public QObject
{
    Q_OBJECT

private slots:
    void parsesNumberLists_data()
    {
        const Rows<QString, Numbers> row("text", "numbers");
        row("range beyond its end", "0:3:10", {0, 3, 6, 9, 12});
        row("range that leads away", "10:1:0", {});
        row("range too long", "1:1:100001", {});
        row("repeated and equal parts", "3,2,2,1,1.0", {1, 1, 2, 3});
        row("parts that are no numbers", "1,x,,2 ,1e1", {1, 2, 10});
        row("NaN", "nan,5,1", {1, 5, none});
    }
    void parsesNumberLists()
    {
        QFETCH(QString, text);
        QFETCH(Numbers, numbers);
        QVERIFY(almostEqual(parseNumberList(text), numbers, 0));
        QCOMPARE(parseNumberList("1:1:100000").size(), 100000);
    }

    void weighsModels_data()
    {
        const Rows<Table, bool, Numbers, int> row("values", "log", "weights", "selected");
        const double e = std::exp(-1.0);
        row("logarithms", {{-100}, {-101}, {none}}, true, {1 / (1 + e), e / (1 + e), 0}, 0);
        row("first is NaN", {{none}, {-5000}, {-5000}}, true, {0, 0.5, 0.5}, 1);
        row("all are NaN", {{none}, {}}, true, {none, none}, -1);
        row("plain", {{1}, {3}, {}}, false, {0.25, 0.75, 0}, 1);
        row("plain and NaN", {{1}, {none}, {2}}, false, {none, none, none}, 2);
    }
    void weighsModels()
    {
        QFETCH(Table, values); // [model][sample]
        QFETCH(bool, log);
        QFETCH(Numbers, weights);
        QVERIFY(almostEqual(relativeWeights(values, 1, log).first(), weights, 1e-15));
        QTEST(selectedModels(values, 1).first(), "selected");
    }

    void weighsUnevenResults()
    {
        endPoint model;
        model.weightParser.expression = "(0-ofv/2)";
        model.colNumOFV = 1;
        Study study;
        study.endPoints = {model, model};
        study.rawResults = {{{{2}, {4}, {}}}, {{{2}, {4}, {6}, {8}}}, {}};
        QVERIFY(almostEqual(weightValues(study, 0), {{-1, -2, none}, {-1, -2, -3}, {}}));
        QVERIFY(almostEqual(weightValues(study, 1), {{}, {}, {}}));
        QCOMPARE(defaultWeightExpression(parser("THETA2*DOSE/(THETA3+DOSE)")), "(0-2-ofv/2)");
    }

    void selects_data()
    {
        const Rows<Table, Numbers> row("endpoints", "probability"); // [sample][dose]
        row("bounds", {{0.5, 0}, {2, 1}, {0.7, none}, {0.9, 1}}, {75, 50});
        row("sample without a model", {{}, {1, 1, 1}}, {50, 50});
        row("thirds", {{1, 5}, {5, 1}, {5, 1}}, {33.33333333333333, 66.66666666666666});
        // Repeated steps, not a count times a step: a level of 50 is just exceeded.
        row("many steps", Table(500, {1, 1}) + Table(500, {5, 5}), Numbers(2, 50.00000000000044));
    }
    void selects()
    {
        QFETCH(Table, endpoints);
        QFETCH(Numbers, probability);
        QVERIFY(almostEqual(probabilityBySelection(endpoints, 2, {0, 1}), probability, 0));
    }

    void averages_data()
    {
        const Rows<Table, bool, Numbers> row("weights", "individual", "probability");
        row("weights of each sample", {{1, 0}, {0.25, 0.75}}, true, {87.5});
        row("weights of the first for all", {{1, 0}, {0.25, 0.75}}, false, {50});
        row("invalid weight", {{none, 1}}, true, {0});
    }
    void averages()
    {
        QFETCH(Table, weights); // [sample][model]
        QFETCH(bool, individual);
        QFETCH(Numbers, probability);
        const QVector<Table> endpoints{{{0.5}, {2}}, {{}, {1}}}; // [model][sample][dose]
        const Numbers found = probabilityByAveraging(endpoints, weights, individual, 1, {0, 1});
        QVERIFY(almostEqual(found, probability, 0));

        QVERIFY(holdsSelected(endpoints, {0, 1}) && holdsSelected(endpoints, {-1, 0}));
        QVERIFY(!holdsSelected(endpoints, {1, 1}) && !holdsSelected(endpoints, {0, 0, 0}));
        QVERIFY(almostEqual(pickSelected(endpoints, {0, 1, -1}), {{0.5}, {1}, {}}, 0));
    }

    void addsStepsUp_data()
    {
        const Rows<int, Numbers, Numbers> row("samples", "selected", "averaged");
        row("38", 38, {100.00000000000001, 49.99999999999998},
            {99.9999999999998, 49.99999999999996});
        row("142", 142, {99.99999999999997, 50.00000000000009},
            {99.99999999999973, 49.999999999999986});
        row("335", 335, {100.00000000000054, 49.85074626865671},
            {99.99999999999945, 49.850746268656984});
    }
    /// Repeated steps, not a count times a step.
    /// Dose 0 hits in all samples, dose 1 in every other one; for the average in three models.
    void addsStepsUp()
    {
        QFETCH(int, samples);
        Table endpoints(samples, {1, 9});
        for (int sample = 1; sample < samples; sample += 2) {
            endpoints[sample] = {1, 1};
        }
        QTEST(probabilityBySelection(endpoints, 2, {0, 2}), "selected");
        QTEST(probabilityByAveraging(QVector<Table>(3, endpoints),
                                     Table(samples, {1 / 3.0, 1 / 6.0, 0.5}), true, 2, {0, 2}),
              "averaged");
    }

    void searchesDoses_data()
    {
        const Rows<Numbers, Numbers> row("probability", "doses");
        row("dip", {10, 60, 40, 90}, {3, 1, none});
        row("all above", {60, 70, 80, 90}, {0, 0, none});
        row("equal at the end", {10, 20, 30, 50}, {none, 1, none});
        row("NaN", {60, none, 80, 90}, {2, 2, none});
        row("no curve", {}, {0, 0, 0});
        row("curve longer than the doses", {0, 0, 0, 0, 0, 90}, {none, none, none});
    }
    void searchesDoses()
    {
        QFETCH(Numbers, probability);
        QFETCH(Numbers, doses);
        const Numbers levels{50, 10, none};
        QVERIFY(almostEqual(minimumEffectiveDoses(probability, levels, {0, 1, 2, 3}), doses, 0));
    }

    void readsTrueModels_data()
    {
        const Rows<Table, QVector<int>, bool> row("table", "numbers", "isValid");
        row("column", {{1}, {0, 7}, {1}}, {1, 0, 1}, true);
        row("row", {{1.9, -0.5, 0.1}}, {1, 0, 0}, true);
        row("negative", {{0}, {-1}, {1}}, {0, -1, 1}, false);
        row("no such model", {{0, 2, 1}}, {0, 2, 1}, false);
        row("text and huge", {{none, 1e300, 1}}, {-1, -1, 1}, false);
        row("too few", {{0, 1}}, {}, false);
    }
    void readsTrueModels()
    {
        QFETCH(Table, table);
        const TrueModelNumbers read = trueModelNumbers(table, 3, 2);
        QTEST(read.numbers, "numbers");
        QTEST(read.isValid, "isValid");
    }

    void findsTheoreticalMeds_data()
    {
        const Rows<double, Numbers, double> row("given", "endpoints", "med");
        row("between doses", 1.5, {0.2, 0.3, 0.6, 0.7}, 2);
        row("at a dose", 1, {0.2, 0.6, 0.9, 0.95}, 1);
        row("NaN, all on the upper bound", none, {1, 1, 1, 1}, 0);
        row("beyond all", 3.5, {0.2, 0.6, 0.9, 1.2}, none);
        row("dip to the lower bound", 2.5, {0.6, 0.6, 0.5, 0.6}, 3);
        row("no endpoints", 4, {}, none);
    }
    void findsTheoreticalMeds()
    {
        QFETCH(double, given);
        QFETCH(Numbers, endpoints);
        QFETCH(double, med);
        const Numbers doses{0, 1, 2, 3};
        QCOMPARE(roundedUpToDose(given, doses), med);
        QCOMPARE(theoreticalMed(endpoints, doses, {0.5, 1}), med);
    }

    void comparesWithTruth()
    {
        // Level 0: above, equal, below, no estimate; level 1: only a missing truth differs.
        const Table doseChoice{{3, 1}, {2, 2}, {1, 1}, {none, 4}, {9, 9}};
        const QVector<LevelComparison> found = compareWithTruth(doseChoice, {1, 2, 4, none});
        QCOMPARE(found.size(), 2);
        QVERIFY(found.at(0).over == 1 && found.at(0).equal == 1 && found.at(0).under == 2);
        QCOMPARE(found.at(0).meanAbsoluteError, (2 + 3) / 2.0);
        QCOMPARE(found.at(1).under, 2);
        QCOMPARE(found.at(1).meanAbsoluteError, none);
        QVERIFY(compareWithTruth({}, {1}).isEmpty());
        // Nominal counts 8, 5, 3 and 10 of 10; the level of 100 takes no part.
        const QVector<LevelComparison> counts{
            {9, 0, 1, 0}, {2, 2, 6, 0}, {1, 4, 5, 0}, {0, 9, 1, 0}};
        QVERIFY(almostEqual(summariseComparison(counts, {80, 50, 30, 100}),
                            {{1 / 3.0, 0.5}, {2, 1}, {1 / 3.0, 0.5}, {1, 1}, {4, 2}, {1, 1}}));
        QCOMPARE(summariseComparison({}, {50}).at(2).at(1), none); // mean over no level
    }

    void findsNominalRanges_data()
    {
        const Rows<LevelComparison, double, QString> row("counts", "level", "text");
        row("most over", {19, 0, 1, 0}, 80, "12 to 19: ");
        row("too many over", {20, 0, 0, 0}, 80, "12 to 19: over exceeds 19");
        row("fewest at or above", {0, 12, 8, 0}, 80, "12 to 19: ");
        row("too few", {5, 6, 9, 0}, 80, "12 to 19: over or equal falls below 12");
        row("quantile reached exactly", {0, 0, 1, 0}, 2.5, "0 to 0: ");
        row("many", {79752, 0, 20248, 0}, 80, "79752 to 80248: ");
        row("rare", {4, 0, 99996, 0}, 0.001, "0 to 3: over exceeds 3");
        row("no chance", {1, 0, 0, 0}, 100, "");
        row("no data sets", {}, 50, "");
    }
    void findsNominalRanges()
    {
        QFETCH(LevelComparison, counts);
        QFETCH(double, level);
        const auto range = nominalRange(counts, level);
        const QString text = range ? QString("%1 to %2: ").arg(range->lowest).arg(range->highest)
                                         + misfit(counts, *range)
                                   : QString();
        QTEST(text, "text");
    }
};

QTEST_APPLESS_MAIN(TestAnalysis)
#include "tst_analysis.moc"
