// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/windowtest.h"

class TestNumbers : public WindowTest
{
    Q_OBJECT

private slots:
    void readAlikeInEveryLanguage_data()
    {
        QTest::addColumn<QLocale>("language");
        QTest::newRow("Persian digits") << QLocale("fa_IR");
        QTest::newRow("Arabic digits") << QLocale("ar_EG");
        QTest::newRow("decimal comma") << QLocale("de_DE");
    }
    void readAlikeInEveryLanguage()
    {
        QFETCH(QLocale, language);
        QLocale::setDefault(language);
        openWindow();
        importPairs();
        edit("_1_tw_endPoints", 0, 0, "THETA1*exp(ETA1)"); // asks for individuals
        const auto* individuals = the<QSpinBox>("_1_sb_numSimulations");
        QCOMPARE(individuals->text(), "100");
        type("_1_sb_numSimulations", "1050");
        QCOMPARE(individuals->text(), "1050");
        QCOMPARE(individuals->value(), 1050);
        QCOMPARE(the<QCustomPlot>("_0_cp_rawResHistoGram")->locale().toString(0.5), "0.5");
    }
};

QTEST_MAIN(TestNumbers)
#include "tst_numbers.moc"
