// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/endpointcache.h"
#include "analysis/projectstudy.h"
#include "analysis/results.h"

#include <QtTest>

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

static Edit withExpression(int number)
{
    return [number](Study& s) { s.endPoints[number].endPointParser.expression = "ETA1"; };
}

class TestProvenance : public QObject
{
    Q_OBJECT

private slots:
    void namesWhatChanged_data()
    {
        QTest::addColumn<Edit>("edit");
        QTest::addColumn<QString>("ofDoses");
        QTest::addColumn<QString>("ofTypicalCurve");
        const std::tuple<const char*, Edit, const char*, const char*> rows[] = {
            {"number", [](Study& s) { s.rawResults[1][1][2][0] = 2; }, "results", "results."},
            {"sample", [](Study& s) { s.rawResults[1][1].removeLast(); }, "results", "results."},
            {"heading", [](Study& s) { s.rawResultsHeaders = {{"a"}}; }, "", ""},
            {"dose", [](Study& s) { s.doses[1] = 0.6; }, "doses", "doses."},
            {"endpoint", withExpression(1), "endpoints", ""},
            {"endpoint drawn", withExpression(0), "endpoints", "endpoints."},
            {"omega", [](Study& s) { first(s).omega[0][0] = 1; }, "endpoints", "endpoints."},
            {"column", [](Study& s) { first(s).omegaColumns[0][0] = 1; }, "endpoints",
             "endpoints."},
            {"ETA that is always 0", [](Study& s) { first(s).resizeOmega(2); }, "", ""},
            {"number below a column", [](Study& s) { s.endPoints[1].omega[0][0] = 4; }, "", ""},
            {"summary", [](Study& s) { first(s).populationSummary = 50; }, "endpoints",
             "endpoints."},
            {"THETA1", [](Study& s) { first(s).colNumTHETA1 = 9; }, "endpoints", "endpoints."},
            {"people", [](Study& s) { first(s).numSimulations = 9; }, "individuals",
             "individuals."},
            {"weight", [](Study& s) { first(s).weightParser.expression = "1"; }, "weights", ""},
            {"OFV column", [](Study& s) { first(s).colNumOFV = 9; }, "weights", ""},
            {"log scale", [](Study& s) { s.logScale = false; }, "weights", ""},
            {"shown model", [](Study& s) { s.shownModel = 7; }, "weights", ""},
            {"lower bound", [](Study& s) { s.target.lower = 0; }, "interval", ""},
            {"upper bound", [](Study& s) { s.target.upper = 9; }, "interval", ""},
            {"method", [](Study& s) { s.selecting = true; }, "choices", ""},
            {"OFV use", [](Study& s) { s.individualOfv = false; }, "choices", ""},
            {"level", [](Study& s) { s.levels.removeLast(); }, "levels", ""},
            {"model", [](Study& s) { s.endPoints.removeLast(); }, "endpoints, weights", ""},
        };
        for (const auto& [name, edit, ofDoses, ofTypicalCurve] : rows) {
            QTest::newRow(name) << edit << QString(ofDoses) << QString(ofTypicalCurve);
        }
    }
    void namesWhatChanged()
    {
        QFETCH(Edit, edit);
        QFETCH(QString, ofDoses);
        StudyResults results;
        CurrentInputs now;
        now.study = wholeStudy();
        now.typicalModel = 0;
        results.typicalCurve = typicalCurveProvenance(now.study, 0);
        results.curve.made = probabilityProvenance(now.study, 0);
        results.selection.made = doseProvenance(now.study);
        results.truth.chosen = results.selection.made;
        results.truth.made = truthProvenance(now.study, {{1}}, {"0"}, {{0.5}});
        now.trueRows = {{1}};
        now.trueModels = QStringList("0");
        results.selection.doses = {{0.5}};
        edit(now.study);
        QCOMPARE(kindNames(selectionChanges(results, now)), ofDoses);
        QCOMPARE(kindNames(comparedDosesChanges(results, now)), ofDoses);
        QCOMPARE(kindNames(curveChanges(results, now)), ofDoses == "levels" ? "" : ofDoses);
        QTEST(typicalCurveRemarks(results, now).join("").section("changed: ", 1), "ofTypicalCurve");
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
        now.curveDataSet = 0;
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
        now.study = wholeStudy();
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
        study.rawResultsHeaders = {{}, {}};
        const QVector<Table> whole(2, Table(3, {1, 2, 3}));
        QVector<Table> averaged = whole;
        averaged[1][2].clear(); // of a model that had no weight
        cache.keep(1, averaged, endpointProvenance(study));
        QVERIFY(!cache.averaged(0, 2) && !cache.selected(1, 2, {0, 0, 1}));
        QVERIFY(cache.averaged(1, 2) == averaged && cache.selected(1, 2, {0, 1, 0}));
        const auto misfitsAfter = [&cache, &study](const Edit& edit) {
            Study changed = study;
            edit(changed);
            return cache.misfits(changed);
        };
        const Edit weight = [](Study& s) { s.endPoints[0].weightParser.expression = "2+0"; };
        const Edit dose = [](Study& s) { s.doses[0] = 1; };
        QCOMPARE(misfitsAfter([](Study& s) { s.levels = {1}; }), 0);
        QCOMPARE(misfitsAfter(weight), 1);
        QCOMPARE(misfitsAfter(dose), 1);
        cache.keep(1, whole, endpointProvenance(study));
        QCOMPARE(misfitsAfter(weight), 0);
        cache.restore({whole, whole}, endpointProvenance(study));
        QCOMPARE(misfitsAfter(dose), 2);
        QVERIFY(!cache.averaged(0, 3) && entries.first().isEmpty()); // another number of models
        cache.clear();
        QVERIFY(entries.isEmpty());
    }

    void appliesProjects()
    {
        ProjectStudy before{wholeStudy(), {"0.4", false, 0.4}, {"inf", false, qInf()}};
        DecodedProject project;
        project.completeItems = 13;
        project.items.rawResults = {{{{7}}}};
        project.items.possibleDoses = "3,1";
        project.items.endPointExpressions = QStringList{"ETA3", "beyond the models"};
        project.items.omegas = {{{1, 2}, {2, 5}, {9}}};
        project.items.omegaColumns = {{{-1, 4}, {4, -1}}};
        project.items.populationSummary = 2;
        project.items.weightExpressions = QStringList{"w"};
        project.items.averageOrSelection = 1;
        project.items.oneOrIndividualOfv = 7; // names no choice
        project.items.lowerBound = "-inf";
        project.items.upperBound = "1e3";
        const ProjectStudy after = appliedProject(before, project);
        QCOMPARE(after.study.doses, QVector<double>({1, 3}));
        QCOMPARE(after.study.endPoints.size(), 1);
        const endPoint& model = after.study.endPoints.first();
        QCOMPARE(model.omega, Table({{1, 2, 0}, {2, 5, 0}, {0, 0, 0}}));
        QCOMPARE(model.omegaColumns.first(), QVector<int>({-1, 4, -1}));
        QCOMPARE(model.populationSummary, 75);
        QVERIFY(model.name == "model 0" && model.weightParser.expression == "w");
        QVERIFY(after.study.selecting && after.study.individualOfv && !after.study.logScale);
        QVERIFY(after.lowerBound.placed && after.study.target.lower == -10);
        QCOMPARE(after.study.target.upper, 1e3);
        QCOMPARE(after.study.levels, before.study.levels); // of items that are not there
    }
};

QTEST_APPLESS_MAIN(TestProvenance)
#include "tst_provenance.moc"
