// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/studywithetas.h"

const char all[] = "curve doses true truth typical";
const char simulated[] = "curve doses true truth";
const char chosen[] = "curve doses truth";
const char weighed[] = "curve doses truth weights";

/// Name, input, two values of it, the kind of change that marks show, what changes.
static const char* const choices[][6] = {
    {"OFV column", "_m1_le_colNumOFV", "20", "22", "weights", weighed},
    {"THETA1 column", "_m1_le_colNumTHETA1", "21", "22", "endpoints", all},
    {"doses", "_1_le_possibleDoses", "0:0.5:5", "0:0.7:4", "doses", all},
    {"endpoint", "_1_tw_endPoints 0", "THETA1*DOSE+ETA1", "THETA2*DOSE*2+ETA1", "endpoints", all},
    {"other endpoint", "_1_tw_endPoints 1", "THETA1+DOSE*THETA2+ETA1", "THETA2*DOSE+ETA1",
     "endpoints", simulated},
    {"variance", "_1_tw_etaDefinition 0", "0.8", "60", "endpoints", all},
    {"variance of a column", "_1_tw_etaDefinition 0", "0.8", "COL1", "endpoints", all},
    {"population summary", "_1_cb_iivEndPoint", "0", "2", "endpoints", all},
    {"individuals", "_1_sb_numSimulations", "8", "2", "individuals", all},
    {"weight", "_2_tw_weightDefinition 1", "(0-3-ofv/2)", "(0-1-ofv/2)", "weights", weighed},
    {"log scale", "_2_cb_logScale", "", "", "weights", weighed},
    {"data set of weights", "_2_sb_dataNumber", "0", "2", "data set", "weights"},
    {"data set of the curve", "_3_cb_dataNumber", "0", "1", "data set", "curve"},
    {"method", "_3_cb_aveORselect", "0", "1", "choices", chosen},
    {"use of the OFV", "_3_cb_indOFVone", "1", "0", "choices", chosen},
    {"lower bound", "_3_le_lowerBound", "1.2", "1.9", "interval", simulated},
    {"upper bound", "_3_le_upperBound", "inf", "2", "interval", simulated},
    {"levels", "_4_le_probabilities", "5:10:95", "10,60", "levels", "doses truth"},
    {"true model", "_5_tw_trueModelTMED 0", "0", "1", "true models", "true truth"},
};

/// Each input of each page changes the results that depend on it, and no other.
class TestChoices : public StudyWithEtas
{
    Q_OBJECT

    /// The results whose tooltip shows a change of this kind.
    QString marked(const QString& kind) const
    {
        QStringList names;
        for (const auto& [name, widget] : {std::pair("curve", "_3_cp_PoS"),
                                           {"doses", "_4_tw_doseChoice"},
                                           {"true", "_5_tw_Summary"},
                                           {"truth", "_5_tw_Summary"},
                                           {"typical", "_1_cp_typicalDRPlot"},
                                           {"weights", "_2_tw_relativeWeight"}}) {
            const QString text = tip(widget);
            const QString made = text.section("The compared doses", 0, 0); // of true MEDs
            if ((name == QString("true") ? made : text).contains("since changed: " + kind)) {
                names.append(name);
            }
        }
        return names.join(' ');
    }

    Results first; ///< with all inputs as they were before

private slots:
    void initTestCase()
    {
        defineStudy();
        importSimulationModels();
        calculate({toCurve, toDoses, toTruth});
        first = results();
        QCOMPARE(cell("_1_tw_rawResLabels", 0, 20), "\"THETA1\""); // column 21
    }

    void changeTheirResults_data()
    {
        QTest::addColumn<int>("row");
        for (int row = 0; row < int(std::size(choices)); ++row) {
            QTest::newRow(choices[row][0]) << row;
        }
    }
    void changeTheirResults()
    {
        QFETCH(int, row);
        const auto& [name, input, before, after, kind, changes] = choices[row];
        defineStudy();
        importSimulationModels();
        set(input, after);
        results(); // draws both models' curves, whose definitions are up to date then
        calculate({toCurve, toDoses, toTruth});
        const Results expected = results();
        QCOMPARE(differing(first, expected), changes);

        set(input, before);
        press("_4_cb_useCash");
        calculate({toCurve, toDoses, toTruth});
        press("_4_cb_useCash");
        QCOMPARE(differing(first, results()), "");
        // Each by the first calculation after the change.
        for (const auto& [result, button] :
             {std::pair("curve", toCurve), {"doses", toDoses}, {"true", toTruth}}) {
            QCOMPARE(marked(""), ""); // as it was changed back
            set(input, after);
            // The typical curve and weights follow at once.
            const QRegularExpression isRenewed(" ?\\b(typical|weights)");
            QCOMPARE(marked(kind), QString(changes).remove(isRenewed));
            calculate({button});
            QVERIFY(!marked("").contains(result));
            QCOMPARE(results()[result], expected[result]);
            set(input, before);
            calculate({button});
        }
        set(input, after);
        press("_4_cb_useCash");
        const QStringList notCached{"interval", "levels", "data set", "true models"};
        QCOMPARE(tip("_4_cb_useCash").contains("Clear Cash"),
                 !notCached.contains(kind) && name != QString("method"));
        press("_4_cb_useCash");
        calculate({toCurve, toDoses, toTruth});
        QCOMPARE(marked(""), "");
        const Results last = results();
        QCOMPARE(differing(last, expected), "");
        QCOMPARE(last["summary"], expected["summary"]);
    }

    void computeWhatTheCacheLacks()
    {
        openWindow();
        calculateDoses(0);
        edit(weights, 1, 0, "(0-ofv*900)"); // no weight by the first OFV
        choose("_3_cb_indOFVone", 0);
        press("_4_cb_useCash");
        press(toDoses);
        choose("_3_cb_aveORselect", 1);
        choose("_3_cb_indOFVone", 1);
        press(toDoses);
        const QStringList doses = rows("_4_tw_doseChoice");
        press("_4_cb_useCash");
        press(toDoses);
        QCOMPARE(rows("_4_tw_doseChoice"), doses);
        QVERIFY(doses != QStringList({"0.1 nan", "0.1 nan"}));
    }

    void tellWhatWasNotCompared()
    {
        defineStudy();
        importSimulationModels();
        calculate({toDoses});
        type("_1_sb_numSimulations", "2");
        QVERIFY(results()["summary"].contains("Population: Mean of the Population, 8 individuals"));
        DialogDriver dialogs;
        dialogs.abortProgressAt(1);
        calculate({toTruth});
        QVERIFY(tip("_5_tw_Summary").contains("1 of 3 data sets have"));
    }
};

QTEST_MAIN(TestChoices)
#include "tst_choices.moc"
