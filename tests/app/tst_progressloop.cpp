// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/widgets/progressloop.h"
#include "tests/support/windowtest.h"

class TestProgressLoop : public WindowTest
{
    Q_OBJECT

private slots:
    void estimatesTheRemainingTime_data()
    {
        const Rows<int, qint64, qint64, QString> row("steps", "lastStep", "now", "text");
        row("no step of 10 yet", 0, 500, 900, "");
        row("some time after a step", 1, 1000, 5000, "About 5 s left");
        row("longer than estimated", 1, 1000, 99000, "About 1 s left");
        row("minutes", 5, 65000, 65000, "About 1 min 5 s left");
        row("hours", 1, 460000, 460000, "About 1 h 9 min left");
    }
    void estimatesTheRemainingTime()
    {
        QFETCH(int, steps);
        QFETCH(qint64, lastStep);
        QFETCH(qint64, now);
        RemainingTime estimate;
        estimate.update(steps, lastStep);
        estimate.update(steps, now);
        const auto remaining = estimate.at(now, 10);
        QTEST(remaining ? remainingTimeText(*remaining) : QString(), "text");
    }

    void tellsTheRemainingTime()
    {
        openWindow();
        the<QStatusBar>("statusBar")->showMessage("before");
        {
            ProgressLoop loop(window.get(), "Calculating...", "Abort", 1000000);
            QTRY_VERIFY(loop.advance(500) && loop.advance(501) && status().startsWith("About "));
        }
        QCOMPARE(status(), "before");
    }

    void comesIntoBeingWhenNeeded()
    {
        openWindow();
        ProgressLoop loop(window.get(), "Importing...", "Abort", 1000,
                          ProgressLoop::Construction::WhenNeeded);
        const auto dialog = [this] { return window->findChild<QProgressDialog*>(); };
        QElapsedTimer time;
        time.start();
        QVERIFY(loop.advance(1) && loop.poll() && !dialog());
        QTRY_VERIFY(time.elapsed() > 500);
        QVERIFY(loop.advance(1000) && !dialog()); // not for the blink of an eye at the end
        QVERIFY(loop.advance(2) && dialog()->isVisible());
        QCOMPARE(dialog()->value(), 2);
        dialog()->cancel();
        QVERIFY(!loop.advance(3) && !loop.isGivenUp());
    }

    void isGivenUpWithTheWindow()
    {
        openWindow();
        ProgressLoop loop(window.get(), "Calculating...", "Abort", 1000000);
        QTRY_VERIFY(loop.advance(500) && window->findChild<QProgressDialog*>()->isVisible());
        window->close();
        QTRY_VERIFY(!loop.advance(501));
    }
};

QTEST_MAIN(TestProgressLoop)
#include "tst_progressloop.moc"
