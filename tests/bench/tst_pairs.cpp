// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/pairs.h"
#include "tests/support/rows.h"

#include <limits>

Q_DECLARE_METATYPE(Verdict)

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

} // namespace

/// What measured ratios say.
class TestPairs : public QObject
{
    Q_OBJECT

private slots:
    void interval_data();
    void interval();
    void errorsOfLooks();
    void verdict_data();
    void verdict();
};

/// Ranks as of the table of the sign test.
void TestPairs::interval_data()
{
    const Rows<int, double, double, double, double> row("count", "error", "median", "low", "high");
    row("too few", 7, 0.01, 4, -infinity, infinity);
    row("least and greatest", 8, 0.01, 4.5, 1, 8);
    row("one left out on each side", 12, 0.01, 6.5, 2, 11);
    row("20 at 95 %", 20, 0.05, 10.5, 6, 15);
    row("100 at 95 %", 100, 0.05, 50.5, 40, 61);
    row("2^-count is 0 in a double", 2000, 0.05, 1000.5, 956, 1045);
}

void TestPairs::interval()
{
    QFETCH(int, count);
    QFETCH(double, error);
    std::vector<double> ratios;
    for (int ratio = count; ratio > 0; --ratio) {
        ratios.push_back(ratio);
    }
    const MedianInterval found = medianInterval(ratios, error);
    QTEST(found.median, "median");
    QTEST(found.low, "low");
    QTEST(found.high, "high");
}

void TestPairs::errorsOfLooks()
{
    double sum = 0.0;
    for (int look = 1; look < 100; ++look) {
        sum += errorOfLook(look);
    }
    QVERIFY(sum > 0.0195 && sum <= 0.02);
}

void TestPairs::verdict_data()
{
    const Rows<double, double, bool, Verdict> row("low", "high", "isBusy", "verdict");
    row("below the bar", 1.0, 1.2, true, Verdict::Kept);
    row("a little above the bar", 1.22, 1.3, false, Verdict::Undecided);
    row("above the bar", 1.23, 1.3, false, Verdict::Missed);
    row("above the bar, busy", 1.28, 1.3, true, Verdict::Undecided);
    row("far above, busy", 1.29, 1.3, true, Verdict::Missed);
    row("around the bar", 1.1, 1.3, false, Verdict::Undecided);
    row("nothing known", -infinity, infinity, false, Verdict::Undecided);
}

void TestPairs::verdict()
{
    QFETCH(double, low);
    QFETCH(double, high);
    QFETCH(bool, isBusy);
    const Verdict found = verdictOf({1.15, low, high}, 1.2, isBusy);
    QTEST(found, "verdict");
}

QTEST_GUILESS_MAIN(TestPairs)

#include "tst_pairs.moc"
