// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/calculation.h"
#include "analysis/certainty/averagedendpoint.h"
#include "analysis/certainty/certaintytables.h"
#include "analysis/certainty/contributions.h"
#include "analysis/certainty/endpointcsv.h"
#include "analysis/certainty/sensitivity.h"
#include "tests/support/compare.h"
#include "tests/support/randomnumbers.h"
#include "tests/support/rows.h"

#include <QBuffer>

using Numbers = QVector<double>;
static const double none = qQNaN();
static const double inf = qInf();

/// Two models, four samples and two doses, whose columns show how the fits ended: the
/// first two fits of model 0 that are not left out failed, the last of model 1 is near a
/// boundary.
static Study smallStudy(bool selecting, bool individualOfv)
{
    Study study;
    study.rawResults = {{{{0, 0, 0}, {1, 1, 0}, {2, none, 0}, {3, 1, 0}}},
                        {{{0, 1, 0}, {1, 1, 0}, {2, 1, 0}, {3, 1, 1}}}};
    const QStringList names{"model", "minimization_successful", "estimate_near_boundary"};
    study.rawResultsHeaders = {names, names};
    study.endPoints.resize(2);
    study.doses = {1, 2};
    study.levels = {50, 70, 87.5};
    study.target = {0, inf};
    study.logScale = false;
    study.selecting = selecting;
    study.individualOfv = individualOfv;
    return study;
}

static const Table weightsOfModels{{0.5, 0.75, 1, 0.25}, {0.5, 0.25, 0, 0.75}};
static const QVector<Table> endpointsOfModels{{{1, 1}, {2, 2}, {-1, inf}, {-2, 3}},
                                              {{-3, 4}, {3, 5}, {}, {4, 6}}};

static Evaluation evaluationOf(const Study& study)
{
    const JudgingWeights weights =
        study.selecting
            ? JudgingWeights{weightsOfModels, {}, {0, 0, 0, 1}}
            : JudgingWeights{weightsOfModels, relativeWeights(weightsOfModels, 4, false), {}};
    QVector<Table> endpoints = endpointsOfModels;
    if (study.selecting) {
        endpoints = spreadSelected({{1, 1}, {2, 2}, {-1, inf}, {4, 6}}, {0, 0, 0, 1}, 2);
    } else if (!study.individualOfv) {
        endpoints[1][2] = {-5, 7}; // the weights of the first sample ask for it
    }
    return keepEvaluation(study, 0, weights, endpoints);
}

static void readsWhatWasWritten(const DoseStability& stability)
{
    const auto bytesOf = [](const DoseStability& written) {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << written;
        return bytes;
    };
    const QByteArray bytes = bytesOf(stability);
    for (int byte = 0; byte <= bytes.size(); ++byte) {
        DoseStability read;
        QDataStream cut(bytes.left(byte));
        cut >> read;
        QCOMPARE(bytesOf(read), byte < bytes.size() ? bytesOf({}) : bytes);
        QByteArray damaged = bytes;
        damaged[qMin(byte, bytes.size() - 1)] = char(0x7f);
        QDataStream stream(damaged);
        stream >> read;
        QVERIFY(read.med < qMax(1, read.chosen.size()) && read.nearest < read.chosen.size());
    }
}

/// Expected numbers by hand; those of resamples by NumPy's Mersenne Twister.
class TestCertainty : public QObject
{
    Q_OBJECT

private slots:
    void tellsErrors_data()
    {
        const Rows<bool, bool, Numbers> row("selecting", "individual", "errors");
        row("averaging", false, true, {18.487749324, 0});
        row("averaging, one OFV", false, false, {17.677669530, 0});
        row("selection", true, true, {21.650635095, 0});
    }
    void tellsErrors()
    {
        QFETCH(bool, selecting);
        QFETCH(bool, individual);
        const Study study = smallStudy(selecting, individual);
        QFETCH(Numbers, errors);
        QVERIFY(almostEqual(monteCarloErrors(study, evaluationOf(study)), errors, 1e-8));
    }

    void resamples_data()
    {
        const Rows<Numbers, double, QVector<int>, QVector<int>, QVector<int>, double> row(
            "hits", "level", "chosen", "medOftenLowerUpper", "ties", "needed");
        const Numbers weighed{0.5, 1, 1, 1, 0, 0.5, 0.75, 1};
        row("clear", weighed, 50, {1117, 877, 6}, {0, 0, 0, 1}, {}, 140);
        row("between doses", weighed, 70, {406, 1492, 102}, {1, 1, 0, 2}, {}, 28.9256198347);
        row("equal to the level", weighed, 87.5, {39, 582, 1379}, {2, 2, 1, 2}, {1}, inf);
        const Numbers counted{0, 1, 1, 1, 0, 1, 1, 1};
        row("counts that equal the level", counted, 50, {592, 1408, 0}, {1, 1, 0, 1}, {0}, inf);
        row("all agree", {1, 1, 1, 1, 1, 1, 1, 1}, 75, {2000, 0, 0}, {0, 0, 0, 0}, {}, 0);
    }
    void resamples()
    {
        QFETCH(Numbers, hits); // [sample][dose]
        QFETCH(double, level);
        QFETCH(QVector<int>, medOftenLowerUpper);
        QFETCH(double, needed);
        Grid grid(4, 2);
        grid.values = hits;
        const Numbers probability{25 * (hits[0] + hits[2] + hits[4] + hits[6]),
                                  25 * (hits[1] + hits[3] + hits[5] + hits[7])};
        const auto found = doseStability(grid, 4, probability, {99, level});
        const DoseStability& stability = found.value().at(1);
        QTEST(stability.chosen, "chosen");
        QCOMPARE(
            (QVector<int>{stability.med, stability.mostOften, stability.lower, stability.upper}),
            medOftenLowerUpper);
        QTEST(stability.ties, "ties");
        QVERIFY(almostEqual(stability.samplesNeeded, needed));
        readsWhatWasWritten(stability);
        QVERIFY(!doseStability(Grid(10000, 2), 10000, {0, 0}, {1}, [] { return false; }));
        // Counts that would take gigabytes are left out.
        const Numbers many(100000, 0.0);
        QVERIFY(doseStability(Grid(1, 100000), 1, many, many).value().isEmpty());
    }

    void leavesFitsOut_data()
    {
        const Rows<bool, bool, int, Table> row("selecting", "individual", "choice", "expected");
        const Numbers all{56.25, 100};
        row("all", false, true, 0, {{4, 0, 0}, all, all, all, {1, 2, 2}});
        row("successful", false, true, 1,
            {{4, 2, 1}, {43.75, 75}, {43.75, 62.5}, {56.25 + 25, 100}, {2, 2, none}});
        row("away from a boundary", false, true, 2,
            {{4, 3, 1}, {25, 75}, {25, 43.75}, {81.25, 100}, {2, 2, none}});
        row("without the original fit", false, true, 3,
            {{3, 0, 0}, {175 / 3.0, 100}, {175 / 3.0, 100}, {175 / 3.0, 100}, {1, 2, 2}});
        row("one OFV", false, false, 2, {{4, 3, 0}, {25, 100}, {25, 62.5}, {62.5, 100}, {2, 2, 2}});
        row("selection without the others' endpoints", true, true, 1,
            {{4, 2, 0}, {none, none}, {50, 50}, {100, 100}, {none, none, none}});
    }
    void leavesFitsOut()
    {
        QFETCH(bool, selecting);
        QFETCH(bool, individual);
        QFETCH(int, choice);
        QFETCH(Table, expected); // counts, three probabilities, MEDs
        const Study study = smallStudy(selecting, individual);
        const QVector<Sensitivity> found = sensitivityToFits(study, evaluationOf(study));
        QCOMPARE(found.size(), 4);
        const Sensitivity& chosen = found.at(choice);
        const Numbers counts{double(chosen.samples), double(chosen.removedFits),
                             double(chosen.samplesWithoutModel)};
        QVERIFY(
            almostEqual(Table{counts, chosen.renormalised.probability, chosen.ifMissed.probability,
                              chosen.ifHit.probability, chosen.renormalised.meds},
                        expected));
    }

    /// A curve that was given up, and models with more and less rows than others.
    void takesUnevenSamples()
    {
        Study study = smallStudy(false, false);
        JudgingWeights weights{{{1, 1, 1, 1}, {1}}, Table(4, {0.5, 0.5}), {}};
        const QVector<Table> shown{{{1, 1}, {1, 1}, {1, 1}}, {{-1, -1}, {}, {}}};
        const Evaluation evaluation = keepEvaluation(study, 0, weights, shown);
        const QVector<Sensitivity> found = sensitivityToFits(study, evaluation);
        QVERIFY(almostEqual(found.at(0).renormalised.probability, {50, 50}));
        QVERIFY(almostEqual(found.at(3).renormalised.probability, {50, 50}));
        QCOMPARE(found.at(1).samplesWithoutModel, 0);
    }

    void findsNoErrorWhereAllAgree()
    {
        Study study = smallStudy(false, true);
        study.doses.fill(1, 40);
        const Table weights{{0.1, 0.2, 0.7}, {0.7, 0.1, 0.2}, {1 / 3.0, 1 / 3.0, 1 / 3.0}};
        const QVector<Table> inside(3, Table(3, Numbers(40, 1.0)));
        const Evaluation evaluation = keepEvaluation(study, 0, {{}, weights, {}}, inside);
        QCOMPARE(monteCarloErrors(study, evaluation), Numbers(40, 0.0));
    }

    void partsTheProbability()
    {
        const Study study = smallStudy(false, true);
        const Contributions found = contributionsOf(study, evaluationOf(study));
        QVERIFY(almostEqual(found.parts, {{31.25, 25}, {62.5, 37.5}}));
        QVERIFY(almostEqual(found.meanWeights, {0.625, 0.375}));
        QVERIFY(almostEqual(found.bestShares, {75, 25}));
        QVERIFY(almostEqual(found.effectiveModels, 1.55));
        QCOMPARE(found.dominatedShare, 25.0);
    }

    void averagesEndpoints()
    {
        const Study study = smallStudy(false, true);
        const AveragedEndpoint found = averagedEndpoint(study, evaluationOf(study));
        QVERIFY(almostEqual(found.all.at(0).quantiles, {-3, -1, 1, 2, 4}));
        QCOMPARE(found.all.at(0).mean, 0.6875);
        QCOMPARE(found.all.at(1).excluded, 25.0);
        QCOMPARE(found.byModel.at(0).at(1).excluded, 40.0);
        QCOMPARE(found.byModel.at(0).at(1).quantiles.last(), 3.0);
    }

    void writesEndpoints()
    {
        const Study study = smallStudy(false, true);
        const JudgedResult result{7, study, {}, evaluationOf(study), {}};
        QBuffer file;
        file.open(QIODevice::WriteOnly);
        JudgedResult named = result;
        named.made.endPoints[1].name = "a,\"b\"";
        const auto at = [&](int) { return named; };
        QVERIFY(writeEndpoints(file, 1, at, [](int) { return true; }));
        const QByteArrayList lines = QByteArray(file.data()).replace("\r\n", "\n").split('\n');
        QCOMPARE(lines.size(), 1 + 7 * 2 + 1); // one sample of model 1 was not evaluated
        QCOMPARE(lines.at(0), "data_set,model,sample,dose,endpoint,weight,selected,in_target");
        QCOMPARE(lines.at(3), "7,\"a,\"\"b\"\"\",0,1,-3,0.5,0,0");
        QCOMPARE(lines.at(10), "7,,2,2,Inf,1,1,1");
        QVERIFY(!writeEndpoints(file, 1, at, [](int) { return false; }));
    }

    void changesNoResult_data()
    {
        const Rows<bool, bool> row("selecting", "cached");
        row("averaging", false, false);
        row("averaging, cached", false, true);
        row("selection", true, false);
        row("selection, cached", true, true);
    }
    void changesNoResult()
    {
        QFETCH(bool, selecting);
        QFETCH(bool, cached);
        Study study = smallStudy(selecting, true);
        for (endPoint& model : study.endPoints) {
            model.endPointParser = parser("DOSE*COL1-ETA1+COL3");
            model.weightParser = parser("COL1*COL1-COL1+1+COL3");
            model.checkETA();
            model.omega = {{1.5}};
        }
        bringUpToDate(study.endPoints, study.doses);
        EndpointCache::Entries entries;
        EndpointCache cache(entries);
        EndpointCache* used = cached ? &cache : nullptr;
        seedRandomNumbers(7);
        const auto plain = probabilityCurve(study, 0, used);
        const auto position = randomPosition();
        cache.clear();
        seedRandomNumbers(7);
        Evaluation evaluation;
        QCOMPARE(probabilityCurve(study, 0, used, {}, &evaluation), plain);
        QCOMPARE(randomPosition(), position);
        const Table parts = contributionsOf(study, evaluation).parts;
        const QVector<Sensitivity> fits = sensitivityToFits(study, evaluation);
        QVERIFY(almostEqual({parts[0][0] + parts[0][1], parts[1][0] + parts[1][1]}, *plain));
        QCOMPARE(fits.first().renormalised.probability, *plain); // in every bit
        QCOMPARE(fits.at(1).unknown.isEmpty(), !selecting || cached);
    }

    void saysWhyThereIsNone()
    {
        const Study study = smallStudy(false, true);
        const JudgingWeights weights = evaluationOf(study).weights;
        QVector<Table> uneven = endpointsOfModels;
        uneven[1].removeLast();
        QVERIFY(!keepEvaluation(study, 0, weights, uneven).exists());
        QVERIFY(!keepEvaluation(study, 0, weights, {}).exists());
        const Evaluation one = evaluationOf(study);
        QVERIFY(keptBeside(one, mostKeptBytes - one.bytes()).exists());
        DoseSelection selection;
        selection.made = doseProvenance(study);
        selection.dataSetCount = 1;
        selection.evaluations = {keptBeside(one, mostKeptBytes)};
        QCOMPARE(
            stabilityText(selection, 0, 0),
            "The certainty of the dose is not known: the endpoints of all results take more than "
            "256 MB and were not kept.");
        selection.evaluations = {one};
        selection.probability = {{50, 20}};
        selection.made.inputs.levels = {50};
        QVERIFY(resample(selection, [](int) { return true; }));
        QVERIFY(!stabilityText(selection, 0).contains("equals")); // at a dose that decides nothing
        selection.stability.clear();
        QVERIFY(stabilityText(selection, 0).contains(" were not resampled; "));
    }
};

QTEST_APPLESS_MAIN(TestCertainty)
#include "tst_certainty.moc"
