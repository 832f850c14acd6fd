// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/randomng.h"
#include "tests/support/logcapture.h"
#include "tests/support/randomnumbers.h"
#include "tests/support/windowtest.h"

const char mismatch[] = "Headers of the raw_results files do not match.";

/// From imports to doses, page by page.
class TestMainWindow : public WindowTest
{
    Q_OBJECT

    /// Two models, two data sets of four samples with OFV and THETA1. Model 0 is the better
    /// one in the first two samples of data set 0.
    void defineStudy()
    {
        importStudy({{{{2, 1}, {2, 2}, {3, 1}, {6, 4}}, {{9, 1}, {9, 1}, {9, 1}, {9, 2}}},
                     {{{4, 1}, {4, 1}, {2, 1}, {2, 1}}, {{1, 0}, {1, 0}, {1, 0}, {1, 1}}}});
        define("THETA1*DOSE", "THETA1+DOSE", "0,1,2", "1.5");
    }
    QStringList chooseDoses(const QString& levels)
    {
        type("_4_le_probabilities", levels);
        press(toDoses);
        return rows("_4_tw_doseChoice");
    }

private slots:
    void init() { openWindow(); }

    void startsEmpty()
    {
        LogCapture log;
        const MainWindow fresh;
        QCOMPARE(log.messages(), QStringList()); // a slot without its widget, or the reverse
        press(toCurve);
        QCOMPARE(chooseDoses("50"), QStringList());
        reach<QWidget>(weights);
        QCOMPARE(rows(weights), QStringList());
    }

    void importsPickedFiles()
    {
        pressAndAnswer("__pb_importFbF",
                       {files.writeRawResults("raw_results_linear.csv", {{7, 1}, {7, 3}}),
                        files.write("raw_results_emax.csv", "\"a\",b,c\r\n1,NA\r\n2,3,4")});
        QCOMPARE(the<QLabel>("__lb_directory")->text(), files.path());
        QVERIFY(the<QSpinBox>("_0_sb_data")->isHidden());
        QCOMPARE(the<QTableWidget>(endpoints)->verticalHeaderItem(0)->text(), "emax");
        QCOMPARE(rows("_0_tw_RawResults"), QStringList({"1 nan NaN", "2 3 4"}));
        type("_0_sb_model", "1");
        pressAndAnswer("__pb_importFbF", {}, "raw results file cannot be found"); // the data stay
        QCOMPARE(cell("_0_tw_RawResults", 1, 20), "3");
    }

    void importsFolders_data()
    {
        const char usual[] = "estimation_model";
        // Model and data set of each file, "w" for a wide one; what is in the selectors then,
        // and the OFV of model 1 in the last data set.
        const Rows<QString, QString, QString, int, int, QString> row(
            "names", "prefix", "message", "highestModel", "highestDataSet", "ofv");
        row("the last data set stands for more", "00 01 02 10 11", usual, "", 1, 2, "11");
        row("a model without data set 0", "00 01 11 20", usual, "", 0, 1, "");
        row("other columns end the data sets", "00 01w 10 11", usual, mismatch, 1, 0, "10");
        row("a gap ends them, too", "00 02 03 10", usual, "", 1, 0, "10");
        row("another prefix", "00 10", "run", mismatch, 1, -1, "");
        row("no model 0", "10", usual, notFound, 99, 99, "");
    }
    void importsFolders()
    {
        QFETCH(QString, names);
        QFETCH(QString, prefix);
        QFETCH(QString, message);
        QFETCH(QString, ofv);
        const StudyFiles folder;
        for (const QString& file : names.split(' ')) {
            const QString name = "raw_results_%1%2_data%3.csv";
            Table data{{file.left(2).toDouble(), 1}};
            data.first().resize(file.size());
            folder.writeRawResults(name.arg(prefix, file.at(0), file.at(1)), data);
        }
        type("_m1_le_modelNumPrefex", prefix);
        pressAndAnswer("__pb_import", {folder.path()}, message);
        QTEST(the<QSpinBox>("_0_sb_model")->maximum(), "highestModel");
        QTEST(the<QSpinBox>("_0_sb_data")->maximum(), "highestDataSet");
        QCOMPARE(status().contains("2 files of later data sets not read"), names.contains("03"));
        type("_0_sb_model", "1");
        type("_0_sb_data", "2");
        QVERIFY(ofv.isEmpty() || cell("_0_tw_RawResults", 0, 19) == ofv);
    }

    void staysUsableAfterAnAbort()
    {
        calculateDoses(0);
        for (int model = 0; model < 3; ++model) {
            files.writeRawResults(QString("raw_results_estimation_model%1_data0.csv").arg(model),
                                  Table(3 - model, {5, 1}));
        }
        pressAndAnswer("__pb_import", {files.path()}, {}, 2);
        const QString summary = copied("_3_cp_PoS", "Copy analysis summary");
        QVERIFY(summary.contains("\nRelative weights\nThe weights were calculated earlier"));
        QVERIFY(summary.contains("\nmodel 2, bootstrap results: no data set was read\n"));
        pressAndAnswer("__pb_import", {files.path()});
        reach<QWidget>(weights);
        QCOMPARE(rows("_2_tw_relativeWeight").mid(1), QStringList({"0.5 0.5 0", "1 0 0"}));
    }

    void definesVariability()
    {
        defineStudy();
        edit(endpoints, 0, 0, "THETA1+ETA2");
        edit(omega, 0, 1, "Col2");
        edit(omega, 0, 1, "col3"); // not accepted
        QCOMPARE(rows(omega), QStringList({"0 COL2", "COL2 0"}));
        edit(omega, 1, 0, "0.5");
        edit(omega, 1, 1, "1234567.89");
        QCOMPARE(rows(omega), QStringList({"0 0.5", "0.5 1.23457e+06"}));
        edit(omega, 0, 1, "0");
        type("_1_sb_numSimulations", "1");
        user::clickCell(the<QTableWidget>(endpoints), 1, 0);
        QVERIFY(the<QTableWidget>(omega)->isHidden());
        seedRandomNumbers(1);
        user::clickCell(the<QTableWidget>(endpoints), 0, 0);
        user::clickCell(the<QTableWidget>(omega), 1, 1);
        seedRandomNumbers(1);
        // The rounded text never becomes the variance.
        const double eta = std::sqrt(1234567.89) * randomNG().normal();
        QVERIFY(almostEqual(curve("_1_cp_typicalDRPlot").first(), 1 + eta, 1e-12));
    }

    void typesNumbersOfEtas()
    {
        defineStudy();
        edit(endpoints, 0, 0, "THETA1+ETA1");
        type("_1_cb_numEtas", "3");
        edit(omega, 1, 2, "0.5");
        retype("_1_cb_numEtas", "12\r"); // a second digit
        QCOMPARE(cell(omega, 1, 2), "0.5");
        retype("_1_cb_numEtas", "1\r\b3"); // another number
        QCOMPARE(cell(omega, 1, 2), "0");
    }

    void keepsTypedWeights()
    {
        defineStudy();
        const auto selected = [this](int sample) {
            const auto* item = reach<QTableWidget>("_2_tw_relativeWeight")->item(sample, 1);
            return item->background().color() == QColor(Qt::red);
        };
        QVERIFY(!selected(0));
        QVERIFY(selected(2));
        type("_2_sb_dataNumber", "1");
        QCOMPARE(rows("_2_tw_relativeWeight").first(), "0.0179862 0.982014");
        QVERIFY(selected(0));
        edit(weights, 0, 0, "");
        QCOMPARE(rows("_2_tw_relativeWeight").first(), "0 1");
        reach<QWidget>("_3_cp_PoS");
        reach<QWidget>(weights);
        QCOMPARE(cell(weights, 0, 0), "");
    }

    void readsColumns()
    {
        defineStudy();
        type("_m1_le_colNumTHETA1", "20"); // THETA1 is what was the OFV
        QCOMPARE(curve("_1_cp_typicalDRPlot"), QVector<double>({4, 5, 6}));
        type("_m1_le_colNumOFV", "21");
        QCOMPARE(rows("_2_tw_relativeWeight").first(), "0.5 0.5");
        openWindow();
        type("_m1_le_colNumTHETA1", "20");
        defineStudy(); // with the column typed before
        QCOMPARE(curve("_1_cp_typicalDRPlot"), QVector<double>({4, 5, 6}));
    }

    void replacesColumnNumbers()
    {
        retype("_m1_le_colNumOFV", "35");
        QTest::keyClicks(the<QWidget>("_m1_le_colNumOFV"), "a1"); // the old number is not selected
        QCOMPARE(the<QLineEdit>("_m1_le_colNumOFV")->text(), "351");
    }

    void readsBounds_data()
    {
        const Rows<QString, QString, double, QString> row("bound", "shown", "probability", "note");
        row("placed by the program, inf stands for 10", "", "inf", 0, "bound stands for 10: ");
        row("typed by the user, inf is infinite", "inf", "inf", 100, "");
        row("no number", "x", "inf", 0, "bound stands for 10: ");
        row("number", "1e9", "1e9", 100, "");
    }
    void readsBounds()
    {
        QFETCH(QString, bound);
        defineStudy();
        type("_3_le_lowerBound", "-1");
        type("_1_le_possibleDoses", "0,1,11");
        type("_3_le_upperBound", bound);
        QTEST(the<QLineEdit>("_3_le_upperBound")->text(), "shown");
        press(toCurve);
        QTEST(curve("_3_cp_PoS").last(), "probability");
        QFETCH(QString, note);
        QVERIFY(tip("_3_cp_PoS").contains(note));
        QCOMPARE(tip("_3_cp_PoS").contains("stands for"), !note.isEmpty());
    }

    void showsCurvesAndNumbersWhole()
    {
        defineStudy();
        press(toCurve);
        for (const char* chart : {"_1_cp_typicalDRPlot", "_3_cp_PoS"}) {
            QCOMPARE(the<QCustomPlot>(chart)->graph(0)->pen(), QPen(QColor(153, 0, 0), 2));
        }
        type("_1_le_possibleDoses", "1.23457e-123,2");
        chooseDoses("1");
        auto* table = the<QTableWidget>("_4_tw_doseChoice");
        QVERIFY(table->columnWidth(0) >= table->fontMetrics().horizontalAdvance("1.23457e-123"));
        const auto* names = the<QTableWidget>(weights)->verticalHeader();
        QVERIFY(names->maximumWidth() < window->width());

        const QString widest = "name_of_a_column_beyond_the_thousandth";
        const QByteArray heading = "a" + QByteArray(",b").repeated(1000) + ',' + widest.toLatin1();
        pressAndAnswer("__pb_importFbF",
                       {files.write("raw_results_wide.csv", heading + "\n1,2\n")});
        table = reach<QTableWidget>("_1_tw_rawResLabels");
        user::clickCell(the<QTableWidget>(endpoints), 0, 0);
        QCOMPARE(cell("_1_tw_rawResLabels", 0, 1001), widest);
        QVERIFY(table->columnWidth(1001) >= table->fontMetrics().horizontalAdvance(widest));
    }

    /// At dose 1 the endpoint of model 0 lies in the interval in samples 1 and 3 of data set 0
    /// and in sample 3 of data set 1, that of model 1 in all and in the last; at dose 2 all do.
    void judgesDataSets_data()
    {
        const double weight = 1 / (1 + std::exp(1.0)); // of model 1 in the first sample
        const Rows<int, int, double, QString> row("method", "ofv", "atDose1", "meds");
        row("averaging, one OFV", 0, 0, 50 + 50 * weight, "1 1 2 2");
        row("selection, one OFV", 1, 0, 50, "1 2 2 2");
        row("selection, individual OFV", 1, 1, 75, "1 1 1 1");
    }
    void judgesDataSets()
    {
        QFETCH(int, method);
        QFETCH(int, ofv);
        QFETCH(double, atDose1);
        QFETCH(QString, meds);
        defineStudy();
        choose("_3_cb_aveORselect", method);
        choose("_3_cb_indOFVone", ofv);
        press(toCurve);
        QVERIFY(almostEqual(curve("_3_cp_PoS"), {0, atDose1, 100}));
        const QStringList expected{meds, "2 2 2 2"};
        QCOMPARE(chooseDoses("40,74,55,70"), expected);
        press("_4_cb_useCash");
        QCOMPARE(chooseDoses("40,55,70,74"), expected);
        edit(endpoints, 0, 0, "THETA1*0"); // the cache is trusted as it is
        QCOMPARE(chooseDoses("40,55,70,74"), expected);
        press("_4_pb_clearCash");
        QVERIFY(chooseDoses("40,55,70,74") != expected);
    }

    void keepsWhatWasDoneBeforeAnAbort()
    {
        defineStudy();
        choose("_3_cb_aveORselect", 1);
        chooseDoses("40");
        compareWithTruth();
        QString label;
        connect(the<QCustomPlot>("_3_cp_PoS"), &QCustomPlot::afterReplot, this,
                [this, &label] { label = window->findChild<QProgressDialog*>()->labelText(); });
        choose("_3_cb_indOFVone", 0);
        for (const char* button : {toCurve, toDoses}) {
            DialogDriver dialogs;
            dialogs.abortProgressAt(1);
            press(button);
        }
        QVERIFY(almostEqual(curve("_3_cp_PoS"), {0, 50, 100}));
        QVERIFY(label.endsWith("bootstrap samples 0-1."));
        QCOMPARE(the<QTableWidget>("_4_tw_doseChoice")->rowCount(), 1);
        QVERIFY(tip("_3_cp_PoS").contains("the curve holds 2 of 4 samples."));
        QVERIFY(tip("_4_tw_doseChoice").contains("the table holds 1 of 2 data sets."));
        pressAndAnswer(toTruth, {});
        QVERIFY(tip(toTruth).contains("those of an earlier comparison."));
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
