// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/tablesizes.h"

#include <QtTest>

constexpr int million = 1'000'000;

Q_DECLARE_METATYPE(TableExtent)

class TestTableSizes : public QObject
{
    Q_OBJECT

private slots:
    void showsTables_data()
    {
        QTest::addColumn<TableExtent>("extent");
        QTest::addColumn<QSize>("withoutItems");
        QTest::addColumn<QSize>("inPart");
        QTest::addColumn<bool>("hasItems"); // even without the wish for a part
        const auto row = [](const char* name, TableExtent extent, QSize withoutItems, QSize inPart,
                            bool hasItems = false) {
            QTest::newRow(name) << extent << withoutItems << inPart << hasItems;
        };
        row("no rows", {3, 0, 0, 3}, {3, 0}, {3, 0}, true);
        row("a million cells", {1000, 1000, million, 0}, {1000, 1000}, {1000, 1000}, true);
        row("one row more", {1000, 1001, 1'001'000, 0}, {1000, 1001}, {1000, 1000});
        row("a long row", {9000, 18'001, 27'000, 1}, {55, 18'001}, {55, 18'001});
        row("half full", {1000, 2000, million, 0}, {1000, 2000}, {500, 2000});
        row("fewer numbers", {1000, 2000, 900'000, 0}, {900, 2000}, {500, 2000});
        row("names", {600, 10'000, 10'000, 500}, {500, 2000}, {500, 2000});
        row("many rows", {1, 30'000'000, 30'000'000, 1}, {1, 20'000'000}, {1, million});
        row("many columns", {300'000, 1, 300'000, 0}, {200'000, 1}, {200'000, 1});
        row("many cells", {1000, 200'000, 200'000'000, 0}, {1000, 134'217}, {1000, 1000});
    }
    void showsTables()
    {
        QFETCH(TableExtent, extent);
        QFETCH(bool, hasItems);
        const QSize full(extent.columns, extent.rows);
        TableSizes sizes = tableSizes(extent, LargeTableUse::WithoutItems);
        QTEST(sizes.shown, "withoutItems");
        QCOMPARE(sizes.full, sizes.shown == full ? QSize() : full);
        QCOMPARE(sizes.hasItems, hasItems);
        sizes = tableSizes(extent, LargeTableUse::InPart);
        QTEST(sizes.shown, "inPart");
        QCOMPARE(sizes.full, sizes.shown == full ? QSize() : full);
        QVERIFY(sizes.hasItems);
    }
};

QTEST_APPLESS_MAIN(TestTableSizes)
#include "tst_tablesizes.moc"
