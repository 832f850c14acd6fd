// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/windowtest.h"

/// Marks of results that no longer belong to the inputs beside them.
class TestStaleness : public WindowTest
{
    Q_OBJECT

    /// The tooltips of buttons and results, "!" behind those of tinted buttons.
    QStringList marks() const
    {
        QStringList texts;
        for (const char* name :
             {toCurve, "_3_cp_PoS", toDoses, "_4_tw_doseChoice", toTruth, "_5_tw_Summary"}) {
            const QColor face = the<QWidget>(name)->palette().color(QPalette::Button);
            texts.append(tip(name) + (face == qApp->palette().button().color() ? "" : "!"));
        }
        return texts;
    }
    QString summary() { return copied("_3_cp_PoS", "Copy analysis summary"); }

private slots:
    void init()
    {
        openWindow();
        calculateDoses(0);
        compareWithTruth();
    }

    void tellOfImportsAndOpen()
    {
        const QStringList fresh = marks();
        QVERIFY2(!fresh.join("").contains('!'), qPrintable(fresh.join("|")));
        save();
        importStudy({{{{2, 1}}}, {{{4, 1}}}});
        QVERIFY2(marks().at(1).contains("since changed: results."), qPrintable(marks().at(1)));
        importPairs();
        QCOMPARE(marks(), fresh); // the same numbers as before
        openWindow();
        open();
        QVERIFY2(!marks().join("").contains("since"), qPrintable(marks().join("|")));
        QVERIFY(summary().contains("\nFolder: " + files.path("project")));
        type("_1_le_possibleDoses", "0,1");
        QVERIFY(marks().at(2).contains("The doses of the project were selected for "));
    }

    void standBelowThePointUnderTheMouse()
    {
        type("_1_le_possibleDoses", "0,1");
        QVERIFY(marks().first().endsWith('!'));
        auto* plot = reach<QCustomPlot>("_3_cp_PoS");
        user::rest(plot, plot->axisRect()->center());
        QTRY_VERIFY(QToolTip::text().startsWith("DOSE: 0.1\nProbability: "));
        QVERIFY(QToolTip::text().endsWith("; since changed: doses."));
    }
};

QTEST_MAIN(TestStaleness)
#include "tst_staleness.moc"
