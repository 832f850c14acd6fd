// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/projectbytes.h"

#include <QtTest>

#include <numeric>

/// Takes a part of what is written at a time, and nothing more once it is full.
class Trickle : public QBuffer
{
public:
    int capacity = INT_MAX;

protected:
    qint64 writeData(const char* bytes, qint64 count) override
    {
        return QBuffer::writeData(bytes, qBound(0, capacity - int(pos()), qMin(int(count), 7001)));
    }
};

class TestPartialWrites : public QObject
{
    Q_OBJECT

private slots:
    void keepEveryByteOrFail()
    {
        ProjectItems items;
        QVector<double> numbers(300000); // several buffers
        std::iota(numbers.begin(), numbers.end(), 0.5);
        items.rawResults = {{{numbers}}};
        items.upperBound = "inf";
        const QByteArray bytes = ProjectBytes(items).bytes;
        for (const int missing : {0, 1, 5000, 1500000}) {
            Trickle device;
            device.capacity = bytes.size() - missing;
            QVERIFY(device.open(QIODevice::WriteOnly));
            QCOMPARE(writeProject(items, &device), missing == 0);
            QVERIFY(device.data() == bytes.left(device.capacity));
        }
    }
};

QTEST_APPLESS_MAIN(TestPartialWrites)
#include "tst_partialwrites.moc"
