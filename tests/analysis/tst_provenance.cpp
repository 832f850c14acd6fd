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
                 QStringList({"The curve was calculated for data set 1, endpoint > 0.4, "
                              "model average; since changed: data set, choices.",
                              "The calculation was aborted: the curve holds 2 of 3 samples."}));
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
        Study otherLevel = study;
        otherLevel.levels = {1};
        Study otherWeight = study;
        first(otherWeight).weightParser.expression = "2+0";
        Study otherDose = study;
        otherDose.doses[0] = 1;
        QCOMPARE(cache.misfits(otherLevel), 0);
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

    void appliesProjects()
    {
        ProjectStudy before{wholeStudy(), {"0.4", false, 0.4}, {"inf", false, qInf()}};
        before.study.individuals = 7;
        DecodedProject project;
        project.completeItems = 12;
        ProjectItems& items = project.items;
        items.rawResults = {{{{7}}}};
        items.possibleDoses = "0:2:4";
        items.endPointExpressions = QStringList{"ETA3", "beyond the models"};
        items.omegas = {{{1, 2}, {2, 5}, {9}}};
        items.omegaColumns = {{{-1, 4}, {4, -1}}};
        items.populationSummary = 2;
        items.weightExpressions = QStringList("1+ofv");
        items.averageOrSelection = 1;
        items.oneOrIndividualOfv = 7; // names no choice
        items.lowerBound = "-inf";
        ProjectStudy after = appliedProject(before, project);
        const endPoint model = after.study.endPoints.first();
        QCOMPARE(model.omega, Table({{1, 2, 0}, {2, 5, 0}, {0, 0, 0}}));
        QCOMPARE(model.omegaColumns.first(), QVector<int>({-1, 4, -1}));
        QCOMPARE(model.populationSummary, 75);
        QCOMPARE(model.numSimulations, 7);
        QCOMPARE(model.weightParser.expression, "1+ofv");
        QCOMPARE(after.study.doses, QVector<double>({0, 2, 4}));
        QVERIFY(after.study.selecting && after.study.individualOfv && !after.study.logScale);
        QVERIFY(after.lowerBound.placed && after.study.target.lower == -10);
        QCOMPARE(after.study.levels, before.study.levels); // of items that are not there
        QCOMPARE(after.study.target.upper, qInf());
        project.completeItems = 17;
        items.rawResults.clear(); // the models stay
        before.study.endPoints[0].omega[0][0] = 9;
        items.omegas.clear();
        items.upperBound = "5";
        items.doseChoiceLabels = QStringList{"70", "90"};
        after = appliedProject(before, project);
        QCOMPARE(first(after.study).omega, Table(3, {0, 0, 0}));
        QCOMPARE(after.study.levels, QVector<double>({70, 90}));
        QCOMPARE(after.study.target.upper, 5.0);
    }
};

QTEST_APPLESS_MAIN(TestProvenance)
#include "tst_provenance.moc"
