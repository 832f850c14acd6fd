// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/aplot.h"
#include "io/csv.h"

#include <QTableWidget>
#include <QtTest>
#include <qcustomplot.h>

class TestAplot : public QObject
{
    Q_OBJECT
    QCustomPlot plot;

private slots:
    void countsPerBin()
    {
        histogram({qInf(), 3, 2, qQNaN(), 1, 2, -1, 4}, {4, qQNaN(), 0, 2}, &plot);
        QCOMPARE(plot.graph()->data()->size(), 4);
        QCOMPARE(plot.graph()->data()->at(2)->key, 2 + 1e-8);
        QCOMPARE(plot.graph()->data()->at(2)->value, 3.0);
        QCOMPARE(plot.yAxis->range(), QCPRange(0, 3));

        QTableWidget table; // of which the current column counts
        csvDisplay(&table, {{2, 1}, {3, qQNaN()}, {}, {4, 9}});
        delete table.takeItem(2, 1);
        table.setCurrentCell(0, 1);
        plot.xAxis->setRange(0, 10);
        QTest::ignoreMessage(QtDebugMsg, "QVector(1, 9)");
        histogram(&table, &plot, 5);
        QCOMPARE(plot.graph()->data()->constEnd()[-1].key, 8.0);
    }
    void fitsEveryValueIntoABin()
    {
        for (const QVector<double>& largestLast : QVector<QVector<double>>{
                 {3, -2, qQNaN(), 7}, {0}, {4, 4 + 1e-15}, {-9e248, 9e248}, {0, 1e-300}}) {
            for (const int bins : {2, 3, 50, 400}) {
                QVERIFY(fitHistogramRange(plot.xAxis, largestLast, bins));
                QVERIFY(largestLast.last() < visibleBinEdges(&plot, bins).last());
            }
        }
        QVERIFY(!fitHistogramRange(plot.xAxis, {qQNaN(), qInf()}, 2));

        // An axis needs a width.
        setAxisRange(plot.xAxis, 20, 20);
        QCOMPARE(plot.xAxis->range(), QCPRange(19, 21));
        QVERIFY(anyValueVisible(plot.xAxis, {5, 21}) && !anyValueVisible(plot.xAxis, {5, qQNaN()}));
        setAxisRange(plot.xAxis, {0, qQNaN()});
        setAxisRange(plot.xAxis, 0, qInf());
        QCOMPARE(plot.xAxis->range(), QCPRange(-0.5, 0.5));
    }
};

QTEST_MAIN(TestAplot)
#include "tst_aplot.moc"
