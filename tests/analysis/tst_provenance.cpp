// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/endpointcache.h"
#include "analysis/projectstudy.h"
#include "analysis/results.h"
#include "tests/support/rows.h"

#include <functional>

using Edit = std::function<void(Study&)>;
Q_DECLARE_METATYPE(Edit)

/// Two models with ETAs, two data sets, and every other input away from its default.
static Study wholeStudy()
{
    Study study;
    study.rawResults = RawResults(2, QVector<Table>(2, Table(3, {1, qQNaN(), 3})));
    defineModels(study, {"emax", "linear"});
    for (endPoint& model : study.endPoints) {
        model.endPointParser.expression = "THETA1*DOSE+ETA1";
        model.weightParser.expression = "(0-1-ofv/2)";
        model.checkETA();
    }
    study.endPoints[1].omegaColumns[0][0] = 2;
    study.doses = {0, 0.5, qQNaN()};
    study.target = {0.4, qInf()};
    study.levels = {50, 80};
    study.selecting = false;
    return study;
}

static endPoint& first(Study& study)
{
    return study.endPoints.first();
}

class TestProvenance : public QObject
{
    Q_OBJECT

private slots:
    void namesWhatChanged_data()
    {
        const Rows<QString, bool, Edit> row("changed", "ofTypicalCurve", "edit");
        row("number", "results", true, [](Study& s) { s.rawResults[1][1][2][0] = 2; });
        row("ETA that is always 0", "", false, [](Study& s) { first(s).resizeOmega(2); });
        row("number below a column", "", false, [](Study& s) { s.endPoints[1].omega[0][0] = 4; });
        row("shown model", "weights", false, [](Study& s) { s.shownModel = 7; });
        row("two in their order", "endpoints, individuals", true, [](Study& s) {
            first(s).omega[0][0] = 4;
            first(s).numSimulations = 1;
        });
        row("model", "endpoints, weights", false, [](Study& s) { s.endPoints.removeLast(); });
    }
    void namesWhatChanged()
    {
        QFETCH(Edit, edit);
        QFETCH(QString, changed);
        QFETCH(bool, ofTypicalCurve);
        CurrentInputs now;
        now.study = wholeStudy();
        now.typicalModel = 0;
        now.trueRows = {{1}};
        StudyResults results;
        results.typicalCurve = typicalCurveProvenance(now.study, 0);
        results.curve.made = probabilityProvenance(now.study, 0);
        results.selection.made = results.truth.chosen = doseProvenance(now.study);
        results.truth.made = truthProvenance(now.study, {{1}}, {}, {});
        edit(now.study);
        QCOMPARE(kindNames(selectionChanges(results, now)), changed);
        QCOMPARE(kindNames(comparedDosesChanges(results, now)), changed);
        QCOMPARE(kindNames(curveChanges(results, now)), changed);
        const QString remarks = typicalCurveRemarks(results, now).join("");
        QCOMPARE(remarks.section("changed: ", 1), ofTypicalCurve ? changed + '.' : "");
        now.study = wholeStudy(); // changed back, in memory of its own
        QCOMPARE(curveRemarks(results, now) + selectionRemarks(results, now)
                     + truthRemarks(results, now) + typicalCurveRemarks(results, now),
                 QStringList());
    }

    void tellsForWhatAResultWasMade()
    {
        StudyResults results;
        CurrentInputs now;
        now.study = wholeStudy();
        results.curve.made = probabilityProvenance(now.study, 1);
        results.curve.samples = 2;
        results.curve.sampleCount = 3;
        now.study.individualOfv = false;
        QCOMPARE(curveRemarks(results, now),
                 QStringList({"The curve was calculated for data set 1, 0.4 < endpoint <= inf, "
                              "model average; since changed: data set, choices.",
                              "The calculation was given up: the curve holds 2 of 3 samples."}));
        results.truth.made = truthProvenance(now.study, {}, {}, {});
        now.trueRows = {{1}}; // a file before, simulation models now
        QCOMPARE(kindNames(truthChanges(results, now)), "true models");
        results.truth.made = truthProvenance(now.study, {{1}}, {}, {});
        now.trueRows.clear(); // and back
        QCOMPARE(kindNames(truthChanges(results, now)), "true models");
        now.study.selecting = true;
        results.selection.made = doseProvenance(now.study);
        now.study.logScale = false; // which selection does not depend on
        QCOMPARE(kindNames(selectionChanges(results, now)), "");
    }

    void keepsEndpoints()
    {
        QVector<QVector<Table>> entries;
        EndpointCache cache(entries);
        Study study = wholeStudy();
        const QVector<Table> whole(2, Table(3, {1, 2, 3}));
        QVector<Table> averaged = whole;
        averaged[1][2].clear(); // of a model that had no weight
        cache.keep(1, averaged, endpointProvenance(study));
        QVERIFY(!cache.averaged(0, 2) && !cache.selected(1, 2, {0, 0, 1}));
        QVERIFY(cache.averaged(1, 2) == averaged && cache.selected(1, 2, {0, 1, 0}));
        Study otherWeight = study;
        first(otherWeight).weightParser.expression = "2+0";
        Study otherDose = study;
        otherDose.doses[0] = 1;
        QCOMPARE(cache.misfits(study), 0);
        QCOMPARE(cache.misfits(otherWeight), 1);
        QCOMPARE(cache.misfits(otherDose), 1);
        cache.keep(1, whole, endpointProvenance(study));
        QCOMPARE(cache.misfits(otherWeight), 0);
        cache.restore({whole, whole}, endpointProvenance(study));
        QCOMPARE(cache.misfits(otherDose), 2);
        QVERIFY(!cache.averaged(0, 3) && entries.first().isEmpty()); // another number of models
        cache.clear();
        QVERIFY(entries.isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestProvenance)
#include "tst_provenance.moc"
