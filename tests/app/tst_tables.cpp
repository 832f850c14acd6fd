// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/windowtest.h"

const char trueModels[] = "_5_tw_trueModelTMED";

/// What the tables of results let the user do.
class TestTables : public WindowTest
{
    Q_OBJECT

    /// Presses a key where the keyboard is.
    static void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        QCoreApplication::processEvents(); // an editor hands its text over later
    }
    static QString copiedByKeys(Qt::KeyboardModifiers more = {})
    {
        pressKey(Qt::Key_C, Qt::ControlModifier | more);
        return QApplication::clipboard()->text();
    }

private slots:
    void init()
    {
        openWindow();
        calculateDoses(1);
        compareWithTruth();
    }

    void copyAndKeepNumbers_data()
    {
        const Rows<QByteArray, int, QString, QString> row("table", "column", "shown", "exact");
        row("bootstrap results", "_0_tw_RawResults", 20, "0.333333", "0.33333333333333331\n2");
        row("relative weights", "_2_tw_relativeWeight", 1, "0.268941", // 1 / (1 + e)
            "0.2689414213699951\n0.7310585786300049");
        row("chosen doses", "_4_tw_doseChoice", 1, "nan", "nan\n2");
        row("theoretical MEDs", trueModels, 1, "0.1", "0.10000000000000001\n0");
        row("summary", "_5_tw_Summary", 0, "0.1", "0.099999999999999978\n0.5");
        row("errors", "_5_tw_aveUnderEstOverEst", 0, "0.1", "0.10000000000000001\n2");
    }
    void copyAndKeepNumbers()
    {
        QFETCH(QByteArray, table);
        QFETCH(int, column);
        auto* cells = reach<QTableWidget>(table);
        const QStringList before = rows(table);
        const QPoint place = user::clickCell(cells, 0, column);
        QTEST(copiedByKeys(), "shown");
        pressKey(Qt::Key_Down, Qt::ShiftModifier);
        QTEST(copied(table, "Copy with full precision"), "exact");
        QTest::mouseDClick(cells->viewport(), Qt::LeftButton, {}, place);
        for (const Qt::Key key : {Qt::Key_7, Qt::Key_Return, Qt::Key_F2, Qt::Key_8, Qt::Key_Tab}) {
            pressKey(key);
        }
        QCOMPARE(rows(table), before);
    }

    void copyTheSelection()
    {
        auto* table = reach<QTableWidget>("_0_tw_RawResults");
        user::clickCell(table, 0, 20);
        pressKey(Qt::Key_Down, Qt::ShiftModifier);
        pressKey(Qt::Key_Left, Qt::ShiftModifier);
        QCOMPARE(copiedByKeys(), "2\t0.333333\n2\t2");
        const QPoint first = table->visualItemRect(table->item(0, 19)).center();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::ControlModifier, first);
        QCOMPARE(copiedByKeys(Qt::ShiftModifier), "\"ofv\"\t\"THETA1\"\n\t0.333333\n2\t2");
    }

    void takeTrueModels()
    {
        auto* table = reach<QTableWidget>(trueModels);
        user::editCell(table, 1, 0, "7");
        QCOMPARE(rows(trueModels), QStringList({"0 0.1", "7 0"}));
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, user::clickCell(table, 1, 0));
        QTest::keyClicks(QApplication::focusWidget(), "0.5");
        pressKey(Qt::Key_Left, Qt::ShiftModifier);
        QCOMPARE(copiedByKeys(), "5"); // an editor has the keys itself
        pressKey(Qt::Key_Return);
        QCOMPARE(copied(trueModels, "Copy with full precision"), "0.5");
    }

    void tellDataSets()
    {
        const QHeaderView* headings = reach<QTableWidget>(trueModels)->verticalHeader();
        user::rest(headings->viewport(), {3, headings->sectionViewportPosition(1) + 1});
        QTRY_COMPARE(QToolTip::text(), "data set 1");
        user::rest(headings->viewport(), {3, headings->length() + 1}); // below the rows
        QVERIFY(QToolTip::text() != "data set -1");
    }
};

QTEST_MAIN(TestTables)
#include "tst_tables.moc"
