// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/csvexport.h"
#include "tests/support/projectbytes.h"
#include "tests/support/studyfiles.h"

#include <QtTest>

#include <numeric>
#include <sys/resource.h>

class TestProjectFile : public QObject
{
    Q_OBJECT

    static ProjectItems someItems()
    {
        ProjectItems i;
        const QStringList texts{"OFV", "", QString(), u8"θ1 \U0001d6c0"};
        i.rawResultsHeaders = {texts, {}};
        i.possibleDoses = i.upperBound = "";
        i.endPointExpressions = i.weightExpressions = i.doseChoiceLabels = texts;
        i.omegas = {{{1.5, qQNaN()}, {}, {qInf(), -qInf(), -0.0}}, {}, {{5e-324}}};
        i.omegaColumns = {{{1, INT_MIN}, {}}, {}};
        i.rawResults = i.doseChoiceCash = {i.omegas, {}, {{}, {{-1e308}}}};
        i.logScale = true;
        i.populationSummary = i.averageOrSelection = 0x01020304;
        i.doseChoice = {i.doseChoiceVector = i.omegas.at(0).at(2), {}};
        return i;
    }
    static int decode(const QByteArray& file)
    {
        ProjectItems items;
        return readItemCount(file, items);
    }

private slots:
    void reads()
    {
        const auto [full, itemEnds] = ProjectBytes(someItems());
        QCOMPARE(decode(full + "more"), 17);
        for (int size = 0, item = 0; size <= full.size(); ++size) {
            item += int(item < 17 && size == itemEnds.at(item + 1));
            QCOMPARE(decode(full.left(size)), item);
        }
        // clang-format off
        const std::pair<const char*, int> files[] = {
            {"00000002 00000000 00000000", 1}, {"00000003 00000000 00000000", 0}, // one model too many
            {"00000001 00000001 00000001 ffffffff 00", 0}, {"00000000 00000000 00000003 61626364", 2},
            {"00000000 00000000 fffffffe 61626364", 2}};
        // clang-format on
        for (const auto& [hex, items] : files) {
            QCOMPARE(decode(QByteArray::fromHex(hex)), items);
        }
        QRandomGenerator random(7);
        for (int round = 0; round < 6000; ++round) {
            QByteArray file = full;
            for (char& byte : file) { // small counts go deepest
                const int noise = random.bounded(256) >> random.bounded(31);
                byte = char(round % 2 == 0 ? noise : byte ^ (random.bounded(99) == 0 ? noise : 0));
            }
            QVERIFY2(decode(file) >= 0, file.toHex());
        }
    }
    void knowsProjectsByTheirStart()
    {
        const QByteArray full = ProjectBytes(someItems()).bytes;
        const QByteArray none = ProjectBytes({}).bytes;
        for (const int size : {16, 17, full.size()}) {
            QVERIFY(startsAsProject(full.left(size), full.size()));
        }
        QVERIFY(startsAsProject(none, none.size()));
        // clang-format off
        for (const QByteArray& file : {QByteArray(), full.left(3), QByteArray("ofv,THETA1\n1,2\n"),
                 QByteArray("\0\0\0\1\0\0\0\1\0\0\0\1\0\0\0\2 one double", 27),
                 QByteArray("\0\0\0\1ftypmp42 and a whole film", 29)}) {
            QVERIFY2(!startsAsProject(file, file.size()), file);
        }
        // clang-format on
    }
    void writes()
    {
        ProjectItems items;
        QVector<int> sizes(288); // with which what comes behind crosses the end of a buffer
        std::iota(sizes.begin(), sizes.end(), 524000);
        for (const int large : sizes + QVector<int>{0, 700000}) { // that is several buffers
            items = someItems();
            items.upperBound = QString(large, 'x');
            items.doseChoiceVector += QVector<double>(large == 700000 ? large : 0, 0.1);
            QBuffer buffer;
            QVERIFY(!writeProject(items, &buffer) && buffer.open(QIODevice::WriteOnly));
            QVERIFY(writeProject(items, &buffer) && buffer.data() == ProjectBytes(items).bytes);
            QFile disk("/dev/full");
            QVERIFY(!disk.open(QIODevice::WriteOnly) || !writeProject(items, &disk));
        }
        const QTemporaryDir folder;
        const QString path = folder.filePath("export.csv");
        QTemporaryFile limited;
        rlimit usual{};
        QVERIFY(limited.open() && getrlimit(RLIMIT_FSIZE, &usual) == 0 && writeFile(path, "old"));
        const rlimit small{1000, usual.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
        // The signal that a write beyond the limit sends would end the test.
        const bool isWritten =
            writeProject(items, &limited) || writeFile(path, QByteArray(2000, 'x'));
        setrlimit(RLIMIT_FSIZE, &usual);
        QVERIFY(!isWritten && contentOf(path) == "old");
    }
};

QTEST_APPLESS_MAIN(TestProjectFile)
#include "tst_projectfile.moc"
