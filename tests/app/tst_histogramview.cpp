// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/charts/histogramview.h"

#include <QtTest>
#include <qcustomplot.h>

using Change = void (HistogramView::*)();
Q_DECLARE_METATYPE(Change)

class TestHistogramView : public QObject
{
    Q_OBJECT

private slots:
    /// After the values 0 and 1 of column 0.
    void choosesTheRange_data()
    {
        QTest::addColumn<Change>("change");
        QTest::addColumn<int>("column");
        QTest::addColumn<QVector<double>>("values");
        QTest::addColumn<bool>("fits");
        const Change none = nullptr;
        const QVector<double> near{0.5, 2};
        const QVector<double> far{5, 6};
        QTest::newRow("other column in sight") << none << 1 << near << false;
        QTest::newRow("other column out of sight") << none << 1 << far << true;
        QTest::newRow("same column out of sight") << none << 0 << far << false;
        QTest::newRow("forgotten") << &HistogramView::forget << 0 << near << true;
        QTest::newRow("new in sight") << &HistogramView::expectNewValues << 0 << near << false;
        QTest::newRow("new out of sight") << &HistogramView::expectNewValues << 0 << far << true;
    }
    void choosesTheRange()
    {
        QFETCH(Change, change);
        QFETCH(int, column);
        QFETCH(QVector<double>, values);
        QCustomPlot plot;
        HistogramView view(&plot, {}, [] { QFAIL("The owner draws anyway."); });
        view.chooseRange({0, 0, 0}, {0, 1}, {0, 1}, 5);
        const QCPRange before = plot.xAxis->range();
        if (change != nullptr) {
            (view.*change)();
        }
        view.chooseRange({0, 0, column}, values, values, 5);
        QTEST(plot.xAxis->range() != before, "fits");
    }
};

QTEST_MAIN(TestHistogramView)
#include "tst_histogramview.moc"
