// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/csv.h"
#include "io/csvexport.h"
#include "io/tablesizes.h"
#include "tests/support/rows.h"
#include "tests/support/studyfiles.h"

#include <QTableWidget>

#include <sys/stat.h>

using Table = QVector<QVector<double>>;
constexpr int million = 1'000'000;

Q_DECLARE_METATYPE(TableExtent)

class TestCsv : public QObject
{
    Q_OBJECT

    const StudyFiles files{};
    const QString path = files.path("table.csv");

    QByteArray written(const Table& table) const
    {
        csvwrite(path, table);
        return contentOf(path);
    }
    QByteArray shown(QTableWidget& widget, int firstRow = 0) const
    {
        csvwrite(path, &widget, firstRow);
        return contentOf(path);
    }

private slots:
    void initTestCase() { QCOMPARE(mkfifo(qPrintable(files.path("pipe")), 0600), 0); }

    void reads_data()
    {
        const Rows<QByteArray, QByteArray> row("file", "rows"); // as csvwrite gives them
        const QByteArray toBorder((1 << 20) - 3, 'x'); // files are read in pieces of this size
        row("line break at the border", toBorder + ",1\r\n2,\n3", "nan,1\n2,nan\n3\n");
        row("field across the border", "4\n" + toBorder + "56", "4\nnan\n");
        row("line of two pieces", toBorder + toBorder + "\n7,\n", "nan\n7,nan\n");
        row("no-break space behind the border",
            "8\n" + toBorder
                + ",\xc2\xa0"
                  "9",
            "8\nnan,9\n");
        row("lone returns", "1\r2,3\r,\r4\r\r\n", "nan,3,4\n");
        row("line breaks", "\n1,2\r\n3\r\n\r\n4\r", "nan\n1,2\n3\nnan\n4\n");
        row("no numbers", "x,,\"5\",- 3,0x1p3,1e,1e400,1e-400\n7",
            "nan,nan,nan,nan,nan,nan,nan,nan\n7\n");
        row("numbers", " 1\t,+2,-4.5,1E-2,0,0.0,0e9,-inf", "1,2,-4.5,0.01,0,0,0,-inf\n");
        row("limits", "1.7976931348623157e308,1.7976931348623159e308,4.9e-324,2.4e-324,0e999",
            "1.79769e+308,nan,4.94066e-324,nan,0\n");
        row("words", "inf, +INF ,infinity,NaN,-nan,1'000,0x10,1d5,.5,5.",
            "inf,inf,nan,nan,nan,nan,nan,nan,0.5,5\n");
        row("signs beyond ASCII", u8"\u22121,1e\u22122,\uff0b1,\u0661\n3", "-1,0.01,nan,nan\n3\n");
        row("damaged character at the border of what QTextStream reads",
            QByteArray(16383, 'x') + "\xe9,2\n3\xc3\n4,\xe9,5\xf0", "nan,2\nnan\n4,nan,5\n");
        row("UTF-16", QByteArray("\xff\xfe\x31\0,\0\x32\0\n\0\x33\0", 12), "1,2\n3\n");
        row("UTF-16, high byte first", QByteArray("\xfe\xff\0\x31\0\n\0\x32", 8), "1\n2\n");
        row("mark of UTF-8", "\xef\xbb\xbf\x31,2\r\n3,\n\n", "1,2\n3,nan\nnan\n");
    }
    void reads()
    {
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, rows);
        const QString source = files.write("source.csv", file);
        QCOMPARE(written(csvReadToDouble(source)), rows);
        QCOMPARE(written(csvWithHeaderReadToDouble(source)), rows.mid(rows.indexOf('\n') + 1));
        QCOMPARE(csvWithHeaderReadHeader(source).size(), csvReadToDouble(source).value(0).size());
    }

    void readsHeadings()
    {
        const QByteArray line("\xef\xbb\xbf\xc3\xa9,\xe9,\xf0\x9f\x98\x80,\xe2\x82,\xed\xa0\x80");
        const QString names = u8"é,\ufffd,\U0001f600,\ufffd\ufffd,\ufffd\ufffd\ufffd";
        const QString source = files.write("source.csv", line + '\n');
        QCOMPARE(csvWithHeaderReadHeader(source).join(','), names);
    }

    void readsNothing()
    {
        for (const QString& name : {QString(), files.path(), files.path("pipe")}) {
            QVERIFY2(csvReadToDouble(name).isEmpty(), qPrintable(name));
            QVERIFY2(csvWithHeaderReadHeader(name).isEmpty(), qPrintable(name));
        }
    }

    void writes()
    {
        QCOMPARE(written({{1, 2.5}, {}, {1234567, 1e-5}}), "1,2.5\n\n1.23457e+06,1e-05\n");
        csvwrite(path, Table{{1}}, {"a", "b", "c"});
        QCOMPARE(contentOf(path), "c\n1\n");
        csvwrite(path, Table{{1}}, {QString(u8"é\U0001f600") + QChar(0xd83d) + "x"});
        QCOMPARE(contentOf(path), u8"é\U0001f600?x\n1\n");
        csvwrite(path, Table{{1}}, {});
        QCOMPARE(contentOf(path), "\n1\n");
        csvwrite(path, Table(), {"a"});
        QCOMPARE(contentOf(path), "");
        QTableWidget widget; // without rows
        QCOMPARE(shown(widget), "");
        for (int writer = 0; writer < 4; ++writer) {
            QTest::ignoreMessage(QtDebugMsg, "Error, unable to save");
        }
        csvwrite(files.path(), Table{{1}});
        csvwrite(files.path(), Table{{1}}, {});
        csvwrite(files.path(), &widget);
        csvwrite(files.path(), &widget, 0);
    }

    void exports()
    {
        const TextRows rows{{"ofv", "a,b", "\"q\""}, {"1\t2", "", "x\r\ny"}, {}, {u8"θ\n"}};
        QCOMPARE(tabSeparated(rows), QString(u8"ofv\ta,b\t\"q\"\n1 2\t\tx  y\n\nθ "));
        const QByteArray lines =
            u8"ofv,\"a,b\",\"\"\"q\"\"\"\r\n1\t2,,\"x\r\ny\"\r\n\r\n\"θ\n\"\r\n";
        QCOMPARE(commaSeparated(rows), lines);
        QVERIFY(writeFile(path, "old and long") && writeFile(path, lines));
        QCOMPARE(contentOf(path), lines);
        for (const QString& name : {files.path(), files.path("none/a"), files.path("pipe")}) {
            QVERIFY2(!writeFile(name, "1"), qPrintable(name));
        }
    }

    void displays_data()
    {
        const Rows<Table, QByteArray> row("table", "cells");
        row("last row is short", {{1234567, 0.25, qQNaN()}, {4, 5}},
            "1.23457e+06,0.25,nan\n4,5,NaN");
        row("row in between is longest", {{1, 2}, {1, 2, 3, 4}, {5, 6, 7}},
            "1,2,NaN, \n1,2,3,4\n5,6,7,NaN");
    }
    void displays()
    {
        QFETCH(Table, table);
        QTableWidget widget;
        csvDisplay(&widget, {{8, 8, 8, 8}, {9}, {9}}, {"a", "b", "c", "d", "e"});
        QCOMPARE(shown(widget), "8,8,8,8, \n9,NaN,NaN,NaN, \n9,NaN,NaN,NaN, ");
        widget.setCurrentCell(0, 1);
        csvDisplay(&widget, table); // nothing of the larger one is left but the current cell
        QTEST(shown(widget), "cells");
        QCOMPARE(widget.currentColumn(), 1);
        csvDisplayAppend(&widget, {1, 2, 3, 4, 5});
        csvDisplayAppend(&widget, {6});
        QCOMPARE(shown(widget, table.size()), "1,2,3,4,5\n6,NaN,NaN,NaN,NaN");
    }

    void displaysLargeTables()
    {
        QTableWidget widget;
        csvDisplay(&widget, Table(1001, QVector<double>(1000, 7)), {"a"});
        widget.setCurrentCell(1, 0);
        Table table(1000, QVector<double>(1000, 0.1));
        table[1].append(2);
        table.append(QVector<double>{1234567});
        csvDisplay(&widget, table, {"a"});
        QVERIFY(widget.item(1, 0) == nullptr && widget.currentRow() == 1);
        const auto cell = [&widget](int row, int column) {
            return csvCellText(&widget, row, column);
        };
        QCOMPARE(cell(0, 999) + ' ' + cell(0, 1000) + ' ' + cell(1, 1000), "0.1  2");
        QCOMPARE(cell(999, 1000) + ' ' + cell(1000, 0), "NaN 1.23457e+06");
        const auto* delegate = widget.itemDelegate();
        const auto width = [&](int row, int column) {
            return delegate->sizeHint({}, widget.model()->index(row, column)).width();
        };
        QVERIFY(width(1000, 0) > width(0, 0) && width(0, 0) > width(0, 1000));
        QVERIFY(delegate->createEditor(&widget, {}, widget.model()->index(0, 0)) == nullptr);
        csvDisplayAppend(&widget, {8});
        QCOMPARE(cell(1001, 0) + ' ' + cell(0, 0), "8 0.1");
        widget.setRowCount(1);
        QVERIFY(cell(0, 0).isNull());
        csvDisplay(&widget, {{3}, {4, 5}, {6}});
        QCOMPARE(widget.item(0, 0)->text(), "3");
        QVERIFY(widget.item(2, 1) != nullptr && cell(0, 1).isNull());
    }

    void displaysInPart()
    {
        Table table(18000, {qQNaN()});
        table.append(QVector<double>(9000, 1)); // a few bytes, 162 million cells
        QTableWidget widget;
        csvDisplay(&widget, table, {"a"});
        csvDisplayAppend(&widget, {8});
        QCOMPARE(csvFullSize(&widget), QSize(9000, 18002));
        QCOMPARE(csvCellText(&widget, 18001, 0) + csvCellText(&widget, 17999, 0), "8nan");
        widget.setCurrentCell(17000, 0);
        csvDisplay(&widget, Table(18000, {1, 2}), {"a", "b", "c"}); // with items, others go
        QVERIFY(widget.currentRow() == 17000 && !csvFullSize(&widget).isValid());
    }

    void showsTables_data()
    {
        const Rows<TableExtent, QSize, QSize> row("extent", "withoutItems", "inPart");
        row("no rows", {3, 0, 0, 3}, {3, 0}, {3, 0});
        row("a million cells", {1000, 1000, million, 0}, {1000, 1000}, {1000, 1000});
        row("one row more", {1000, 1001, 1'001'000, 0}, {1000, 1001}, {1000, 1000});
        row("half full", {1000, 2000, million, 0}, {1000, 2000}, {500, 2000});
        row("names", {600, 10'000, 10'000, 500}, {500, 2000}, {500, 2000});
        row("many columns", {300'000, 1, 300'000, 0}, {200'000, 1}, {200'000, 1});
        row("a long row", {9000, 18'001, 27'000, 1}, {55, 18'001}, {55, 18'001});
        row("many numbers", {1000, 2000, 1'500'001, 0}, {1000, 2000}, {751, 1331});
        row("many rows", {1, 30'000'000, 30'000'000, 1}, {1, 20'000'000}, {1, million});
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
        QCOMPARE(withRowBelow({3, 5}, {9, 7}, 4).full, QSize(9, 8));
    }
};

QTEST_MAIN(TestCsv)
#include "tst_csv.moc"
