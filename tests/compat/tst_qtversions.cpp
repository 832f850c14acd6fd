// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "compat/qtversions.h"
#include "tests/support/rows.h"

#include <thread>

QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

class TestQtVersions : public QObject
{
    Q_OBJECT

private slots:
    void drawsTheSameNumbers_data()
    {
        const Rows<QVector<quint32>, QVector<int>> row("seeds", "numbers");
        row("new thread", {}, {48271, 182605794, 1291394886});
        row("seeded", {5}, {241355, 913028970, 14523489});
        row("last state", {2147483646}, {2147435376, 1964877853, 856088761});
        row("no state", {7, 2147483647}, {48271, 182605794, 1291394886});
        row("zero", {7, 0}, {48271, 182605794, 1291394886});
    }
    void drawsTheSameNumbers()
    {
        QFETCH(QVector<quint32>, seeds);
        QVector<int> drawn;
        std::thread([&] {
            for (const quint32 seed : qAsConst(seeds)) {
                qsrand(seed);
            }
            for (int number = 0; number < 3; ++number) {
                drawn.append(qrand());
            }
        }).join();
        QTEST(drawn, "numbers");
    }

    void readsWholeNumbers_data()
    {
        const Rows<QString, int> row("text", "number"); // -1 for none
        row("blanks around", "\t12 \n", 12);
        row("blanks beyond ASCII", QString(u8"\u00a012\u3000"), 12);
        row("minus sign", QString(u8"\u22122"), -2);
        row("largest", "+2147483647", INT_MAX);
        row("too large", "2147483648", -1);
        row("null character", QString("1") + QChar(0), -1);
        row("groups", "1,000", -1);
        row("fraction", "1.0", -1);
        row("hexadecimal", "0x1", -1);
        row("empty", "", -1);
    }
    void readsWholeNumbers()
    {
        QFETCH(QString, text);
        bool isNumber = false;
        const int number = wholeNumber(text, &isNumber);
        QTEST(isNumber ? number : -1, "number");
    }

    void writesSignificantDigits_data()
    {
        const Rows<int, QVector<double>, QString> row("digits", "numbers", "texts");
        const QVector<double> numbers{1e5, -3e5, 1.2e5, 1e6, 4e-4, 1e-5, 0.1 + 0.2, -0.5, qInf()};
        row("without loss", QLocale::FloatingPointShortest, numbers,
            "100000 -300000 120000 1e+06 0.0004 1e-05 0.30000000000000004 -0.5 inf");
        row("one", 1, numbers, "1e+05 -3e+05 1e+05 1e+06 0.0004 1e-05 0.3 -0.5 inf");
        row("six", 6, numbers, "100000 -300000 120000 1e+06 0.0004 1e-05 0.3 -0.5 inf");
    }
    void writesSignificantDigits()
    {
        QFETCH(int, digits);
        QFETCH(QVector<double>, numbers);
        QStringList texts;
        for (const double number : qAsConst(numbers)) {
            texts.append(significantDigits(number, digits));
        }
        QTEST(texts.join(' '), "texts");
    }
};

QT_WARNING_POP

QTEST_APPLESS_MAIN(TestQtVersions)
#include "tst_qtversions.moc"
