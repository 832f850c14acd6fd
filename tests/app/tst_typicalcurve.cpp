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

/// Types with the keyboard where it is now.
static void typeKeys(const QString& text)
{
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), text);
}

/// A typical curve that takes many seconds, and what a user does meanwhile.
class TestTypicalCurve : public WindowTest
{
    Q_OBJECT

private slots:
    void init()
    {
        openWindow();
        importPairs();
        edit("_1_tw_endPoints", 0, 0, "THETA1*DOSE+ETA1+ETA2");
        edit("_1_tw_etaDefinition", 0, 0, "1");
        edit("_1_tw_etaDefinition", 1, 1, "2");
        type("_1_sb_numSimulations", "10000");
        type(doses, "");
    }

    void isGivenUp_data()
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
        QTest::newRow("by the button") << true << Act([] {
            QTest::mouseClick(visibleDialog()->findChild<QPushButton*>(), Qt::LeftButton);
        }) << longList;
    }
    void isGivenUp()
    {
        QFETCH(bool, waitsForDialog);
        QFETCH(Act, act);
        QFETCH(QString, text);
        auto* edit = reach<QLineEdit>(doses);
        edit->setFocus();
        QTimer timer;
        connect(&timer, &QTimer::timeout, [&] {
            if (visibleDialog() != nullptr || !waitsForDialog) {
                timer.stop();
                QVERIFY((visibleDialog() != nullptr) == waitsForDialog);
                act();
                QVERIFY(edit->text() == longList); // not within the handler
            }
        });
        timer.start(0);
        QApplication::clipboard()->setText(longList);
        const auto before = randomPosition();
        QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
        QVERIFY(!timer.isActive() && visibleDialog() == nullptr);
        QCOMPARE(randomPosition(), before);
        QCOMPARE(the<QCustomPlot>(chart)->graphCount(), 0);
        QVERIFY(the<QCustomPlot>(chart)->toolTip().contains("was given up"));

        QTRY_COMPARE(edit->text(), text);
        if (text != longList) {
            const auto drawn = curve(chart);
            setRandomPosition(*before);
            type(doses, "");
            type(doses, text);
            QVERIFY(drawn.size() > 1);
            QCOMPARE(curve(chart), drawn);
        }
    }
};

QTEST_MAIN(TestTypicalCurve)
#include "tst_typicalcurve.moc"
