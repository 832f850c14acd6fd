// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/widgets/progressloop.h"
#include "tests/support/windowtest.h"

class TestProgressLoop : public WindowTest
{
    Q_OBJECT

private slots:
    void estimatesTheRemainingTime()
    {
        // clang-format off
        const std::tuple<int, qint64, qint64, QString> loops[] = { // of 10 steps
            {0, 500, 900, ""}, {1, 1000, 1000, "About 9 s left"}, {1, 1000, 5000, "About 5 s left"},
            {1, 1000, 99000, "About 1 s left"}, {5, 65000, 65000, "About 1 min 5 s left"},
            {1, 460000, 460000, "About 1 h 9 min left"}, {10, 460000, 460000, "About 1 s left"}};
        // clang-format on
        for (const auto& [steps, time, now, text] : loops) {
            RemainingTime estimate;
            estimate.update(steps, time);
            estimate.update(steps, now);
            const auto remaining = estimate.at(now, 10);
            QCOMPARE(remaining ? remainingTimeText(*remaining) : QString(), text);
        }
        openWindow();
        the<QStatusBar>("statusBar")->showMessage("before");
        {
            ProgressLoop loop(window.get(), "Calculating...", "Abort", 1000000);
            QTRY_VERIFY(loop.advance(500) && loop.advance(501)
                        && the<QStatusBar>("statusBar")->currentMessage().startsWith("About "));
        }
        QCOMPARE(the<QStatusBar>("statusBar")->currentMessage(), "before");
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
        QVERIFY(window->isVisible() && loop.poll());
        window->close();
        QTRY_VERIFY(!loop.advance(501));
    }
};

QTEST_MAIN(TestProgressLoop)
#include "tst_progressloop.moc"
