// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/batchrun.h"
#include "tests/support/windowtest.h"

const QString simulation = VELMORA_EXAMPLES "/simulation";
const char doseTable[] = "_4_tw_doseChoice";
const char weightTable[] = "_2_tw_relativeWeight";

/// What a shell makes of "Copy batch command" is what the window shows, to the last bit.
class TestBatchCommand : public WindowTest
{
    Q_OBJECT

    /// Three models of the trial, of names that end so; of the simulated ones without a name.
    void import(const QString& name)
    {
        QStringList paths;
        for (const char* const model : {"linear", "emax", "quadratic"}) {
            paths += files.path(QString("raw_results_%1%2.csv").arg(paths.size()).arg(name));
            QFile::copy(QString(VELMORA_EXAMPLES "/biomarker/raw_results_%1.csv").arg(model),
                        paths.last());
        }
        name.isEmpty() ? pressAndAnswer("__pb_import", {simulation})
                       : pressAndAnswer("__pb_importFbF", paths);
    }
    void compareWithTrueModels()
    {
        QStringList paths;
        for (const QString& file : QDir(simulation).entryList({"raw_results_simulation*"})) {
            paths += simulation + '/' + file;
        }
        pressAndAnswer("_5_pb_importSimRawRes", paths);
        pressAndAnswer("_5_pb_simTrueModel", {simulation + "/true_models.csv"}, otherHeaders);
        press(toTruth);
    }

    void runCopied(const char* widget)
    {
        QDir(files.path("results")).removeRecursively();
        QString command = copied(widget, "Copy batch command");
        command.insert(QString("velmora-batch").size(), " --save-project project");
        const BatchRun run(files.path(), command);
        QVERIFY2(run.code == 0, qPrintable(command + run.error));
    }
    /// The numbers in lines of a result that begin so, without the columns that name them.
    QStringList written(const QString& name, int namingColumns, const QString& begin = {}) const
    {
        QStringList lines;
        const QString text = contentOf(files.path("results/" + name)).replace("NA", "nan");
        for (const QString& line : text.split("\r\n", Qt::SkipEmptyParts).mid(1)) {
            if (line.startsWith(begin)) {
                lines.append(line.section(',', namingColumns));
            }
        }
        return lines;
    }
    /// All of a table as it leaves the window.
    QStringList shown(const char* table)
    {
        user::clickCell(reach<QTableWidget>(table), 0, 0);
        QTest::keyClick(the<QTableWidget>(table), Qt::Key_A, Qt::ControlModifier);
        return copied(table, "Copy with full precision").replace('\t', ',').split('\n');
    }

private slots:
    void repeatsTheWindow_data()
    {
        const Rows<QString, QString, int, int, bool> row("name", "eta", "method", "ofv", "cached");
        row("averaging", " it's", "", 0, 1, false);
        row("selection by one OFV, name for no option", "=", "", 1, 0, false);
        row("averaging with ETA", "a", "+ETA1", 0, 0, true);
        row("selection with ETA", "a", "+ETA1", 1, 1, false);
        row("selection of simulations", "", "", 1, 1, true);
        row("averaging of simulations with ETA", "", "+ETA1", 0, 1, true);
        row("selection of simulations with ETA", "", "+ETA1", 1, 0, false);
        row("cached selection of simulations with ETA", "", "+ETA1", 1, 1, true);
    }
    void repeatsTheWindow()
    {
        QFETCH(QString, name);
        QFETCH(QString, eta);
        QFETCH(int, method);
        QFETCH(int, ofv);
        QFETCH(bool, cached);
        openWindow();
        import(name);
        type("_1_le_possibleDoses", "0:0.1:1");
        edit(endpoints, 0, 0, "THETA2*DOSE");
        edit(endpoints, 2, 0, "THETA2*DOSE+THETA3*DOSE^2");
        edit(endpoints, 1, 0, "THETA2*DOSE/(THETA3+DOSE)" + eta);
        if (!eta.isEmpty()) {
            edit(omega, 0, 0, "COL24");
            type("_1_sb_numSimulations", "10");
        }
        reach<QWidget>(weights);
        type("_3_le_lowerBound", "0.4");
        choose("_3_cb_aveORselect", method);
        choose("_3_cb_indOFVone", ofv);
        press(toCurve);
        runCopied("_3_cp_PoS");
        QVector<double> probability;
        for (const QString& line : written("probability.csv", 2, "0,")) {
            probability.append(line.section(',', 0, 0).toDouble());
        }
        QCOMPARE(probability, curve("_3_cp_PoS"));

        type("_4_le_probabilities", "10:10:90");
        if (cached) {
            press("_4_cb_useCash");
        }
        press(toDoses);
        if (name.isEmpty()) {
            compareWithTrueModels();
        }
        const QStringList doses = shown(doseTable);
        const QStringList weightsShown = shown(weightTable);
        reach<QWidget>(doseTable);
        runCopied(doseTable);
        QCOMPARE(written("doses.csv", 1), doses);
        QCOMPARE(written("weights.csv", 2, "0,"), weightsShown);
        if (name.isEmpty()) {
            QCOMPARE(written("theoretical_meds.csv", 1), shown("_5_tw_trueModelTMED"));
            QCOMPARE(written("comparison.csv", 5), shown("_5_tw_aveUnderEstOverEst"));
        }
        openWindow();
        open();
        QCOMPARE(shown(doseTable), doses);
        QCOMPARE(shown(weightTable), weightsShown);
    }
};

QTEST_MAIN(TestBatchCommand)
#include "tst_batchcommand.moc"
