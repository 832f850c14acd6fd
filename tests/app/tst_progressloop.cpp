// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/widgets/progressloop.h"
#include "tests/support/windowtest.h"

class TestProgressLoop : public WindowTest
{
    Q_OBJECT

    int paints = 0;
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        paints += int(event->type() == QEvent::Paint);
        return false;
    }

private slots:
    void estimatesTheRemainingTime_data()
    {
        const Rows<int, qint64, qint64, QString> row("steps", "lastStep", "now", "text");
        row("no step of 10 yet", 0, 500, 900, "");
        row("some time after a step", 1, 1000, 5000, "About 5 s left");
        row("longer than estimated", 1, 1000, 99000, "About 1 s left");
        row("minutes", 5, 65000, 65000, "About 1 min 5 s left");
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

    void movesUntilTheWindowIsClosed()
    {
        openWindow();
        ProgressLoop loop(window.get(), "Calculating...", "Abort", 1000000);
        const auto* dialog = window->findChild<QProgressDialog*>();
        QTRY_VERIFY(loop.advance(500) && dialog->isVisible());
        dialog->findChild<QProgressBar*>()->installEventFilter(this);
        QTRY_VERIFY(loop.advance(500000) && paints > 0);
        window->close();
        QTRY_VERIFY(!loop.advance(501));
    }

    void keepsNumbersLatin_data()
    {
        const Rows<QLocale> row("language");
        row("Persian digits", QLocale("fa_IR"));
        row("decimal comma", QLocale("de_DE"));
    }
    void keepsNumbersLatin()
    {
        QFETCH(QLocale, language);
        QLocale::setDefault(language);
        openWindow();
        importPairs();
        edit(endpoints, 0, 0, "THETA1*exp(ETA1)"); // asks for individuals
        type("_1_sb_numSimulations", "1050");
        QCOMPARE(the<QSpinBox>("_1_sb_numSimulations")->text(), "1050");
        QCOMPARE(the<QCustomPlot>("_0_cp_rawResHistoGram")->locale().toString(0.5), "0.5");
    }
};

QTEST_MAIN(TestProgressLoop)
#include "tst_progressloop.moc"
