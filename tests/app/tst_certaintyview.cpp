// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/windowtest.h"

#include <QMenu>

const char doseTable[] = "_4_tw_doseChoice";

/// Certainty of results, as the window shows it.
class TestCertaintyView : public WindowTest
{
    Q_OBJECT

    /// The tooltip of a table's cell, of the heading of a column (row -1) or row (column -1).
    QString tipAt(int row, int column) const
    {
        auto* table = reach<QTableWidget>(doseTable);
        if (row >= 0 && column >= 0) {
            user::rest(table->viewport(),
                       table->visualRect(table->model()->index(row, column)).center());
            return QToolTip::text();
        }
        QHeaderView* header = row < 0 ? table->horizontalHeader() : table->verticalHeader();
        const int start = header->sectionViewportPosition(qMax(row, column));
        user::rest(header->viewport(), {row < 0 ? start + 2 : 2, row < 0 ? 2 : start + 2});
        return QToolTip::text();
    }
    QStringList linesOf(const char* widget, const QString& entry)
    {
        return copied(widget, entry).split('\n');
    }

private slots:
    void init()
    {
        openWindow();
        calculateDoses(1);
    }

    void tellsInTooltips()
    {
        QCOMPARE(tipAt(0, 0), "40 %: 0.1 in 75 %, none in 25 % of resamples; 0.1 exceeds the level "
                              "by 0.3 errors\nAbout 100 bootstrap samples instead of 2 would put "
                              "it two errors from the level.");
        QCOMPARE(tipAt(-1, 0),
                 "40 %: the dose holds in 75 % of resamples, the mean over 2 data "
                 "sets; the lowest share is 75 %, in data set 0; below 90 % in 2 of them");
        QCOMPARE(tipAt(1, -1), "data set 1");
        type("_4_le_probabilities", "40");
        QVERIFY(tipAt(0, 0).endsWith("; since changed: levels."));
        save();
        open();
        QCOMPARE(tipAt(0, 0),
                 "The certainty of the dose is not known: the doses come from a project, "
                 "which has no endpoints: calculate them again.");
    }

    void copiesTables_data()
    {
        const Rows<QString, int, QString> row("entry", "rowsOfDataSet", "secondRow");
        row("doses", "Copy certainty of doses", 8, "0\t40\t0.1\t*\t0.1\t50\t35.3553390593274\t*");
        row("contributions", "Copy contributions", 8, "0\tBest (% of samples)\t\t50\t50\t100");
        row("endpoint", "Copy averaged endpoint", 9, "0\t0\tmodel 0\t0\t0\t0\t0\t0\t0\t0");
        row("sensitivity", "Copy sensitivity", 10, "0\tall fits\t2\t0\t0\tProbability*");
    }
    void copiesTables()
    {
        QFETCH(QString, entry);
        QFETCH(int, rowsOfDataSet);
        QFETCH(QString, secondRow);
        const QStringList ofCurve = linesOf("_3_cp_PoS", entry);
        QCOMPARE(ofCurve.size(), 1 + rowsOfDataSet);
        QVERIFY(ofCurve.first().startsWith("Data set\t"));
        QCOMPARE(told({ofCurve.at(2)}, secondRow), secondRow);
        const QStringList ofDoses = linesOf(doseTable, entry);
        QCOMPARE(ofDoses.mid(0, ofCurve.size()), ofCurve);
        QCOMPARE(ofDoses.size(), 1 + 2 * rowsOfDataSet);
        QCOMPARE(linesOf("_4_cp_doseChoiceDistribution", entry), ofDoses);
        type("_3_le_lowerBound", "0.5");
        QVERIFY(linesOf("_3_cp_PoS", entry).first().endsWith("; since changed: interval."));
    }

    void savesEndpoints()
    {
        QCOMPARE(copied(doseTable, "Copy probabilities"),
                 "Data set\t0\t0.1\t2\n0\t0\t50\t50\n1\t0\t50\t100");
        const QString path = files.path("endpoints.csv");
        DialogDriver dialogs;
        dialogs.answerFiles({path});
        user::chooseEntry(reach<QTableWidget>(doseTable), "Save endpoint values as CSV...");
        const QByteArrayList lines = contentOf(path).split('\n');
        QCOMPARE(lines.size(), 1 + 2 * 2 * 3 + 1); // the selected model of each sample
        QCOMPARE(lines.at(2).left(25), "0,model 0,0,0.10000000000");
        dialogs.answerFiles({"/proc/endpoints.csv"});
        dialogs.acknowledge("The file could not be written.");
        user::chooseEntry(reach<QTableWidget>(doseTable), "Save endpoint values as CSV...");
    }

    void disablesWhatCannotBe()
    {
        save();
        openWindow();
        open();
        auto* table = reach<QTableWidget>(doseTable);
        QContextMenuEvent request(QContextMenuEvent::Mouse, {5, 5},
                                  table->viewport()->mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(table->viewport(), &request);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QAction* entry = menu->actions().last();
        QVERIFY(!entry->isEnabled());
        user::rest(menu, menu->actionGeometry(entry).center());
        QCOMPARE(QToolTip::text(),
                 "the doses come from a project, which has no endpoints: calculate them again");
        menu->close();
    }

    void findsUnstableDoses()
    {
        QVERIFY(!tip(toDoses).contains("less than 90 %")); // two data sets
        pressAndAnswer("__pb_importFbF", {files.writeRawResults("a.csv", {{2, 1}, {2, 2}}),
                                          files.writeRawResults("b.csv", {{4, 1}, {0, 1}})});
        press(toDoses);
        QCOMPARE(tip(toDoses).section('\n', 0, 0),
                 "Doses that hold in less than 90 % of resamples: 0.1 at level 40 % (75.15 %), 2 "
                 "at level 60 % (77 %)");
    }
};

QTEST_MAIN(TestCertaintyView)
#include "tst_certaintyview.moc"
