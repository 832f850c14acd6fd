// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/csvexport.h"
#include "tests/support/projectbytes.h"
#include "tests/support/rows.h"
#include "tests/support/studyfiles.h"

#include <sys/resource.h>

/// Takes a part of what is written at a time.
class Trickle : public QBuffer
{
protected:
    qint64 writeData(const char* bytes, qint64 count) override
    {
        return QBuffer::writeData(bytes, qMin(count, 70001LL));
    }
};

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
    void readsWhatIsThere()
    {
        const auto [full, itemEnds] = ProjectBytes(someItems());
        QVERIFY(startsAsProject(full.left(16), full.size()));
        QCOMPARE(decode(full + "more"), 17);
        for (int size = 0, item = 0; size <= full.size(); ++size) {
            item += int(item < 17 && size == itemEnds.at(item + 1));
            QCOMPARE(decode(full.left(size)), item);
        }
    }

    void keepsItsBytes()
    {
        const QByteArray file = ProjectBytes(someItems()).bytes;
        QCOMPARE(QCryptographicHash::hash(file, QCryptographicHash::Md5).toHex(),
                 "3d244b65435605e26b970d492d5516be");
        QBuffer again;
        again.open(QIODevice::WriteOnly);
        const auto* data = reinterpret_cast<const uchar*>(file.constData());
        QVERIFY(writeProject(readProject(data, file.size()).items, &again));
        QCOMPARE(again.data(), file);
    }

    void refusesWhatCannotBe_data()
    {
        const Rows<QByteArray, int> row("hex", "items");
        row("as many models as can be", "00000002 00000000 00000000", 1);
        row("one model too many", "00000003 00000000 00000000", 0);
        row("negative count", "00000001 00000001 00000001 ffffffff 00", 0);
        row("half a character", "00000000 00000000 00000003 61626364", 2);
        row("text longer than the file", "00000000 00000000 fffffffe 61626364", 2);
    }
    void refusesWhatCannotBe()
    {
        QFETCH(QByteArray, hex);
        QTEST(decode(QByteArray::fromHex(hex)), "items");
    }

    void knowsProjectsByTheirStart_data()
    {
        const Rows<QByteArray, bool> row("file", "isProject");
        row("project without results", ProjectBytes({}).bytes, true);
        row("numbers to the end",
            QByteArray("\0\0\0\1\0\0\0\1\0\0\0\1\0\0\0\2 sixteen bytes..", 32), true);
        row("part of a count", QByteArray(3, '\0'), false);
        row("number missing", QByteArray("\0\0\0\1\0\0\0\1\0\0\0\1\0\0\0\2 one double", 27), false);
        row("film", QByteArray("\0\0\0\1ftypmp42 and a whole film", 29), false);
    }
    void knowsProjectsByTheirStart()
    {
        QFETCH(QByteArray, file);
        QTEST(startsAsProject(file.left(16), file.size()), "isProject");
    }

    void writes()
    {
        // Texts with which what comes behind crosses the end of a buffer, and several buffers.
        for (int length = 524000; length <= 524290; ++length) {
            ProjectItems items = someItems();
            items.upperBound = QString(length < 524290 ? length : 0, 'x');
            items.doseChoiceVector += QVector<double>(length < 524290 ? 0 : 700000, 0.1);
            Trickle buffer;
            QVERIFY(!writeProject(items, &buffer)); // not open yet
            buffer.open(QIODevice::WriteOnly);
            QVERIFY(writeProject(items, &buffer));
            QVERIFY2(buffer.data() == ProjectBytes(items).bytes, QByteArray::number(length));
        }
        QFile full("/dev/full");
        QVERIFY(!full.open(QIODevice::WriteOnly) || !writeProject(someItems(), &full));
    }

    void givesUpAtALimitOfSizes()
    {
        const StudyFiles files{};
        const QString path = files.path("export.csv");
        QFile limited(files.path("project"));
        rlimit usual{};
        QVERIFY(limited.open(QIODevice::WriteOnly) && writeFile(path, "old"));
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &usual), 0);
        const rlimit small{100, usual.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
        // The signal that a write beyond the limit sends would end the test.
        const bool isWritten =
            writeProject(someItems(), &limited) || writeFile(path, QByteArray(2000, 'x'));
        setrlimit(RLIMIT_FSIZE, &usual);
        QVERIFY(!isWritten && contentOf(path) == "old");
    }
};

QTEST_APPLESS_MAIN(TestProjectFile)
#include "tst_projectfile.moc"
