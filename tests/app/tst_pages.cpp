// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/windowtest.h"

/// What the pages look like, and how the keyboard goes through them.
class TestPages : public WindowTest
{
    Q_OBJECT

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
