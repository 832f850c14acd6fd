// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/definitioncheck.h"
#include "analysis/checkup/studycheck.h"
#include "analysis/probability.h"
#include "analysis/weights.h"

#include <QtTest>

static const double notANumber = qQNaN();

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
        definition.endPointParser.expression = "5+0";
        definition.weightParser.expression = weight;
        study.endPoints.append(definition);
    }
    study.selecting = false;
    return study;
}

/// The probability of a target that every endpoint hits, by model averaging.
static double fullProbability(Study study)
{
    const Table values = weightValues(study, 0);
    const int samples = study.rawResults.first().first().size();
    const QVector<Table> endpoints(study.endPoints.size(), Table(samples, {0.0}));
    return probabilityByAveraging(endpoints, relativeWeights(values, samples, study.logScale),
                                  study.individualOfv, 1, study.target)
        .first();
}

class TestStudyCheck : public QObject
{
    Q_OBJECT

private slots:
    void countsSamplesWithoutWeight_data()
    {
        QTest::addColumn<QStringList>("weights");
        QTest::addColumn<QVector<double>>("column");
        QTest::addColumn<QString>("choices");
        QTest::addColumn<QString>("text");
        const QVector<double> gaps{notANumber, 1, notANumber, 2, 3, 4};
        const QVector<double> late{1, notANumber, 2};
        const QString two = "2 of 6 samples have no weight and count as misses: no probability "
                            "can exceed 66.7 %.";
        const QString one = "1 of 3 samples has no weight and counts as a miss";
        const QString first = "The first sample has no weight, and with one OFV per model it "
                              "decides for all: every probability will be 0.";
        const auto row = [](const char* name, const QStringList& weights, const auto& column,
                            const char* choices, const QString& text) {
            QTest::newRow(name) << weights << column << QString(choices) << text;
        };
        row("averaging", {"0-COL1", ""}, gaps, "", two);
        row("selection", {"", "0-COL1"}, gaps, "select", two);
        row("weight of another model", {"0-COL1", "1"}, gaps, "", "");
        row("NaN spoils weights that are no logarithms", {"0+COL1", "1"}, gaps, "plain", two);
        row("first sample of one OFV", {"0-COL1"}, gaps, "one", first);
        row("later sample of one OFV", {"0-COL1"}, late, "one", "");
        row("exponential out of range", {"0-COL1", "800*COL1"}, QVector<double>{1, 2, 0}, "",
            "2 of 3 samples have no weight and count as misses: no probability can exceed 33.3 %.");
        row("negative beside larger weight", {"0-COL1", "3"}, late, "plain", one + '.');
        row("malformed", {"0-COL1-"}, gaps, "", "");
        row("blank", {" ", ""}, gaps, "", "");
    }

    void countsSamplesWithoutWeight()
    {
        QFETCH(const QStringList, weights);
        QFETCH(const QVector<double>, column);
        QFETCH(const QString, choices);
        QFETCH(const QString, text);
        Study study = studyOf(weights, column);
        study.selecting = choices.contains("select");
        study.individualOfv = !choices.contains("one");
        study.logScale = !choices.contains("plain");
        QCOMPARE(checkUsableWeights(study, 0).join('|'), text);
        QCOMPARE(checkUsableWeightsOfAll(study).join('|'), text);
        QCOMPARE(checkAnyWeight(study).isEmpty(), !weights.join("").trimmed().isEmpty());
        // The bound is reached but for its rounding.
        if (text.endsWith("%.")) {
            const double bound = text.section("exceed ", 1).section(' ', 0, 0).toDouble();
            QVERIFY(std::fabs(bound - fullProbability(study)) <= 0.05);
        } else if (text.endsWith("will be 0.")) {
            QCOMPARE(fullProbability(study), 0.0);
        }
    }

    void looksAtAllDataSets()
    {
        Study study = studyOf({"0-COL1"}, QVector<double>(1000, 1), 300);
        QVERIFY(checkUsableWeightsOfAll(study).isEmpty());
        study.rawResults[0][7][0][0] = notANumber;
        const QString single = checkUsableWeightsOfAll(study).join('|');
        QVERIFY(single.startsWith("In data set 7, 1 of 1000 samples has no weight"));
        QVERIFY(single.endsWith("exceed 99.9 %. Data sets from 190 on were not looked at."));
        study.rawResults[0].resize(20);
        study.rawResults[0][9][0][0] = study.rawResults[0][9][1][0] = notANumber;
        QVERIFY(checkUsableWeightsOfAll(study).first().endsWith(
            "data set 9, with 2 of 1000: no probability can exceed 99.8 % there."));
        study.individualOfv = false;
        QVERIFY(checkUsableWeightsOfAll(study).first().endsWith("The first is data set 7."));
    }

    void readsHeadingsOfParameters()
    {
        const QStringList names{"ofv", "CL",  "V",     "SIGMA(1,1)",       "IV",
                                "seV", "sex", "CL_SD", "shrinkage_eta1(%)"};
        const auto found =
            diagnoseThetas("THETA1+COL4*THETA3+THETA4+2*THETA5+THETA6", names, {9, 2, 1});
        QCOMPARE(found.size(), 2); // a label and a name that begins with se are no fault
        QCOMPARE(found.first().position, 12);
        QVERIFY(
            found.first().message.startsWith("\"THETA3\" is column 4, which by its name, SIGMA"));
        QVERIFY(found.last().message.contains("seV, is a standard error"));
        QVERIFY(diagnoseThetas("THETA3+1", names, {10, 2, 1}).isEmpty());

        endPoint definition;
        definition.endPointParser.expression = "ETA1+ETA3";
        definition.resizeOmega(4);
        definition.omega[0][0] = 1e-300; // its square is 0
        definition.omega[1][1] = 1;
        QVERIFY(checkEtaVariances(definition).first().endsWith(": ETA1, ETA3."));
        definition.omegaColumns[2][2] = 7;
        definition.omegaColumns[1][0] = 3;
        definition.omegaColumns[3][3] = 8; // of no ETA that is used
        QVERIFY(checkEtaVariances(definition).isEmpty());
        QVERIFY(checkOmegaColumns(definition, names, 9)
                    .first()
                    .endsWith("none: COL8 (CL_SD, a standard deviation)."));
        QVERIFY(checkOmegaColumns(definition, names, 8).isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestStudyCheck)

#include "tst_studycheck.moc"
