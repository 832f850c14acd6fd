// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/csv.h"
#include "io/csvexport.h"
#include "tests/support/studyfiles.h"

#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

using Table = QVector<QVector<double>>;

class TestCsv : public QObject
{
    Q_OBJECT

    QTemporaryDir folder;
    const QString path = folder.filePath("table.csv");
    QByteArray content() const { return contentOf(path); }

private slots:
    void reads()
    {
        // clang-format off
        const QByteArray toBorder((1 << 20) - 3, 'x'); // files are read in pieces of this size
        const std::pair<QByteArray, QByteArray> files[] = { // and rows, as csvwrite gives them
            {toBorder + ",1\r\n2,\n3", "nan,1\n2,nan\n3\n"}, {"4\n" + toBorder + "56", "4\nnan\n"},
            {toBorder + toBorder + "\n7,\n", "nan\n7,nan\n"}, {"8\n" + toBorder + "\xc3\xa4,9", "8\nnan,9\n"},
            {"", ""}, {"1,2,,x", "1,2,nan,nan\n"}, {"\"a\",b\n3,-4.5\n", "nan,nan\n3,-4.5\n"},
            {"\n1,2\r\n3\r\n\r\n4\r", "nan\n1,2\n3\nnan\n4\n"}, {"1,\n2,", "1,nan\n2,nan\n"},
            {"1\r2,3\r,\r4\r\r\n", "nan,3,4\n"}, {" 1\t,+2,- 3,-4,\"5\"", "1,2,nan,-4,nan\n"},
            {"1e2,1E-2,1e,e1,1e400", "100,0.01,nan,nan,nan\n"}, {"0,0.0,0e9,1e-400", "0,0,0,nan\n"},
            {"inf,-inf,nan,0x1p3", "inf,-inf,nan,nan\n"}, {QByteArray("1\0,2", 4), "nan,2\n"},
            {"\xef\xbb\xbf\x31,2\r\n3,\n\n", "1,2\n3,nan\nnan\n"},
            {QByteArray("\xff\xfe\x37\0,\0\x38\0\n\0\x39\0", 12), "7,8\n9\n"}};
        // clang-format on
        const QString source = folder.filePath("source.csv");
        for (const auto& [file, rows] : files) {
            QFile written(source);
            QVERIFY(written.open(QIODevice::WriteOnly) && written.write(file) == file.size());
            written.close();
            csvwrite(path, csvReadToDouble(source));
            QCOMPARE(content(), rows);
            csvwrite(path, csvWithHeaderReadToDouble(source));
            QCOMPARE(content(), rows.mid(rows.indexOf('\n') + 1));
            const QStringList header = csvWithHeaderReadHeader(source);
            QCOMPARE(header.isEmpty(), file.isEmpty());
            QVERIFY(!file.startsWith('"') || header == QStringList({"\"a\"", "b"}));
        }
    }
    void writes()
    {
        const QString pipe = folder.filePath("pipe");
        QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
        for (const QString& name : {QString(), folder.path(), folder.filePath("missing"), pipe}) {
            QVERIFY(csvReadToDouble(name).isEmpty() && csvWithHeaderReadHeader(name).isEmpty());
        }
        QTableWidget widget; // without rows
        for (int writer = 0; writer < 4; ++writer) {
            QTest::ignoreMessage(QtDebugMsg, "Error, unable to save");
        }
        csvwrite(folder.path(), Table{{1}});
        csvwrite(folder.path(), Table{{1}}, {});
        csvwrite(folder.path(), &widget);
        csvwrite(folder.path(), &widget, 0);

        csvwrite(path, Table{{1, 2.5}, {}, {1234567, 1e-5}});
        QCOMPARE(content(), QByteArray("1,2.5\n\n1.23457e+06,1e-05\n"));
        csvwrite(path, Table{{1}}, {"a", "b", "c"});
        QCOMPARE(content(), QByteArray("c\n1\n"));
        csvwrite(path, Table{{1}}, {});
        QCOMPARE(content(), QByteArray("\n1\n"));
        csvwrite(path, Table(), {"a"});
        QVERIFY(content().isEmpty());
        csvwrite(path, &widget);
        QVERIFY(content().isEmpty());
    }
    void exports()
    {
        const TextRows rows{{"ofv", "a,b", "\"q\""}, {"1\t2", "", "x\r\ny"}, {}, {u8"θ\n"}};
        QCOMPARE(tabSeparated(rows), QString(u8"ofv\ta,b\t\"q\"\n1 2\t\tx  y\n\nθ "));
        const QByteArray lines =
            u8"ofv,\"a,b\",\"\"\"q\"\"\"\r\n1\t2,,\"x\r\ny\"\r\n\r\n\"θ\n\"\r\n";
        QCOMPARE(commaSeparated(rows), lines);
        QVERIFY(tabSeparated({}).isEmpty() && commaSeparated({}).isEmpty());

        QVERIFY(writeFile(path, "old and long") && writeFile(path, lines) && content() == lines);
        for (const QString& name :
             {folder.path(), folder.filePath("none/a"), QString("/dev/full")}) {
            QVERIFY(!writeFile(name, "1"));
        }
    }
    void displays()
    {
        const std::pair<Table, QByteArray> tables[] = {
            {{{1, 2}, {3, 4, 5}}, "1,2,NaN\n3,4,5"},
            {{{1234567, 0.25, qQNaN()}, {4, 5}}, "1.23457e+06,0.25,nan\n4,5,NaN"},
            {{{1, 2}, {1, 2, 3, 4}, {5, 6, 7}}, "1,2,NaN, \n1,2,3,4\n5,6,7,NaN"},
        };
        for (const auto& [table, cells] : tables) {
            QTableWidget widget;
            // Nothing of the larger table before is left, but the current cell stays.
            csvDisplay(&widget, {{8, 8, 8, 8}, {9}, {9}}, {"a", "b", "c", "d", "e"});
            csvwrite(path, &widget);
            QCOMPARE(content(), QByteArray("8,8,8,8, \n9,NaN,NaN,NaN, \n9,NaN,NaN,NaN, "));
            widget.setCurrentCell(0, 1);
            csvDisplay(&widget, table);
            csvwrite(path, &widget);
            QCOMPARE(content(), cells);
            QCOMPARE(widget.currentColumn(), 1);
            csvDisplayAppend(&widget, {1, 2, 3, 4, 5});
            csvDisplayAppend(&widget, {6});
            csvwrite(path, &widget, table.size());
            QCOMPARE(content(), QByteArray("1,2,3,4,5\n6,NaN,NaN,NaN,NaN"));
        }
    }
    void displaysLargeTables()
    {
        QTableWidget widget;
        csvDisplay(&widget, {{7, 7}, {7, 7}});
        widget.setCurrentCell(1, 0);
        Table table(1000, QVector<double>(1000, 0.1));
        table[1].append(2);
        table.append(QVector<double>{1234567});
        csvDisplay(&widget, table, {"a"});
        QVERIFY(widget.item(1, 0) == nullptr && widget.currentRow() == 1);
        for (const auto& [row, column, text] : {std::tuple(0, 999, "0.1"),
                                                {0, 1000, ""},
                                                {1, 1000, "2"},
                                                {999, 1000, "NaN"},
                                                {1000, 0, "1.23457e+06"}}) {
            QCOMPARE(csvCellText(&widget, row, column), QString(text));
        }
        const auto width = [&widget](int row, int column) {
            return widget.itemDelegate()->sizeHint({}, widget.model()->index(row, column)).width();
        };
        QVERIFY(width(1000, 0) > width(0, 0) && width(0, 0) > width(0, 1000));
        const QModelIndex first = widget.model()->index(0, 0);
        QVERIFY(widget.itemDelegate()->createEditor(&widget, {}, first) == nullptr);
        csvDisplayAppend(&widget, {8});
        QVERIFY(widget.item(1001, 0) == nullptr && widget.item(0, 0) == nullptr);
        QCOMPARE(csvCellText(&widget, 1001, 0) + csvCellText(&widget, 0, 0), QString("80.1"));

        table.fill({qQNaN()}, 18000);
        table.append(QVector<double>(9000, 1)); // a few bytes, 162 million cells
        for (const bool named : {false, true}) {
            named ? csvDisplay(&widget, table, {"a"}) : csvDisplay(&widget, table);
            QCOMPARE(csvFullSize(&widget), QSize(9000, 18001));
            QCOMPARE(csvCellText(&widget, 18000, 54), QString("1"));
        }
        csvDisplayAppend(&widget, {8});
        QCOMPARE(csvFullSize(&widget), QSize(9000, 18002));
        QCOMPARE(csvCellText(&widget, 18001, 0) + csvCellText(&widget, 17999, 0), QString("8nan"));
        widget.setCurrentCell(17000, 0);
        csvDisplay(&widget, Table(18000, {1, 2}), {"a", "b", "c"}); // with items, others go
        QVERIFY(widget.currentRow() == 17000 && !csvFullSize(&widget).isValid());

        csvDisplay(&widget, table, {"a"});
        widget.setRowCount(1);
        QVERIFY(csvCellText(&widget, 0, 0).isNull());
        csvDisplay(&widget, {QVector<double>(200'001, 3)});
        widget.setRowCount(0);
        QVERIFY(!csvFullSize(&widget).isValid());
        csvDisplay(&widget, {{3}, {4, 5}, {6}});
        QCOMPARE(widget.item(0, 0)->text(), QString("3"));
        QVERIFY(widget.item(2, 1) != nullptr && csvCellText(&widget, 0, 1).isNull());
    }
};

QTEST_MAIN(TestCsv)
#include "tst_csv.moc"
