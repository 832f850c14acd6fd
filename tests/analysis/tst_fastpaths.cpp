// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/calculation.h"
#include "analysis/truth.h"
#include "model/randomng.h"
#include "tests/support/compare.h"
#include "tests/support/logcapture.h"
#include "tests/support/randomnumbers.h"
#include "tests/support/rows.h"

constexpr int studySamples = 150; // more than are evaluated ahead at a time

/// Models with and without ETAs, of which each lacks one sample more.
static Study unevenStudy(int individuals)
{
    Study study;
    for (const char* expression : {"COL1*DOSE+ETA1", "COL1+DOSE", "COL1*exp(ETA1)+ETA2"}) {
        endPoint model;
        model.endPointParser = parser(expression);
        model.populationSummary = study.endPoints.size() == 2 ? 50 : -1;
        model.numSimulations = individuals;
        model.bringUpToDate({0, 1, 3});
        model.checkETA();
        for (int eta = 0; eta < model.numEtas; ++eta) {
            model.omega[eta][eta] = 0.5 + eta;
        }
        Table samples;
        for (int sample = study.endPoints.size(); sample < studySamples; ++sample) {
            samples.append(QVector<double>{sample * 0.1});
        }
        study.endPoints.append(model);
        study.rawResults.append({samples});
    }
    return study;
}

/// What is computed quickly agrees with the plain way in every bit.
class TestFastPaths : public QObject
{
    Q_OBJECT

private slots:
    void evaluatesAhead_data()
    {
        const Rows<int, int> row("individuals", "asked");
        row("all samples", 31, studySamples);
        row("given up, random numbers given back", 100, 37);
        row("too much work for one piece", 60000, 2);
        row("too many numbers for all doses at once", 180000, 1);
    }
    void evaluatesAhead()
    {
        QFETCH(int, individuals);
        QFETCH(int, asked);
        Study study = unevenStudy(individuals);
        Table weights(studySamples, {0.5, 0.25, 0.25});
        weights[3] = {1, 0, 0};
        auto run = std::make_unique<EndpointRun>(study, 0, averagingPlan(weights, true, 3));
        seedRandomNumbers(5);
        for (int sample = 0; sample < asked; ++sample) {
            run->evaluateNext();
        }
        const QVector<Table> ahead = run->endpoints();
        run.reset();
        const double nextNumber = nextUniform();

        seedRandomNumbers(5);
        QVector<Table> plain(3);
        for (int sample = 0; sample < asked; ++sample) {
            for (int model = 0; model < 3; ++model) {
                const QVector<double> row = study.rawResults.at(model).first().value(sample);
                const bool counts = weights.at(sample).at(model) > 0 && !row.isEmpty();
                plain[model].append(counts ? study.endPoints[model].evaluateEndpoint(row)
                                           : QVector<double>());
            }
        }
        QVERIFY(almostEqual(ahead, plain, 0));
        QCOMPARE(nextNumber, nextUniform());
    }

    void countsRandomNumbers_data()
    {
        const Rows<bool, bool, bool> row("selecting", "individualOfv", "cached");
        row("averaging", false, true, false);
        row("averaging, one OFV, cached", false, false, true);
        row("selection", true, true, false);
        row("selection, one OFV", true, false, false);
        row("selection, cached", true, true, true);
    }
    void countsRandomNumbers()
    {
        QFETCH(bool, cached);
        Study study = unevenStudy(10);
        study.endPoints.append(study.endPoints.first()); // without a weight
        study.rawResults.append(study.rawResults.first());
        study.rawResultsHeaders.resize(4);
        study.endPoints[0].omegaColumns[0][0] = 0; // 0 in the first sample
        study.endPoints[0].weightParser.expression = "10-COL1";
        study.endPoints[1].weightParser.expression = "9-COL1";
        study.endPoints[2].weightParser.expression = "9-(COL1-7)^0.5"; // NaN below 7
        study.doses = study.endPoints.first().doses;
        QFETCH(bool, selecting);
        QFETCH(bool, individualOfv);
        study.selecting = selecting;
        study.individualOfv = individualOfv;
        EndpointCache::Entries entries;
        EndpointCache cache(entries);
        const qint64 count = randomNumberCount(study, 0, cached);
        seedRandomNumbers(5);
        probabilityCurve(study, 0, cached ? &cache : nullptr);
        QVERIFY(count > 0);
        QCOMPARE(randomPosition(), std::make_optional(randomPositionAfter(5, quint64(count))));
        QCOMPARE(randomNumberCount(study, 1), qint64(0));
        seedRandomNumbers(5);
        theoreticalMeds(study, {{4}, {}}, {2, 0}, [](int) { return true; });
        const qint64 ofTruth =
            randomNumberCountOfMed(study, {4}, 2) + randomNumberCountOfMed(study, {}, 0);
        QCOMPARE(randomPosition(), std::make_optional(randomPositionAfter(5, quint64(ofTruth))));
    }

    void boundsWhatIsAhead_data()
    {
        const Rows<QString, int, int> row("expression", "individuals", "samplesAhead");
        row("without ETAs", "(DOSE)", 10000, 64);
        row("omega of zeros", "(ETA1)+DOSE", 10000, 1);
        row("long expression", QString("(DOSE)+").repeated(2000) + "1", 1, 26);
        row("malformed and slow", "ETA1+DOSE+", 1000, 1);
    }
    void boundsWhatIsAhead()
    {
        QFETCH(QString, expression);
        QFETCH(int, individuals);
        const QVector<double> doses(101, 1);
        Study study;
        study.endPoints.resize(2);
        study.endPoints[0].endPointParser.expression = expression;
        study.endPoints[0].numSimulations = individuals;
        study.endPoints[1].endPointParser.expression = "(DOSE)(DOSE)DOSE"; // reports each time
        bringUpToDate(study.endPoints, doses);
        study.rawResults = RawResults(2, {Table(studySamples, {0})});
        EndpointRun run(study, 0, completePlan(studySamples, 2));
        const LogCapture log;
        run.evaluateNext();
        QTEST(int(log.messages().size() / doses.size()), "samplesAhead");
    }
};

QTEST_APPLESS_MAIN(TestFastPaths)
#include "tst_fastpaths.moc"
