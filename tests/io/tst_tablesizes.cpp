// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/tablesizes.h"
#include "tests/support/rows.h"

constexpr int million = 1'000'000;

Q_DECLARE_METATYPE(TableExtent)

class TestTableSizes : public QObject
{
    Q_OBJECT

private slots:
    void showsTables_data()
    {
        const Rows<TableExtent, QSize, QSize> row("extent", "withoutItems", "inPart");
        row("no rows", {3, 0, 0, 3}, {3, 0}, {3, 0});
        row("a million cells", {1000, 1000, million, 0}, {1000, 1000}, {1000, 1000});
        row("one row more", {1000, 1001, 1'001'000, 0}, {1000, 1001}, {1000, 1000});
        row("a long row", {9000, 18'001, 27'000, 1}, {55, 18'001}, {55, 18'001});
        row("half full", {1000, 2000, million, 0}, {1000, 2000}, {500, 2000});
        row("many numbers", {1000, 2000, 1'500'001, 0}, {1000, 2000}, {751, 1331});
        row("names", {600, 10'000, 10'000, 500}, {500, 2000}, {500, 2000});
        row("many rows", {1, 30'000'000, 30'000'000, 1}, {1, 20'000'000}, {1, million});
        row("many columns", {300'000, 1, 300'000, 0}, {200'000, 1}, {200'000, 1});
        row("many cells", {1000, 200'000, 200'000'000, 0}, {1000, 134'217}, {1000, 1000});
    }
    void showsTables()
    {
        QFETCH(TableExtent, extent);
        const QSize full(extent.columns, extent.rows);
        const TableSizes large = tableSizes(extent, LargeTableUse::WithoutItems);
        QTEST(large.shown, "withoutItems");
        QCOMPARE(large.full, large.shown == full ? QSize() : full);
        QCOMPARE(large.hasItems, large.shown == full && extent.rows <= 1000);
        const TableSizes part = tableSizes(extent, LargeTableUse::InPart);
        QTEST(part.shown, "inPart");
        QCOMPARE(part.full, part.shown == full ? QSize() : full);
        QVERIFY(part.hasItems);
    }
};

QTEST_APPLESS_MAIN(TestTableSizes)
#include "tst_tablesizes.moc"
