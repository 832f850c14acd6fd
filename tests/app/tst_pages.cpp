// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/windowtest.h"

/// What the pages look like, and how the keyboard goes through them.
class TestPages : public WindowTest
{
    Q_OBJECT

    /// The name of the widget with the keyboard, the number of the page on a title.
    QString keyboard() const
    {
        const auto* widget = QApplication::focusWidget();
        const auto* title = qobject_cast<const QAbstractButton*>(widget);
        return title != nullptr && title->parent() == the<QToolBox>("__mainToolBox")
                   ? title->text().section(':', 0, 0)
                   : widget->objectName();
    }

private slots:
    void init() { openWindow(); }

    void saysWhatToType_data()
    {
        const Rows<QByteArray, QString> row("edit", "example");
        row("levels", "_4_le_probabilities", "50:10:90");
        row("lower bound", "_3_le_lowerBound", "-10");
        row("upper bound", "_3_le_upperBound", "10");
    }
    void saysWhatToType()
    {
        QFETCH(QByteArray, edit);
        QFETCH(QString, example);
        const auto* field = reach<QLineEdit>(edit);
        QVERIFY(field->placeholderText().endsWith(example));
        const int margins = 12;
        QVERIFY(field->fontMetrics().horizontalAdvance(field->placeholderText()) + margins
                < field->width());
    }

    void reachesInputsBeforeTitles_data()
    {
        const Rows<int, QString> row("page", "order");
        row("import", 0,
            "qt_tabwidget_tabbar __pb_importFbF _m1_le_colNumOFV _m1_le_colNumTHETA1 0 1 2 3 4 5 "
            "-1");
        row("endpoint", 2,
            "_1_le_possibleDoses _1_tw_endPoints _1_cp_typicalDRPlot _1_tw_rawResLabels 2 3 4 5 "
            "-1 0 1");
        row("truth", 6,
            "_5_tw_trueModelTMED _5_cp_truthVisualization _5_tw_Summary "
            "_5_tw_aveUnderEstOverEst _4_pb_compTruth -1 0 1 2 3 4 5");
    }
    void reachesInputsBeforeTitles()
    {
        QFETCH(int, page);
        QFETCH(QString, order);
        // From an input that is hidden when the page is turned.
        type(page == 0 ? "_3_le_upperBound" : "_m1_le_colNumOFV", "1");
        user::showPage(*window, page);
        const QString ofPage = order.section(' ', -1);
        QCOMPARE(keyboard(), ofPage);
        QStringList reached;
        do {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            reached.append(keyboard());
        } while (reached.last() != ofPage && reached.size() < 20);
        QCOMPARE(reached.join(' '), order);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(keyboard(), ofPage);
    }

    void showsCurvesOnAxes_data()
    {
        const Rows<QByteArray, double> row("chart", "value");
        row("typical curve", "_1_cp_typicalDRPlot", 1);
        row("probability", "_3_cp_PoS", 0);
    }
    void showsCurvesOnAxes()
    {
        QFETCH(QByteArray, chart);
        QFETCH(double, value);
        importPairs();
        define("1+DOSE*(DOSE-1)", "0", "0,1,2", "9");
        user::clickCell(reach<QTableWidget>(endpoints), 0, 0);
        press(toCurve);
        auto* plot = reach<QCustomPlot>(chart);
        QCOMPARE(curve(chart).first(), value);
        const QImage picture = plot->grab().toImage();
        const int x = int(plot->xAxis->coordToPixel(0.3));
        const int y = int(plot->yAxis->coordToPixel(value));
        QCOMPARE(picture.pixelColor(x, y), plot->graph(0)->pen().color());
    }

    void usesTheWidthOfTheTruth()
    {
        for (const QSize size : {QSize(912, 725), QSize(1600, 1000)}) {
            window->resize(size);
            const auto* table = reach<QTableWidget>("_5_tw_trueModelTMED");
            const int used = table->columnWidth(0) + table->columnWidth(1);
            QCOMPARE(used, table->viewport()->width());
        }
    }
};

QTEST_MAIN(TestPages)
#include "tst_pages.moc"
