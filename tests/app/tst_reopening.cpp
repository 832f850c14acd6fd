// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/studywithetas.h"

using Settings = QVector<std::pair<const char*, const char*>>;
Q_DECLARE_METATYPE(Settings)

/// A project that is opened gives the results that were there when it was saved.
class TestReopening : public StudyWithEtas
{
    Q_OBJECT

    void compareDoses() { compareWithTruth("0,1.2\n1,2.4\n0,0.3\n"); }
    /// Compares the window, into which the project was opened, with what was saved.
    void compare(const Results& saved)
    {
        for (const char* bound : {"_3_le_lowerBound", "_3_le_upperBound"}) {
            QTest::keyClick(reach<QLineEdit>(bound), Qt::Key_Return); // a placed one stays
        }
        QCOMPARE(differing(saved, results()), "curve true truth");
        compareDoses(); // those of the project
        QCOMPARE(differing(saved, results()), "curve");
        calculate({toCurve, toDoses});
        compareDoses();
        QCOMPARE(differing(saved, results()), "");
    }

private slots:
    void givesTheSameResults_data()
    {
        const Rows<Settings> row("settings");
        row("averaging", {});
        row("selection by the first OFV", {{"_3_cb_aveORselect", "1"}, {"_3_cb_indOFVone", "0"}});
        row("levels and bounds typed", {{"_4_le_probabilities", "12.5,60"},
                                        {"_3_le_lowerBound", "0.75"},
                                        {"_3_le_upperBound", "1e1"}});
        row("bounds placed", {{"_1_tw_endPoints 0", "0-THETA1*DOSE+ETA1"},
                              {"_1_le_possibleDoses", "0:5:50"},
                              {"_3_le_lowerBound", "low"},
                              {"_3_le_upperBound", "high"}});
        row("ETAs", {{"_1_tw_endPoints 0", "THETA1*DOSE+ETA1*ETA2"},
                     {"_1_tw_etaDefinition 1", "0.3"},
                     {"_1_tw_etaDefinition 0", "COL21"},
                     {"_1_cb_iivEndPoint", "3"}});
        row("weights", {{"_2_tw_weightDefinition 0", "COL22"},
                        {"_2_tw_weightDefinition 1", "COL21"},
                        {"_2_cb_logScale", ""}});
    }
    void givesTheSameResults()
    {
        QFETCH(Settings, settings);
        defineStudy();
        for (const auto& [input, value] : settings) {
            set(input, value);
        }
        calculate({toCurve, toDoses});
        compareDoses();
        const Results saved = results();
        QCOMPARE(saved["summary"].join("").contains("The upper bound stands for 10: "),
                 !QString(QTest::currentDataTag()).contains("typed"));
        save();

        openWindow();
        open();
        user::clickCell(reach<QTableWidget>(endpoints), 0, 0);
        QVERIFY(tip("_1_sb_numSimulations").contains("100 stood here"));
        type("_1_sb_numSimulations", "8");
        QVERIFY(!tip("_1_sb_numSimulations").contains("stood here"));
        compare(saved);

        defineStudy(); // over another analysis
        calculateDoses(1);
        open();
        compare(saved);
    }

    void keepsSimulationModels()
    {
        defineStudy();
        importSimulationModels();
        calculate({toCurve, toDoses, toTruth});
        const Results saved = results();
        save();
        importPairs();
        QVERIFY(tip(toTruth).contains("imported before the current results"));
        QVERIFY(results()["summary"].contains("Results of an earlier import"));
        open();
        QVERIFY(!tip(toTruth).contains("imported before"));
        calculate({toCurve, toDoses, toTruth});
        QCOMPARE(differing(saved, results()), "");
    }
};

QTEST_MAIN(TestReopening)
#include "tst_reopening.moc"
