// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/windowtest.h"

const char trueModels[] = "_5_tw_trueModelTMED";

/// What the tables of results let the user do, beside copying them.
class TestTables : public WindowTest
{
    Q_OBJECT

private slots:
    void init()
    {
        openWindow();
        calculateDoses(0);
        compareWithTruth();
    }

    void keepResults_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<int>("column");
        QTest::newRow("bootstrap results") << QByteArray("_0_tw_RawResults") << 20;
        QTest::newRow("relative weights") << QByteArray("_2_tw_relativeWeight") << 1;
        QTest::newRow("dose choice") << QByteArray("_4_tw_doseChoice") << 0;
        QTest::newRow("theoretical MEDs") << QByteArray(trueModels) << 1;
        QTest::newRow("summary") << QByteArray("_5_tw_Summary") << 1;
        QTest::newRow("errors") << QByteArray("_5_tw_aveUnderEstOverEst") << 0;
    }
    void keepResults()
    {
        QFETCH(QByteArray, name);
        QFETCH(int, column);
        auto* table = reach<QTableWidget>(name);
        const QStringList before = rows(name);
        QVERIFY(before.size() > 1);
        const QPoint place = user::clickCell(table, 1, column);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
        for (const Qt::Key key : {Qt::Key_7, Qt::Key_Return, Qt::Key_F2, Qt::Key_8, Qt::Key_Tab}) {
            QTest::keyClick(QApplication::focusWidget(), key);
            QCoreApplication::processEvents(); // an editor hands its text over later
        }
        QCOMPARE(rows(name), before);
    }

    void takeTrueModels()
    {
        auto* table = reach<QTableWidget>(trueModels);
        user::editCell(table, 1, 0, "7");
        QCOMPARE(rows(trueModels), QStringList({"0 0.1", "7 0"}));
        pressAndAnswer("_5_pb_importSimRawRes", {files.writeRawResults("simulation.csv", {{0}})});
        delete table->takeItem(0, 0);
        user::clickCell(reach<QTableWidget>(trueModels), 0, 0);
        QTest::keyClick(table, Qt::Key_8); // opens the editor
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_COMPARE(rows(trueModels), QStringList("8 0.1"));
    }

    void tellDataSets_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("dose choice") << QByteArray("_4_tw_doseChoice");
        QTest::newRow("true models") << QByteArray(trueModels);
    }
    void tellDataSets()
    {
        QFETCH(QByteArray, name);
        const QHeaderView* headings = reach<QTableWidget>(name)->verticalHeader();
        const auto pointAt = [headings](int y) {
            QWidget* place = headings->viewport();
            const QPoint point(3, y);
            QHelpEvent hover(QEvent::ToolTip, point, place->mapToGlobal(point));
            QApplication::sendEvent(place, &hover);
        };
        pointAt(headings->sectionViewportPosition(0) + 1);
        QTRY_COMPARE(QToolTip::text(), "data set 0");
        pointAt(headings->sectionViewportPosition(1) + 1);
        QTRY_COMPARE(QToolTip::text(), "data set 1");
        pointAt(headings->length() + 1); // below the rows
        QVERIFY(QToolTip::text() != "data set -1");
    }
};

QTEST_MAIN(TestTables)
#include "tst_tables.moc"
