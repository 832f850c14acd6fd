// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/aplot.h"
#include "app/charts/chartdata.h"
#include "app/charts/histogramview.h"
#include "tests/support/rows.h"

#include <QtTest>
#include <qcustomplot.h>

using Values = QVector<double>;

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
    }

    void tellsItsBins_data()
    {
        const Rows<double, double> row("start", "width");
        row("narrower than the step of the line", 0, 2e-9);
        row("far from 0", 1e14, 4);
    }
    void tellsItsBins()
    {
        QFETCH(double, start);
        QFETCH(double, width);
        const Values edges{start, start + width, start + 2 * width};
        plot.clearGraphs();
        histogram({start, edges.at(1), edges.at(2) - width / 4}, edges, &plot);
        const auto digits = [](double edge) { return QString::number(edge, 'g', 15); };
        QCOMPARE(chartData(plot, {ChartKind::Histogram, {}, {}}).mid(1),
                 TextRows({{digits(start), "1"}, {digits(edges.at(1)), "2"}}));
    }

    void choosesTheRange()
    {
        QCustomPlot chart;
        HistogramView view(&chart, {}, [] { QFAIL("The owner draws anyway."); });
        const auto fits = [&chart, &view](int column, const Values& values) {
            const QCPRange before = chart.xAxis->range();
            view.chooseRange({0, 0, column}, values, values, 5);
            return chart.xAxis->range() != before;
        };
        QVERIFY(fits(0, {0, 1}));
        QVERIFY(!fits(0, {5, 6}));
        QVERIFY(!fits(1, {0.5, 2}));
        QVERIFY(fits(2, {5, 6}));
        view.forget();
        QVERIFY(fits(2, {5.5, 7}));
        view.expectNewValues();
        QVERIFY(!fits(2, {6, 9}));
        view.expectNewValues();
        QVERIFY(fits(2, {0, 1}));
        QVERIFY(!fits(2, {5, 6}));
    }

    void drawsStepsFarFromZero()
    {
        Values edges;
        Values values;
        for (int bin = 0; bin < 400; ++bin) {
            edges.append(1e14 + 4 * bin);
            values += Values(bin % 2, edges.last()); // none and one in turn
        }
        plot.clearGraphs();
        histogram(values, edges, &plot);
        int points = 0;
        for (const QCPGraphData& point : *plot.graph()->data()) {
            QCOMPARE(int(point.value), points++ / 2 % 2);
        }
    }

    void fitsEveryValueIntoABin_data()
    {
        const Rows<Values> row("largestLast");
        row("one of them NaN", {3, -2, qQNaN(), 7});
        row("a single 0", {0});
        row("side by side", {4, 4 + 1e-15});
        row("huge", {-9e248, 9e248});
    }
    void fitsEveryValueIntoABin()
    {
        QFETCH(Values, largestLast);
        for (const int bins : {2, 3, 50, 400}) {
            QVERIFY(fitHistogramRange(plot.xAxis, largestLast, bins));
            QVERIFY(largestLast.last() < visibleBinEdges(&plot, bins).last());
        }
    }

    void givesAxesAWidth()
    {
        QVERIFY(!fitHistogramRange(plot.xAxis, {qQNaN(), qInf()}, 2));
        setAxisRange(plot.xAxis, 20, 20);
        QCOMPARE(plot.xAxis->range(), QCPRange(19, 21));
        QVERIFY(anyValueVisible(plot.xAxis, {5, 21}));
        QVERIFY(!anyValueVisible(plot.xAxis, {5, qQNaN()}));
        setAxisRange(plot.xAxis, {0, qQNaN()});
        setAxisRange(plot.xAxis, 0, qInf());
        QCOMPARE(plot.xAxis->range(), QCPRange(-0.5, 0.5));
    }
};

QTEST_MAIN(TestAplot)
#include "tst_aplot.moc"
