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
        for (const char* name : {"_3_pb_calculatePoS", "_3_cp_PoS", "_4_pb_startCalculation",
                                 "_4_tw_doseChoice", "_4_pb_compTruth", "_5_tw_Summary"}) {
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

    void endWithTheChange_data()
    {
        const Rows<QByteArray, QString, QString, QString, QString> row("input", "before", "after",
                                                                       "kind", "tinted");
        row("all of them", "_1_le_possibleDoses", "0,0.1,2", "0,0.1,3", "doses", "111");
        row("that of the curve", "_3_cb_dataNumber", "0", "1", "data set", "100");
        row("those of doses", "_4_le_probabilities", "40,60", "40", "levels", "011");
    }
    void endWithTheChange()
    {
        QFETCH(QByteArray, input);
        QFETCH(QString, before);
        QFETCH(QString, after);
        QFETCH(QString, kind);
        QFETCH(QString, tinted);
        const QStringList fresh = marks();
        set(input, after);
        const QStringList stale = marks();
        for (int i = 0; i < stale.size(); ++i) {
            const bool concerned = tinted.at(i / 2) == '1';
            QVERIFY2(stale.at(i).contains("; since changed: " + kind + '.') == concerned,
                     qPrintable(stale.at(i)));
            QCOMPARE(stale.at(i).endsWith('!'), concerned && i % 2 == 0);
        }
        QVERIFY(summary().contains("Stale, since changed: " + kind + '.'));
        set(input, before);
        QCOMPARE(marks(), fresh);
    }

    void tellOfImportsAndOpen()
    {
        const QStringList fresh = marks();
        QVERIFY2(!fresh.join("").contains('!'), qPrintable(fresh.join("|")));
        pressShortcut(Qt::Key_S, files.path("project"));
        importStudy({{{{2, 1}}}, {{{4, 1}}}});
        QVERIFY2(marks().at(1).contains("since changed: results."), qPrintable(marks().at(1)));
        importPairs();
        QCOMPARE(marks(), fresh); // the same numbers as before
        openWindow();
        pressShortcut(Qt::Key_O, files.path("project"));
        QVERIFY2(!marks().join("").contains("since"), qPrintable(marks().join("|")));
        type("_1_le_possibleDoses", "0,1");
        QVERIFY(marks().at(2).contains("The doses, as the project has them, were selected for "));
    }

    void standBelowThePointUnderTheMouse()
    {
        type("_1_le_possibleDoses", "0,1");
        auto* plot = reach<QCustomPlot>("_3_cp_PoS");
        user::rest(plot, plot->axisRect()->center());
        QTRY_VERIFY(QToolTip::text().startsWith("DOSE: 0.1\nProbability: "));
        QVERIFY(QToolTip::text().endsWith("; since changed: doses."));
    }

    void followThePalette()
    {
        type("_1_le_possibleDoses", "0,1");
        const QPalette light = QApplication::palette();
        QApplication::setPalette(QPalette(QColor(53, 53, 53)));
        const QPalette dark = the<QWidget>("_3_pb_calculatePoS")->palette();
        QApplication::setPalette(light);
        QVERIFY(dark.color(QPalette::Button).lightness() < 128);
        QVERIFY(marks().first().endsWith('!'));
    }
};

QTEST_MAIN(TestStaleness)
#include "tst_staleness.moc"
