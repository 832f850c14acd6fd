// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/randomng.h"
#include "tests/support/projectbytes.h"
#include "tests/support/windowtest.h"

/// What the window tells of findings, beside the checks themselves.
class TestFindings : public WindowTest
{
    Q_OBJECT

    QString status() const { return the<QStatusBar>("statusBar")->currentMessage(); }
    QString tipOf(const char* table, int row, int column = 0) const
    {
        return the<QTableWidget>(table)->item(row, column)->toolTip();
    }
    bool isTinted(const char* table, int row, int column = 0) const
    {
        return the<QTableWidget>(table)->item(row, column)->data(Qt::BackgroundRole).isValid();
    }

private slots:
    void init() { openWindow(); }

    void formulas()
    {
        importStudy({{{{2, 1}}}, {{{4, 1}}}});
        define("0-THETA1*DOSE", "THETA1+ETA1*DOSE", "0,1,2", "1.5");
        for (const auto& [table, row, wrong, piece, right] :
             {std::tuple{"_1_tw_endPoints", 0, "-THETA1", "(0-x)", "(0-THETA1)"},
              {"_1_tw_endPoints", 0, "0+THETA2", "THETA2", "(THETA1)"}, // beyond the row
              {"_1_tw_endPoints", 1, "<b>(1)", "\"<b>(\"", "THETA1+ETA1"},
              {"_2_tw_weightDefinition", 1, "ofv+THETA1", "THETA1", "(ofv)"}}) {
            edit(table, row, 0, wrong);
            QVERIFY2(tipOf(table, row).contains(QString(piece).toHtmlEscaped()), wrong);
            QVERIFY2(isTinted(table, row), wrong);
            QVERIFY2(status().contains(piece), qPrintable(status()));
            edit(table, row, 0, right);
            QVERIFY2(tipOf(table, row).isEmpty() && !isTinted(table, row), right);
            QVERIFY2(!status().contains(piece), qPrintable(status()));
        }
        // Columns of the results count from where the settings say, as long as there are any.
        type("_m1_le_colNumTHETA1", "22");
        QVERIFY(tipOf("_1_tw_endPoints", 0).contains("THETA1"));
        pressAndAnswer("__pb_import", {StudyFiles().path()}, notFound);
        QVERIFY(tipOf("_1_tw_endPoints", 0).isEmpty());
    }

    void findingsHaveNoEffect()
    {
        importStudy({{{{2, 1}}}, {{{4, 1}}}});
        define("THETA1*DOSE", "THETA1+ETA1*DOSE", "0,1,2", "1.5");
        user::clickCell(reach<QTableWidget>("_1_tw_endPoints"), 1, 0);
        int curves = 0;
        connect(the<QCustomPlot>("_1_cp_typicalDRPlot"), &QCustomPlot::afterReplot,
                [&curves] { ++curves; });
        const auto effects = [&](const char* table, const char* formula) {
            setRandomPosition(1);
            curves = 0;
            edit(table, 1, 0, formula);
            return std::pair(curves, randomPosition());
        };
        QCOMPARE(effects("_1_tw_endPoints", "-ETA1"), effects("_1_tw_endPoints", "(0-ETA1)"));
        QCOMPARE(effects("_2_tw_weightDefinition", "-ofv"),
                 effects("_2_tw_weightDefinition", "(0-ofv)"));
    }

    void inputs()
    {
        importStudy({{{{2, 1}, {2, -1}}}});
        edit("_1_tw_endPoints", 0, 0, "ETA1"); // shows the number of individuals
        const QByteArray divisible = QByteArray::number(2 * QThread::idealThreadCount());
        const QByteArray odd = QByteArray::number(2 * QThread::idealThreadCount() + 1);
        for (const auto& [input, wrong, piece, right] :
             {std::tuple{"_1_le_possibleDoses", "0,x,2", "x", "0,1,2"},
              {"_4_le_probabilities", "50,120", "120", "50"},
              {"_3_le_lowerBound", "", "-10", "1"},
              {"_3_le_upperBound", "0.5", "", "2"},
              {"_1_sb_numSimulations", odd.constData(), "", divisible.constData()}}) {
            type(input, right);
            const QWidget* widget = the<QWidget>(input);
            QCOMPARE(widget->toolTip(), widget->accessibleDescription());
            const QColor plain = widget->palette().base().color();
            if (QThread::idealThreadCount() == 1 && wrong == odd) {
                continue; // which divides everything
            }
            type(input, wrong);
            QVERIFY2(widget->toolTip().contains(piece), qPrintable(widget->toolTip()));
            QVERIFY2(widget->toolTip() != widget->accessibleDescription(), input);
            QVERIFY(widget->palette().base().color() != plain);
            QCOMPARE(status(), widget->toolTip().section('\n', 0, 0));
            type(input, right);
            QCOMPARE(widget->palette().base().color(), plain);
        }
        auto* bound = reach<QLineEdit>("_3_le_upperBound");
        bound->setFocus();
        bound->selectAll();
        QTest::keyClicks(bound, "abc"); // not taken over yet
        QVERIFY2(status().contains("\"abc\" stands for 10"), qPrintable(status()));
        const char omega[] = "_1_tw_etaDefinition"; // of 21 columns; "abc" is not taken over
        for (const auto& [text, piece] :
             {std::pair("COL30", "30"), {"abc", "abc"}, {"-1", "ETA1"}}) {
            edit(omega, 0, 0, text);
            QVERIFY2(status().contains(piece), qPrintable(status()));
            QVERIFY2(isTinted(omega, 0) && tipOf(omega, 0).contains(piece), text);
        }
        edit(omega, 0, 0, "1");
        QVERIFY(!isTinted(omega, 0));
        edit(omega, 0, 0, "COL21"); // 1, then -1
        the<QTableWidget>(omega)->setCurrentCell(-1, -1);
        const QString tip = tipOf(omega, 0); // whatever cell is current
        QVERIFY2(tip.startsWith("In 1 of the first 2 samples"), qPrintable(tip));
    }

    void resultsAndColumns()
    {
        QByteArray lines[] = {"model,minimization_successful,\"OMEGA(2,1)\",ofv\n", "", "", ""};
        for (int sample = 0; sample <= 100; ++sample) {
            lines[1] += QByteArray::number(sample) + (sample < 30 ? ",0" : ",1") + ",7.5,3\n";
        }
        pressAndAnswer("__pb_importFbF",
                       {files.write("raw_results_emax.csv", lines[0] + lines[1]),
                        files.writeRawResults("raw_results_linear.csv", {{7, 1}, {7, 3}})});
        QVERIFY2(status().startsWith("2 models, 1 data set"), qPrintable(status()));
        auto* bar = the<QStatusBar>("statusBar");
        QVERIFY2(bar->toolTip().contains("\nemax: 30 of 101"), qPrintable(bar->toolTip()));
        QHelpEvent hover(QEvent::ToolTip, {}, {});
        QApplication::sendEvent(bar, &hover);
        QVERIFY(bar->toolTip().contains("emax, endpoint: There is no endpoint expression"));
        reach<QWidget>("_2_tw_weightDefinition");
        for (QTableWidgetItem* name :
             {the<QTableWidget>("_1_tw_endPoints")->verticalHeaderItem(0),
              the<QTableWidget>("_2_tw_weightDefinition")->verticalHeaderItem(0),
              the<QTableWidget>("_2_tw_relativeWeight")->horizontalHeaderItem(0)}) {
            QVERIFY2(name->toolTip().contains("30"), qPrintable(name->toolTip()));
            QVERIFY(name->data(Qt::BackgroundRole).isValid());
        }
        QCOMPARE(the<QWidget>("_0_sb_model")->toolTip(),
                 the<QTableWidget>("_1_tw_endPoints")->verticalHeaderItem(0)->toolTip());
        // The third and fourth piece of the heading are one name; ofv stands in column 4.
        const QTableWidgetItem* drifted =
            the<QTableWidget>("_0_tw_RawResults")->horizontalHeaderItem(3);
        QCOMPARE(drifted->text(), "1)\"");
        QVERIFY2(drifted->toolTip().contains("COL4") && drifted->toolTip().contains("ofv"),
                 qPrintable(drifted->toolTip()));
        user::clickCell(reach<QTableWidget>("_1_tw_endPoints"), 0, 0);
        QVERIFY(tipOf("_1_tw_rawResLabels", 0, 2).contains("OMEGA(2,1)"));
        for (const int column : {2, 0}) {
            user::clickCell(the<QTableWidget>("_1_tw_rawResLabels"), 0, column);
            QCOMPARE(status(), tipOf("_1_tw_rawResLabels", 0, column));
        }
        QStatusTipEvent ofMenu(""); // as a menu sends it
        QApplication::sendEvent(window.get(), &ofMenu);
        QCOMPARE(status(), tipOf("_1_tw_rawResLabels", 0));

        edit("_2_tw_weightDefinition", 0, 0, "1");
        edit("_2_tw_weightDefinition", 1, 0, "2");
        QCOMPARE(tipOf("_2_tw_relativeWeight", 0, 0), "");
        user::clickCell(the<QTableWidget>("_2_tw_relativeWeight"), 0, 1);
        QCOMPARE(status(), tipOf("_2_tw_relativeWeight", 0, 1));
        QVERIFY(!status().isEmpty());
    }

    void cacheThatNoLongerFits()
    {
        importStudy({{{{2, 1}}}, {{{4, 1}}}});
        define("THETA1*DOSE", "THETA1", "0,1,2", "1.5");
        press("_4_cb_useCash");
        const QWidget* box = the<QWidget>("_4_cb_useCash");
        const QString help = box->accessibleDescription();
        for (const int method : {0, 1}) {
            choose("_3_cb_aveORselect", method);
            edit("_2_tw_weightDefinition", 1, 0, ""); // averaging leaves the model out
            press("_4_pb_clearCash");
            press("_4_pb_startCalculation");
            QCOMPARE(box->toolTip(), help);
            edit("_2_tw_weightDefinition", 1, 0, "(ofv)");
            reach<QWidget>("_4_cb_useCash");
            QVERIFY2((box->toolTip() == help) == (method == 1), qPrintable(box->toolTip()));
            type("_1_le_possibleDoses", QString("0,%1").arg(method + 1));
            reach<QWidget>("_4_cb_useCash");
            QVERIFY(box->toolTip() != help);
        }
    }

    void definitionsThatLookForgotten()
    {
        const auto tip = [this](const char* widget) { return the<QWidget>(widget)->toolTip(); };
        const auto write = [this](const char* name, double theta) {
            return files.writeRawResults(name, {{2, theta}, {2, theta}});
        };
        const QStringList paths{write("raw_results_b.csv", 1), write("raw_results_c.csv", 2)};
        pressAndAnswer("__pb_importFbF", paths);
        user::clickCell(reach<QTableWidget>("_1_tw_endPoints"), 1, 0);
        QVERIFY2(status().contains("no endpoint expression"), qPrintable(status()));
        for (const char* widget :
             {"_3_pb_calculatePoS", "_4_pb_startCalculation", "_2_tw_weightDefinition"}) {
            QVERIFY2(tip(widget).contains("every probability will be 0"), widget);
        }
        reach<QWidget>("_2_tw_weightDefinition");
        QVERIFY(!tip("_2_tw_weightDefinition").contains("probability will be 0"));
        QVERIFY(tip("_3_pb_calculatePoS").contains("endpoint")); // which b and c still lack
        edit("_1_tw_endPoints", 0, 0, "THETA1*DOSE+ETA1");
        edit("_1_tw_endPoints", 1, 0, "THETA1+DOSE");
        QVERIFY2(tipOf("_2_tw_weightDefinition", 1).contains("K = 0"),
                 qPrintable(tipOf("_2_tw_weightDefinition", 1)));
        edit("_2_tw_weightDefinition", 1, 0, "(0-9-ofv/2)"); // another K of the user's own
        QVERIFY(!isTinted("_2_tw_weightDefinition", 1));
        choose("_3_cb_aveORselect", 0);
        edit("_2_tw_weightDefinition", 1, 0, "exp((0-ofv)/2)");
        QVERIFY(tipOf("_2_tw_weightDefinition", 1).contains("log"));
        press("_2_cb_logScale");
        QVERIFY(!isTinted("_2_tw_weightDefinition", 1));
        edit("_2_tw_weightDefinition", 0, 0, "ofv/0*0");
        QVERIFY(tip("_3_pb_calculatePoS").contains("no sample has a weight", Qt::CaseInsensitive));
        user::clickCell(reach<QTableWidget>("_1_tw_endPoints"), 0, 0);
        QVERIFY(tipOf("_1_tw_etaDefinition", 0).contains("ETA1")); // of variance 0

        // A model in front of the others shifts their texts.
        pressAndAnswer("__pb_importFbF", QStringList(write("raw_results_a.csv", 3)) + paths);
        for (const char* table : {"_1_tw_endPoints", "_2_tw_weightDefinition"}) {
            QVERIFY(tipOf(table, 1).contains("Typed for c, now stands at b."));
        }
        edit("_1_tw_endPoints", 1, 0, "THETA1-DOSE");
        QVERIFY(!isTinted("_1_tw_endPoints", 1));
        the<QAction>("actionCopyFindings")->trigger();
        QVERIFY(QApplication::clipboard()->text().contains("\na, endpoint: Typed for b, now"));
        pressAndAnswer("__pb_importFbF", paths);
        QVERIFY(!tipOf("_1_tw_endPoints", 0).contains("Typed for"));

        pressShortcut(Qt::Key_S, files.path("project"));
        pressShortcut(Qt::Key_O, files.path("project"));
        QVERIFY(tip("_1_sb_numSimulations").contains("project"));
    }

    void dataSetsAndSimulationsOfOtherStudies()
    {
        const auto tip = [this](const char* widget) { return the<QWidget>(widget)->toolTip(); };
        importStudy({{{{2, 1}}}, {{{4, 1}}}});
        pressAndAnswer("_5_pb_importSimRawRes", {files.writeRawResults("sim%1.csv", {{0, 1}})});
        QVERIFY(!tip("_4_pb_compTruth").contains("sim%1.csv"));
        ProjectItems items;
        items.rawResults = {{{{1}}}, {}};
        items.rawResultsHeaders = {{"a"}, {"a"}};
        files.write("project", ProjectBytes(items).bytes);
        pressShortcut(Qt::Key_O, files.path("project"));
        QVERIFY(tip("_4_pb_compTruth").contains("sim%1.csv"));
        type("_0_sb_model", "1");
        for (const char* widget : {"_0_sb_data", "_3_cb_dataNumber", "_4_pb_startCalculation"}) {
            QVERIFY2(tip(widget).contains("Page \"0\""), qPrintable(tip(widget)));
        }
    }

    void everythingHasANameAndCanBeReached()
    {
        importStudy({{{{2, 1}}}, {{{4, 1}}}});
        define("THETA1*DOSE", "THETA1+ETA1", "0,1,2", "1.5");
        user::clickCell(reach<QTableWidget>("_1_tw_endPoints"), 1, 0);
        const QList<QWidget*> widgets = window->findChildren<QWidget*>();
        for (QWidget* widget : widgets) {
            const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
            const bool isOurs =
                !widget->objectName().isEmpty() && !widget->objectName().startsWith("qt_");
            QVERIFY2(!isOurs || !spoken->text(QAccessible::Name).isEmpty(),
                     qPrintable(widget->objectName()));
        }
        for (int page = 0; page < 7; ++page) {
            user::showPage(*window, page);
            QSet<const QWidget*> reached;
            for (int step = 0; step < 60; ++step) {
                QWidget* focus = QApplication::focusWidget();
                QTest::keyClick(focus ? focus : window.get(), Qt::Key_Tab);
                reached.insert(QApplication::focusWidget());
            }
            for (const QWidget* widget : widgets) {
                const bool isInput = !widget->objectName().isEmpty() && widget->isVisible()
                                     && widget->isEnabled() && widget->focusPolicy() != Qt::NoFocus
                                     && widget->focusProxy() == nullptr
                                     && widget->objectName() != "qt_spinbox_lineedit";
                QVERIFY2(!isInput || reached.contains(widget), qPrintable(widget->objectName()));
            }
        }
    }
};

QTEST_MAIN(TestFindings)
#include "tst_findings.moc"
