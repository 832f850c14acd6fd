// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/definitioncheck.h"
#include "analysis/checkup/modelfindings.h"
#include "analysis/checkup/randomcheck.h"
#include "analysis/checkup/studycheck.h"
#include "analysis/checkup/studyfindings.h"
#include "tests/support/compare.h"
#include "tests/support/rows.h"

using Counts = QMap<int, int>; // of missing samples, by data set
static const double none = qQNaN();

/// A study of models with these weight expressions and one column, the same in all models
/// and in each data set.
static Study studyOf(const QStringList& weights, const QVector<double>& column, int dataSets = 1)
{
    Table rows;
    for (const double value : column) {
        rows.append(QVector<double>{value});
    }
    Study study;
    study.rawResults.fill(QVector<Table>(dataSets, rows), weights.size());
    study.rawResultsHeaders.fill({"ofv"}, weights.size());
    for (const QString& weight : weights) {
        endPoint definition;
        definition.weightParser.expression = weight;
        study.endPoints.append(definition);
    }
    study.selecting = false;
    return study;
}

class TestStudyCheck : public QObject
{
    Q_OBJECT

private slots:
    void countsSamplesWithoutWeight_data()
    {
        const Rows<QString, QVector<double>, QString, QString> row("weights", "column", "choices",
                                                                   "text");
        const QVector<double> gaps{none, 1, none, 2, 3, 4};
        const QVector<double> late{1, none, 2};
        const QString two =
            "2 of 6 samples have no weight and count as misses: no probability can exceed 66.7 %.";
        row("averaging", "0-COL1|", gaps, "", two);
        row("selection", "|0-COL1", gaps, "select", two);
        row("weight of another model", "0-COL1|1", gaps, "", "");
        row("NaN spoils what is no logarithm", "0+COL1|1", gaps, "plain", two);
        row("first sample of one OFV", "0-COL1", gaps, "one",
            "The first sample has no weight, and*for all: every probability will be 0.");
        row("first selection of one OFV", "0-COL1", late, "select one", "");
        row("exponential out of range", "0-COL1|800*COL1", {1, 2, 0}, "", "2 of 3*33.3 %.");
        row("negative beside larger weight", "0-COL1|3", late, "plain",
            "1 of 3 samples has no weight and counts as a miss.");
        row("nearly all", "0-COL1", QVector<double>(299'999, 1) + QVector<double>{none}, "",
            "1 of 300000*99.9997 %.");
        row("malformed", "0-COL1-", gaps, "", "");
        row("blank", " |", gaps, "", "");
    }
    void countsSamplesWithoutWeight()
    {
        QFETCH(QString, weights);
        QFETCH(QVector<double>, column);
        QFETCH(QString, choices);
        QFETCH(QString, text);
        Study study = studyOf(weights.split('|'), column);
        study.selecting = choices.startsWith("select");
        study.individualOfv = !choices.endsWith("one");
        study.logScale = choices != "plain";
        QCOMPARE(told(checkUsableWeights(study, 0), text), text);
        QCOMPARE(told(checkUsableWeightsOfAll(study), text), text);
        QCOMPARE(checkAnyWeight(study).isEmpty(), weights != " |");
    }

    void looksAtAllDataSets_data()
    {
        const Rows<Counts, int, bool, QString> row("missing", "dataSets", "individual", "text");
        row("nothing missing", {}, 300, true, "");
        row("more than can be looked at", {{7, 1}}, 300, true,
            "In data set 7, 1 of 1000 *99.9 %. Data sets from 190 on were not checked.");
        row("several", {{7, 1}, {9, 2}, {12, 2}}, 20, true,
            "In 3 of 20*data set 9, with 2 of 1000: no probability can exceed 99.8 % there.");
        row("one OFV", {{7, 1}, {9, 2}}, 20, false, "In 2 of 20*The first is data set 7.");
    }
    void looksAtAllDataSets()
    {
        QFETCH(Counts, missing);
        QFETCH(int, dataSets);
        QFETCH(bool, individual);
        QFETCH(QString, text);
        Study study = studyOf({"0-COL1"}, QVector<double>(1000, 1), dataSets);
        study.individualOfv = individual;
        for (auto entry = missing.begin(); entry != missing.end(); ++entry) {
            std::fill_n(study.rawResults[0][entry.key()].begin(), entry.value(),
                        QVector<double>{none});
        }
        QCOMPARE(told(checkUsableWeightsOfAll(study), text), text);
    }

    void listsAllFindings()
    {
        Study study = studyOf({"(ofv)", ""}, {1, 2});
        study.endPoints.removeLast();
        study.endPoints[0].name = "emax";
        study.target = {2, 1};
        study.shownModel = 2;
        study.individuals = 0;
        ImportCheckUp imported;
        imported.models.fill({"", {"no samples"}, {}}, 2);
        const TypedInputs typed{"1,x", "120", {"-inf", true, -10}, {"", false, 10}};
        const QString lines =
            "emax, bootstrap results: no samples/emax, endpoint: There is no*/emax, weight: *"
            "/model 1, bootstrap results: no samples/Candidate doses: *x*/Probability levels: *120*"
            "/Lower bound of the target interval: \"-inf\" stands for -10*"
            "/Lower bound of the target interval: No endpoint*/Upper bound of the*for 10*"
            "/Number of sim*: No ind*/Model shown: *model 2, which*/Endpoint of each model: "
            "*emax.";
        const QStringList found = studyFindings(study, imported, typed);
        QCOMPARE(told(found, lines), lines);
    }

    /// The parenthesis is found last, but reported in its place.
    void ordersDiagnoses()
    {
        Study study;
        study.endPoints.resize(1);
        study.endPoints[0].endPointParser.expression = "2*(3--1)+(1+-1";
        const QStringList found = endpointFindings(study, 0).filter("Character");
        QCOMPARE(found.size(), 3);
        for (int i = 0; i < 3; ++i) {
            const int place = QVector<int>{6, 10, 13}.at(i);
            QVERIFY(found.at(i).startsWith(QString("Character %1: ").arg(place)));
        }
    }

    void boundsRandomNumbers_data()
    {
        const Rows<int, int, QString, QString> row("dataSets", "individuals", "one", "all");
        row("not yet", 122, 100, "", "");
        row("passed", 200, 100, "", "*3.52e9 random*after 2147483646: from data set 122 on, *");
        row("in a data set", 1, 12'300, "*2.16e9 random*2147483646: the*",
            "*6: the same numbers *");
        row("in the first", 2, 2'000'000'000, "*3.52e14 *", "*7.04e14 *: from data set 0 on, *");
    }
    void boundsRandomNumbers()
    {
        QFETCH(int, dataSets);
        QFETCH(int, individuals);
        QFETCH(QString, one);
        QFETCH(QString, all);
        Study study = studyOf({"", "", "", "", ""}, QVector<double>(1000, 1), dataSets);
        study.doses.fill(0, 11);
        for (endPoint& definition : study.endPoints) {
            definition.numSimulations = individuals;
            definition.highestEta = 2;
            definition.resizeOmega(3); // of which the second has no variance
            definition.omega[0][0] = 0.1;
            definition.omegaColumns[2][2] = 0;
        }
        study.endPoints.last().resizeOmega(0);
        QCOMPARE(told(checkRandomNumbers(study, 0), one), one);
        QCOMPARE(told(checkRandomNumbersOfAll(study), all), all);
        QCOMPARE(mostRandomNumbers(study, dataSets), 0.0);
    }

    void readsHeadingsOfThetas()
    {
        const QStringList names{"ofv", "CL",  "V",     "SIGMA(1,1)",       "IV",
                                "seV", "sex", "CL_SD", "shrinkage_eta1(%)"};
        const auto found =
            diagnoseThetas("THETA1+COL4*THETA3+THETA4+2*THETA5+THETA6", names, {9, 2, 1});
        QCOMPARE(found.size(), 2); // a label and a name that begins with se are no fault
        QCOMPARE(found.first().position, 12);
        QVERIFY(found.first().message.startsWith("\"THETA3\" is column 4, whose name, SIGMA"));
        QVERIFY(found.last().message.contains("seV, is that of a standard error"));
        QVERIFY(diagnoseThetas("THETA3+1", names, {10, 2, 1}).isEmpty());
        Study study = studyOf({"1"}, {1, 2});
        study.rawResultsHeaders = {{"SIGMA(1;1)"}};
        study.endPoints[0].endPointParser.expression = "(THETA1)";
        study.colNumTHETA1 = 1;
        QVERIFY(endpointFindings(study, 0).join("").contains("SIGMA"));
    }

    void readsHeadingsOfOmega()
    {
        const QStringList names{"ofv", "CL", "V", "x_sd", "EI1", "CL_SD", "shrinkage_eta1(%)"};
        endPoint definition;
        definition.endPointParser.expression = "ETA3+ETA1";
        definition.resizeOmega(4);
        definition.omega[0][0] = 1e-300; // its square is 0
        definition.omega[1][1] = 1;
        QCOMPARE(told(checkEtaVariances(definition), "*: ETA1, ETA3."), "*: ETA1, ETA3.");
        definition.omegaColumns[2][2] = 5;
        definition.omegaColumns[1][0] = 2;
        definition.omegaColumns[3][3] = 6; // of no ETA that is used
        QCOMPARE(checkEtaVariances(definition), QStringList());
        const QString text = "*else: COL6 (CL_SD, a standard deviation).";
        QCOMPARE(told(checkOmegaColumns(definition, names, 7), text), text);
        QCOMPARE(checkOmegaColumns(definition, names, 6), QStringList());
    }
};

QTEST_APPLESS_MAIN(TestStudyCheck)
#include "tst_studycheck.moc"
