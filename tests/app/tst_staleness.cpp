// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/windowtest.h"

/// Marks of results that no longer belong to the inputs beside them.
class TestStaleness : public WindowTest
{
    Q_OBJECT

    const QStringList marked{"_3_pb_calculatePoS", "_3_cp_PoS",       "_4_pb_startCalculation",
                             "_4_tw_doseChoice",   "_4_pb_compTruth", "_5_tw_Summary"};

    /// Two models and data sets, with a curve, doses and their comparison.
    void calculateAll()
    {
        calculateDoses(0);
        compareWithTruth();
    }
    void set(const char* input, const QString& value)
    {
        auto* widget = reach<QWidget>(input);
        if (qobject_cast<QTableWidget*>(widget) != nullptr) {
            edit(input, 0, 0, value);
        } else if (qobject_cast<QComboBox*>(widget) != nullptr) {
            choose(input, value.toInt());
        } else if (qobject_cast<QCheckBox*>(widget) != nullptr) {
            press(input);
        } else {
            type(input, value);
        }
    }
    /// The tooltips of buttons and results, and of buttons whether they are tinted.
    QStringList marks() const
    {
        QStringList texts;
        for (const QString& name : marked) {
            const auto* widget = the<QWidget>(name.toLatin1());
            const QColor face = widget->palette().color(QPalette::Button);
            texts.append(widget->toolTip() + (face == qApp->palette().button().color() ? "" : "!"));
        }
        return texts;
    }
    QString summary() const
    {
        the<QAction>("actionCopySummary")->trigger();
        return QApplication::clipboard()->text();
    }

private slots:
    void init() { openWindow(); }

    void endWithTheChange_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QString>("kind");
        const auto row = [](const char* input, const char* before, const char* after,
                            const char* kind) {
            QTest::newRow(input) << QString(before) << QString(after) << QString(kind);
        };
        row("_1_le_possibleDoses", "0,0.1,2", "0,0.1,3", "doses");
        row("_1_tw_endPoints", "THETA1*DOSE", "THETA1*DOSE*1", "endpoints");
        row("_m1_le_colNumTHETA1", "21", "20", "endpoints");
        row("_2_tw_weightDefinition", "(0-1-ofv/2)", "(0-2-ofv/2)", "weights");
        row("_2_cb_logScale", "", "", "weights");
        row("_m1_le_colNumOFV", "20", "21", "weights");
        row("_3_le_lowerBound", "1.05", "1", "interval");
        row("_3_cb_aveORselect", "0", "1", "choices");
        row("_3_cb_indOFVone", "1", "0", "choices");
        row("_3_cb_dataNumber", "0", "1", "data set");
        row("_4_le_probabilities", "40,60", "40", "levels");
    }
    void endWithTheChange()
    {
        QFETCH(QString, after);
        QFETCH(QString, before);
        QFETCH(QString, kind);
        const char* input = QTest::currentDataTag();
        calculateAll();
        const QStringList fresh = marks();
        QVERIFY2(!fresh.join("").contains('!'), qPrintable(fresh.join("|")));
        set(input, after);
        const QStringList stale = marks();
        for (int i = 0; i < marked.size(); ++i) {
            const bool concerned = kind == "levels" ? i >= 2 : kind != "data set" || i < 2;
            QVERIFY2(stale.at(i).contains("; since changed: " + kind + '.') == concerned,
                     qPrintable(stale.at(i)));
            QCOMPARE(stale.at(i).endsWith('!'), concerned && marked.at(i).contains("_pb_"));
        }
        QVERIFY(summary().contains("Stale, since changed: " + kind + '.'));
        set(input, before);
        QCOMPARE(marks(), fresh);
    }

    void tellOfImportsAndOpen()
    {
        calculateAll();
        const QStringList fresh = marks();
        pressShortcut(Qt::Key_S, files.path("project"));
        importStudy({{{{2, 1}}}, {{{4, 1}}}});
        QVERIFY2(marks().at(1).contains("since changed: results."), qPrintable(marks().at(1)));
        importPairs();
        QCOMPARE(marks(), fresh); // the same numbers as before
        openWindow();
        pressShortcut(Qt::Key_O, files.path("project"));
        QVERIFY2(!marks().join("").contains("since"), qPrintable(marks().join("|")));
        const auto* weights = the<QTableWidget>("_2_tw_relativeWeight");
        QCOMPARE(weights->model()->headerData(1, Qt::Horizontal).toString(), "model 1");
        QVERIFY(!weights->horizontalHeaderItem(1)->toolTip().isEmpty());
        type("_1_le_possibleDoses", "0,1");
        QVERIFY(marks().at(2).contains("The doses, as the project has them, were selected for "));
        // A curve that is drawn while the items are applied shares the definitions.
        user::clickCell(reach<QTableWidget>("_1_tw_endPoints"), 1, 0);
        for (int round = 0; round < 3; ++round) {
            pressShortcut(Qt::Key_O, files.path("project"));
        }
        QCOMPARE(cell("_1_tw_endPoints", 1, 0), "THETA1+DOSE");
    }

    void importsThatAreGivenUp()
    {
        calculateAll();
        for (int model = 0; model < 3; ++model) {
            files.writeRawResults(QString("raw_results_estimation_model%1_data0.csv").arg(model),
                                  {{5, 1}});
        }
        pressAndAnswer("__pb_import", {files.path()}, {}, 2);
        QVERIFY(summary().contains("\nRelative weights\nThe weights were calculated earlier"));
        QVERIFY(summary().contains("\nmodel 2, results: no data set was read\n"));
    }

    void standBelowThePointUnderTheMouse()
    {
        calculateAll();
        type("_1_le_possibleDoses", "0,1");
        auto* plot = reach<QCustomPlot>("_3_cp_PoS");
        QTest::mouseMove(plot, plot->axisRect()->center());
        QTRY_VERIFY(QToolTip::text().startsWith("DOSE: 0.1\nProbability: ")
                    && QToolTip::text().endsWith("; since changed: doses."));
    }

    void followThePalette()
    {
        calculateAll();
        type("_1_le_possibleDoses", "0,1");
        const auto* button = the<QWidget>("_3_pb_calculatePoS");
        const QPalette light = QApplication::palette();
        QApplication::setPalette(QPalette(QColor(53, 53, 53)));
        const QPalette dark = button->palette();
        QApplication::setPalette(light);
        QVERIFY(dark.color(QPalette::Button).lightness() < 128 && marks().first().endsWith('!'));
        type("_1_le_possibleDoses", "0,0.1,2");
        QVERIFY(!marks().first().endsWith('!'));
    }

    void tellHowMuchWasCalculated()
    {
        calculateAll();
        for (const char* button : {"_3_pb_calculatePoS", "_4_pb_startCalculation"}) {
            DialogDriver dialogs;
            dialogs.abortProgressAt(1);
            press(button);
        }
        QVERIFY(marks().at(3).contains("the table holds 1 of 2 data sets."));
        QVERIFY(summary().contains("the table holds 1 of 2 data sets.\n"));
        QVERIFY(marks().at(5).contains("since changed: chosen doses."));
        pressAndAnswer("_4_pb_compTruth", {});
        QVERIFY(marks().at(4).contains("those of an earlier one."));
    }
};

QTEST_MAIN(TestStaleness)
#include "tst_staleness.moc"
