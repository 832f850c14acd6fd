// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/randomng.h"
#include "tests/support/windowtest.h"

using Act = std::function<void()>;
Q_DECLARE_METATYPE(Act)

static const char doses[] = "_1_le_possibleDoses";
static const char chart[] = "_1_cp_typicalDRPlot";
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
        edit(endpoints, 0, 0, "DOSE");
        edit(endpoints, 1, 0, "THETA1*DOSE+ETA1+ETA2");
        edit(omega, 0, 0, "1");
        edit(omega, 1, 1, "2");
        type("_1_sb_numSimulations", "10000");
        type(doses, "");
    }

    void curveIsGivenUp_data()
    {
        const Rows<bool, Act, QString> row("waitsForDialog", "act", "text");
        const Act keys = [] { typeKeys("1,2"); };
        const Act wheel = [this] {
            QWidget* box = the<QSpinBox>("_1_sb_numSimulations");
            QWheelEvent step({5, 5}, box->mapToGlobal(QPoint(5, 5)), {}, {0, -120}, {}, {}, {},
                             false);
            QCoreApplication::sendEvent(box, &step);
            typeKeys("1,2");
        };
        const Act repeated = [] {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
        };
        row("by keys that waited", false, keys, "1,2");
        row("by keys while the dialog is shown", true, keys, "1,2");
        row("by repeated keys, with one curve for the last", true, repeated, "0:0.01:1");
        row("by a step of the wheel", true, wheel, "1,2");
        row("by the button", true, pressAbort, longList);
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
        QVERIFY(tip(chart).contains("was aborted"));

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
        const Rows<QByteArray, QByteArray, QString> row("button", "result", "remark");
        row("probability", toCurve, "_3_cp_PoS", "the curve holds 0 of 2 samples.");
        row("doses", toDoses, "_4_tw_doseChoice", "the table holds 0 of 2 data sets.");
        row("comparison", toTruth, "_5_tw_Summary", "0 of 1 data sets have a theoretical MED.");
    }
    void isGivenUpWithinASample()
    {
        QFETCH(QByteArray, button);
        QFETCH(QByteArray, result);
        QFETCH(QString, remark);
        const QString simulated = files.writeRawResults("simulated.csv", {{2, 1}});
        pressAndAnswer("_5_pb_importSimRawRes", {simulated});
        pressAndAnswer("_5_pb_simTrueModel", {files.write("true_models.csv", "1,1\n")},
                       otherHeaders);
        choose("_3_cb_aveORselect", 0);
        type("_4_le_probabilities", "50");
        reach<QWidget>(weights);
        QTimer timer;
        connect(&timer, &QTimer::timeout, [] {
            if (visibleDialog() != nullptr) {
                pressAbort();
            }
        });
        timer.start(1);
        QApplication::clipboard()->setText(longList);
        QTest::keyClick(reach<QLineEdit>(doses), Qt::Key_V, Qt::ControlModifier);
        reach<QWidget>(button);
        const auto before = randomPosition();
        press(button);
        QCOMPARE(randomPosition(), before);
        QVERIFY(tip(result).contains("The calculation was aborted: " + remark));
    }
};

QTEST_MAIN(TestLongCalculations)
#include "tst_longcalculations.moc"
