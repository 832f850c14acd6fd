// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/windowtest.h"

class TestUnusual : public WindowTest
{
    Q_OBJECT

private slots:
    void languages_data()
    {
        QTest::addColumn<QLocale>("language");
        QTest::newRow("Persian digits") << QLocale("fa_IR");
        QTest::newRow("decimal comma") << QLocale("de_DE");
    }
    void languages()
    {
        QFETCH(QLocale, language);
        QLocale::setDefault(language);
        openWindow();
        importPairs();
        edit("_1_tw_endPoints", 0, 0, "THETA1*exp(ETA1)"); // asks for individuals
        type("_1_sb_numSimulations", "1050");
        QCOMPARE(the<QSpinBox>("_1_sb_numSimulations")->text(), "1050");
        QCOMPARE(the<QCustomPlot>("_0_cp_rawResHistoGram")->locale().toString(0.5), "0.5");
    }

    void headingOfMillionNamesLikeThoseOfErrors()
    {
        QStringList names; // reading each for itself would exceed the time of a test
        for (int column = 1; column <= 1'000'000; ++column) {
            names.append(QString("sensor%1").arg(column));
        }
        const QString last = describeColumns(20'000, names, {}, 1, 2).last();
        QCOMPARE(last, "COL20000, read as THETA19999, named sensor20000");
    }
};

QTEST_MAIN(TestUnusual)
#include "tst_unusual.moc"
