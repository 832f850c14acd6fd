// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/randomng.h"
#include "tests/support/windowtest.h"

using Act = std::function<void()>;
Q_DECLARE_METATYPE(Act)

static const char doses[] = "_1_le_possibleDoses";
static const char chart[] = "_1_cp_typicalDRPlot";
static const char headers[] = "Some of the headers for the raw_results files for the simulation "
                              "models do not match with the estimation models.  Please double "
                              "check.";
static const char longList[] = "0:0.01:100";

static QProgressDialog* visibleDialog()
{
    for (QWidget* top : QApplication::topLevelWidgets()) {
        auto* dialog = qobject_cast<QProgressDialog*>(top);
        if (dialog != nullptr && dialog->isVisible()) {
            return dialog;
        }
    }
    return nullptr;
}

static void pressAbort()
{
    QTest::mouseClick(visibleDialog()->findChild<QPushButton*>(), Qt::LeftButton);
}

/// Types with the keyboard where it is now.
static void typeKeys(const QString& text)
{
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), text);
}

/// Calculations that take many seconds, and what a user does meanwhile.
class TestLongCalculations : public WindowTest
{
    Q_OBJECT

private slots:
    void init()
    {
        openWindow();
        importPairs();
        edit("_1_tw_endPoints", 0, 0, "DOSE");
        edit("_1_tw_endPoints", 1, 0, "THETA1*DOSE+ETA1+ETA2");
        edit("_1_tw_etaDefinition", 0, 0, "1");
        edit("_1_tw_etaDefinition", 1, 1, "2");
        type("_1_sb_numSimulations", "10000");
        type(doses, "");
    }

    void curveIsGivenUp_data()
    {
        QTest::addColumn<bool>("waitsForDialog");
        QTest::addColumn<Act>("act");
        QTest::addColumn<QString>("text");

        const Act keys = [] { typeKeys("1,2"); };
        const Act wheel = [this] {
            QWidget* box = the<QSpinBox>("_1_sb_numSimulations");
            QWheelEvent step({5, 5}, box->mapToGlobal(QPoint(5, 5)), {}, {0, -120}, {}, {}, {},
                             false);
            QCoreApplication::sendEvent(box, &step);
            typeKeys("1,2");
        };
        QTest::newRow("by keys that waited") << false << keys << "1,2";
        QTest::newRow("by keys while the dialog is shown") << true << keys << "1,2";
        QTest::newRow("by repeated keys, with one curve for the last") << true << Act([] {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
        }) << "0:0.01:1";
        QTest::newRow("by a step of the wheel") << true << wheel << "1,2";
        QTest::newRow("by the button") << true << Act(pressAbort) << longList;
    }
    void curveIsGivenUp()
    {
        QFETCH(bool, waitsForDialog);
        QFETCH(Act, act);
        QFETCH(QString, text);
        auto* list = reach<QLineEdit>(doses);
        list->setFocus();
        QTimer timer;
        connect(&timer, &QTimer::timeout, [&] {
            if (visibleDialog() != nullptr || !waitsForDialog) {
                timer.stop();
                QVERIFY((visibleDialog() != nullptr) == waitsForDialog);
                act();
                QVERIFY(list->text() == longList); // not within the handler
            }
        });
        timer.start(0);
        QApplication::clipboard()->setText(longList);
        const auto before = randomPosition();
        QTest::keyClick(list, Qt::Key_V, Qt::ControlModifier);
        QVERIFY(!timer.isActive() && visibleDialog() == nullptr);
        QCOMPARE(randomPosition(), before);
        QCOMPARE(the<QCustomPlot>(chart)->graphCount(), 0);
        QVERIFY(the<QCustomPlot>(chart)->toolTip().contains("was given up"));

        QTRY_COMPARE(list->text(), text);
        if (text != longList) {
            const auto drawn = curve(chart);
            setRandomPosition(*before);
            type(doses, "");
            type(doses, text);
            QVERIFY(drawn.size() > 1);
            QCOMPARE(curve(chart), drawn);
        }
    }

    void isGivenUpWithinASample_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("result");
        QTest::addColumn<QString>("remark");

        QTest::newRow("probability") << "_3_pb_calculatePoS"
                                     << "_3_cp_PoS"
                                     << "The calculation was given up: the curve holds 0 of 2 "
                                        "samples.";
        QTest::newRow("doses") << "_4_pb_startCalculation"
                               << "_4_tw_doseChoice"
                               << "The calculation was given up: the table holds 0 of 2 data sets.";
        QTest::newRow("comparison") << "_4_pb_compTruth"
                                    << "_5_tw_Summary"
                                    << "The calculation was given up: 0 of 1 data sets have been "
                                       "given a theoretical MED.";
    }
    void isGivenUpWithinASample()
    {
        QFETCH(QString, button);
        QFETCH(QString, result);
        QFETCH(QString, remark);
        const QString simulated = files.writeRawResults("simulated.csv", {{2, 1}});
        pressAndAnswer("_5_pb_importSimRawRes", {simulated});
        pressAndAnswer("_5_pb_simTrueModel", {files.write("true_models.csv", "1,1\n")}, headers);
        choose("_3_cb_aveORselect", 0);
        type("_4_le_probabilities", "50");
        reach<QWidget>("_2_tw_weightDefinition");
        QTimer timer;
        connect(&timer, &QTimer::timeout, [] {
            if (visibleDialog() != nullptr) {
                pressAbort();
            }
        });
        timer.start(1);
        QApplication::clipboard()->setText(longList);
        QTest::keyClick(reach<QLineEdit>(doses), Qt::Key_V, Qt::ControlModifier);
        reach<QWidget>(qPrintable(button));
        const auto before = randomPosition();
        press(qPrintable(button));
        QCOMPARE(randomPosition(), before);
        QVERIFY(the<QWidget>(qPrintable(result))->toolTip().contains(remark));
    }
};

QTEST_MAIN(TestLongCalculations)
#include "tst_longcalculations.moc"
