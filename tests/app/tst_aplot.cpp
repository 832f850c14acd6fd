// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/aplot.h"
#include "app/charts/chartdata.h"
#include "app/charts/histogramview.h"
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
    void tellsItsBins_data()
    {
        QTest::addColumn<double>("width");
        QTest::addColumn<double>("start");
        QTest::newRow("wide") << 2.0 << 0.0;
        QTest::newRow("narrower than the step") << 2e-9 << 0.0;
        QTest::newRow("far from 0") << 4.0 << 1e14;
    }
    void tellsItsBins()
    {
        QFETCH(double, width);
        QFETCH(double, start);
        QCustomPlot chart;
        chart.resize(400, 300);
        const double second = start + width;
        const double third = start + 2 * width;
        chart.xAxis->setRange(start, start + 3 * width);
        histogram({start, second, third - width / 4}, {start, second, third}, &chart);
        QCOMPARE(chart.graphCount(), 1);
        QCOMPARE(chart.graph(0)->name(), "Graph 1");
        chart.replot(QCustomPlot::rpImmediateRefresh); // lays the axes out
        const ChartReading reading{ChartKind::Histogram, {}, {}};
        const auto digits = [](double edge) { return QString::number(edge, 'g', 15); };
        QCOMPARE(chartData(chart, reading).mid(1),
                 TextRows({{digits(start), "1"}, {digits(second), "2"}}));
        const QPointF place(chart.xAxis->coordToPixel(second + width / 2), 150);
        QVERIFY(chartTextAt(chart, reading, place).endsWith("\nFrequency: 2"));
    }
    void choosesTheRange()
    {
        QCustomPlot chart;
        HistogramView view(&chart, {}, [] { QFAIL("The owner draws anyway."); });
        const auto fits = [&chart, &view](int column, const QVector<double>& values) {
            const QCPRange before = chart.xAxis->range();
            view.chooseRange({0, 0, column}, values, values, 5);
            return chart.xAxis->range() != before;
        };
        QVERIFY(fits(0, {0, 1}) && !fits(0, {5, 6}) && !fits(1, {0.5, 2}) && fits(2, {5, 6}));
        view.forget();
        QVERIFY(fits(2, {5.5, 7}));
        view.expectNewValues();
        QVERIFY(!fits(2, {6, 9}));
        view.expectNewValues();
        QVERIFY(fits(2, {0, 1}) && !fits(2, {5, 6}));
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
