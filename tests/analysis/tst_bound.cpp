// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/bound.h"

#include <QtTest>

Q_DECLARE_METATYPE(Bound)

class TestBound : public QObject
{
    Q_OBJECT

private slots:
    void readsTheLowerBound_data()
    {
        QTest::addColumn<Bound>("read");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("placed");
        QTest::addColumn<double>("value");
        const auto typed = [](const char* text, bool placed = false) {
            return editedBound({text, placed, 4}, lowerSubstitute);
        };
        const auto stored = [](const char* text) { return storedBound(text, lowerSubstitute); };
        QTest::newRow("typed number") << typed("0.4") << "0.4" << false << 0.4;
        QTest::newRow("typed nothing") << typed("") << "-inf" << true << -10.0;
        QTest::newRow("typed infinity") << typed("-inf") << "-inf" << false << -qInf();
        QTest::newRow("left as placed") << typed("-inf", true) << "-inf" << true << 4.0;
        QTest::newRow("stored number") << stored("0.4") << "0.4" << false << 0.4;
        QTest::newRow("stored nothing") << stored("") << "" << false << -10.0;
        QTest::newRow("stored as placed") << stored("-inf") << "-inf" << true << -10.0;
    }
    void readsTheLowerBound()
    {
        QFETCH(Bound, read);
        QTEST(read.text, "text");
        QTEST(read.placed, "placed");
        QTEST(read.value, "value");
    }
};

QTEST_APPLESS_MAIN(TestBound)
#include "tst_bound.moc"
