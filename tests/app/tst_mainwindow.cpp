// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/logcapture.h"
#include "tests/support/windowtest.h"

QT_WARNING_DISABLE_DEPRECATED // qsrand

    namespace
{

    const char mismatch[] = "Headers of the raw_results files do not match.";
    const char failed[] = "raw_results file import failed.";
    const char notFound[] =
        "raw results file cannot be found in this folder, check the namr format definition.";

    /// Bootstrap rows of an OFV and THETA1 from 1 on.
    QVector<QVector<double>> rows(int count, double ofv)
    {
        QVector<QVector<double>> result;
        for (int sample = 1; sample <= count; ++sample) {
            result.append({ofv, double(sample)});
        }
        return result;
    }

} // namespace

class TestMainWindow : public WindowTest
{
    Q_OBJECT

private slots:
    void init() { openWindow(); }
    void startsEmpty();
    void importsPickedFiles();
    void importsFolders_data();
    void importsFolders();
    void staysUsableAfterAnAbort();
    void takesColumnNumbers();
    void binsTheVisibleRange();
    void definesVariability();
    void keepsTypedWeights();
    void readsBounds();
    void findsProbabilities_data();
    void findsProbabilities();
    void selectsDoses();

private:
    void importFiles(const QStringList& paths);
    void defineStudy();
    void visitAllPages();
};

void TestMainWindow::importFiles(const QStringList& paths)
{
    pressAndAnswer(ImportPage, "__pb_importFbF", paths,
                   paths.isEmpty() ? "raw results file cannot be found" : "");
}

/// Two models of four samples; model "a" is the better one in samples 0 and 1.
void TestMainWindow::defineStudy()
{
    const StudyFiles files;
    importFiles({files.writeRawResults("raw_results_b.csv", {{4, 1}, {4, 1}, {2, 1}, {2, 1}}),
                 files.writeRawResults("raw_results_a.csv", {{2, 1}, {2, 2}, {4, 3}, {6, 4}})});
    user::showPage(*window, EndpointPage);
    user::typeText(the<QLineEdit>("_1_le_possibleDoses"), "0,1,2");
    user::editCell(the<QTableWidget>("_1_tw_endPoints"), 0, 0, "THETA1*DOSE");
    user::editCell(the<QTableWidget>("_1_tw_endPoints"), 1, 0, "THETA1+DOSE");
    user::showPage(*window, WeightPage);
    user::showPage(*window, ProbabilityPage);
    user::typeText(the<QLineEdit>("_3_le_lowerBound"), "1.5");
    user::typeText(the<QLineEdit>("_3_le_upperBound"), "");
}

void TestMainWindow::visitAllPages()
{
    for (int page = ImportPage; page <= DosePage; ++page) {
        user::showPage(*window, page);
    }
    user::typeText(the<QLineEdit>("_4_le_probabilities"), "50");
    user::click(the<QPushButton>("_4_pb_startCalculation"));
    user::showPage(*window, ProbabilityPage);
    for (const int method : {0, 1}) {
        user::chooseItem(the<QComboBox>("_3_cb_aveORselect"), method);
        user::click(the<QPushButton>("_3_pb_calculatePoS"));
    }
}

void TestMainWindow::startsEmpty()
{
    LogCapture log;
    const MainWindow fresh;
    QVERIFY2(log.messages().isEmpty(), "a slot without its widget, or a widget without its slot");
    for (const char* hidden :
         {"_3_sl_doseSlider", "_3_cp_epDistribution", "_3_lb_indpVar", "_1_tw_etaDefinition",
          "_1_lb_etaText", "_1_cb_numEtas", "_1_cb_iivEndPoint", "_1_sb_numSimulations"}) {
        QVERIFY2(user::widget<QWidget>(fresh, hidden)->isHidden(), hidden);
    }
    QCOMPARE(user::widget<QToolBox>(fresh, "__mainToolBox")->currentIndex(), 0);
    visitAllPages();
    QCOMPARE(the<QTableWidget>("_2_tw_weightDefinition")->rowCount(), 0);
}

void TestMainWindow::importsPickedFiles()
{
    const StudyFiles files;
    importFiles(
        {files.writeRawResults("raw_results_linear.csv", rows(3, 7)),
         files.write("raw_results_emax.csv", "\"a\",\"b\",\"OMEGA(2,1)\"\r\n1,NA\r\n2,3,4")});
    QCOMPARE(the<QLabel>("__lb_directory")->text(), files.path());
    QCOMPARE(the<QSpinBox>("_0_sb_model")->maximum(), 1);
    QVERIFY(the<QSpinBox>("_0_sb_data")->isHidden());
    QCOMPARE(the<QTableWidget>("_1_tw_endPoints")->verticalHeaderItem(0)->text(), "emax");
    QCOMPARE(the<QTableWidget>("_2_tw_relativeWeight")->horizontalHeaderItem(1)->text(), "linear");
    QCOMPARE(the<QTableWidget>("_0_tw_RawResults")->columnCount(), 4);
    QCOMPARE(cell("_0_tw_RawResults", 0, 1), "nan");
    QCOMPARE(cell("_0_tw_RawResults", 0, 2), "NaN");
    user::showPage(*window, ResultsPage);
    user::typeText(the<QSpinBox>("_0_sb_model"), "1");
    QCOMPARE(cell("_0_tw_RawResults", 2, 20), "3");
    importFiles({}); // cancelled: the data stay
    QCOMPARE(cell("_0_tw_RawResults", 2, 20), "3");
}

void TestMainWindow::importsFolders_data()
{
    QTest::addColumn<QStringList>("files"); // model and data set, such as "0_1"
    QTest::addColumn<QString>("modelPrefix");
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("modelMaximum");
    QTest::addColumn<int>("dataSetMaximum");
    QTest::addColumn<QString>("lastOfModel1"); // OFV of its last data set
    const QString usual = "estimation_model";
    QTest::newRow("a gap ends the models")
        << QStringList{"0_0", "1_0", "3_0"} << usual << QString() << 1 << 0 << "10";
    QTest::newRow("a missing data set repeats the last")
        << QStringList{"0_0", "0_1", "0_2", "1_0", "1_1"} << usual << QString() << 1 << 2 << "11";
    QTest::newRow("another heading ends model 0")
        << QStringList{"0_0", "0_1 wide", "1_0", "1_1"} << usual << mismatch << 1 << 0 << "10";
    QTest::newRow("a model without data set 0")
        << QStringList{"0_0", "0_1", "1_0 gone", "1_1"} << usual << QString() << 0 << 1 << "";
    QTest::newRow("headings are looked for under the default names")
        << QStringList{"0_0", "1_0"} << "run" << mismatch << 1 << -1 << "";
    QTest::newRow("nothing there") << QStringList{"1_0"} << usual << notFound << 99 << 99 << "";
}

void TestMainWindow::importsFolders()
{
    QFETCH(QStringList, files);
    QFETCH(QString, modelPrefix);
    QFETCH(QString, message);
    const StudyFiles study;
    for (const QString& file : files) {
        const int model = file.mid(0, 1).toInt();
        const int dataSet = file.mid(2, 1).toInt();
        if (!file.endsWith("gone")) {
            QVector<QVector<double>> data{{model * 10.0 + dataSet, 1}};
            data.first().resize(file.endsWith("wide") ? 3 : 2);
            study.writeRawResults(
                QString("raw_results_%1%2_data%3.csv").arg(modelPrefix).arg(model).arg(dataSet),
                data);
        }
    }
    the<QTabWidget>("tabWidget")->setCurrentIndex(1);
    user::typeText(the<QLineEdit>("_m1_le_modelNumPrefex"), modelPrefix);
    pressAndAnswer(ImportPage, "__pb_import", {study.path()}, message, 1);
    QCOMPARE(the<QLabel>("__lb_directory")->text(), study.path());
    QTEST(the<QSpinBox>("_0_sb_model")->maximum(), "modelMaximum");
    QTEST(the<QSpinBox>("_0_sb_data")->maximum(), "dataSetMaximum");
    user::showPage(*window, ResultsPage);
    user::typeText(the<QSpinBox>("_0_sb_model"), "1");
    user::typeText(the<QSpinBox>("_0_sb_data"), "2");
    QFETCH(QString, lastOfModel1);
    if (!lastOfModel1.isEmpty()) {
        QCOMPARE(cell("_0_tw_RawResults", 0, 19), lastOfModel1);
    }
    visitAllPages();
}

void TestMainWindow::staysUsableAfterAnAbort()
{
    const StudyFiles study;
    for (int model = 0; model < 3; ++model) {
        study.writeRawResults(QString("raw_results_estimation_model%1_data0.csv").arg(model),
                              rows(6 - model, 5));
    }
    pressAndAnswer(ImportPage, "__pb_import", {study.path()}, {}, 1, 1);
    QCOMPARE(the<QTableWidget>("_1_tw_endPoints")->rowCount(), 0);
    visitAllPages();
    pressAndAnswer(ImportPage, "__pb_import", {study.path()}, {}, 1);
    QCOMPARE(the<QTableWidget>("_1_tw_endPoints")->rowCount(), 3);
    visitAllPages();
    QCOMPARE(cell("_2_tw_relativeWeight", 3, 2), "0.333333"); // the last row of model 2
    QCOMPARE(cell("_2_tw_relativeWeight", 5, 0), "1");
}

void TestMainWindow::takesColumnNumbers()
{
    defineStudy();
    user::showPage(*window, ImportPage);
    QLineEdit* column = the<QLineEdit>("_m1_le_colNumTHETA1");
    QTest::keyClicks(column, "2a");
    QCOMPARE(column->text(), "212");
    user::typeText(column, "20"); // THETA1 is what was the OFV
    user::showPage(*window, EndpointPage);
    QCOMPARE(curve("_1_cp_typicalDRPlot"), QVector<double>({4, 5, 6}));
    QCOMPARE(cell("_1_tw_rawResLabels", 0, 19), "\"ofv\"");
}

void TestMainWindow::binsTheVisibleRange()
{
    const StudyFiles files;
    importFiles({files.writeRawResults("raw_results_a.csv", rows(100, 5))});
    user::showPage(*window, ResultsPage);
    user::clickCell(the<QTableWidget>("_0_tw_RawResults"), 3, 20);
    QCustomPlot* plot = the<QCustomPlot>("_0_cp_rawResHistoGram");
    const auto drawn = [&] {
        double sum = 0;
        for (const double count : curve("_0_cp_rawResHistoGram")) {
            sum += count / 2;
        }
        return sum;
    };
    QCOMPARE(drawn(), 100.0); // 20 bins, the last of them empty
    QCOMPARE(plot->graph(0)->dataCount(), 38);
    QCOMPARE(plot->xAxis->label(), "\"THETA1\"");

    plot->xAxis->setRange(10, 50);
    QCOMPARE(drawn(), 38.0); // [10, 48)
    QCOMPARE(plot->graph(0)->data()->at(0)->key, 10 + 1e-8);
    user::clickCell(the<QTableWidget>("_0_tw_RawResults"), 3, 19);
    QVERIFY(plot->xAxis->range().contains(5)); // constant, and out of sight before
    QCOMPARE(drawn(), 100.0);
}

void TestMainWindow::definesVariability()
{
    defineStudy();
    QTableWidget* endpoints = the<QTableWidget>("_1_tw_endPoints");
    QTableWidget* omega = the<QTableWidget>("_1_tw_etaDefinition");
    user::showPage(*window, EndpointPage);
    user::editCell(endpoints, 0, 0, "THETA1+ETA2");
    QVERIFY(omega->isVisible());
    QCOMPARE(omega->rowCount(), 2);
    QCOMPARE(the<QSpinBox>("_1_cb_numEtas")->minimum(), 2);
    user::editCell(omega, 0, 1, "Col2");
    QCOMPARE(cell("_1_tw_etaDefinition", 1, 0), "COL2");
    user::editCell(omega, 0, 1, "col3");
    QCOMPARE(cell("_1_tw_etaDefinition", 0, 1), "COL2");
    user::editCell(omega, 1, 0, "0");
    user::editCell(omega, 1, 1, "1234567.89");
    QCOMPARE(cell("_1_tw_etaDefinition", 1, 1), "1.23457e+06");

    // The rounded text never becomes the variance.
    user::clickCell(endpoints, 1, 0);
    QVERIFY(omega->isHidden());
    user::clickCell(endpoints, 0, 0);
    user::clickCell(omega, 1, 1);
    user::typeText(the<QSpinBox>("_1_cb_numEtas"), "3");
    QCOMPARE(omega->columnCount(), 3);
    user::typeText(the<QSpinBox>("_1_sb_numSimulations"), "1");
    user::clickCell(endpoints, 1, 0);
    qsrand(1);
    user::clickCell(endpoints, 0, 0);
    qsrand(1);
    const double u1 = qrand() / 2147483647.0;
    const double deviate =
        std::sqrt(-2 * std::log(u1)) * std::cos(6.283185307179586 * (qrand() / 2147483647.0));
    QVERIFY(almostEqual(curve("_1_cp_typicalDRPlot").first(), 1 + std::sqrt(1234567.89) * deviate,
                        1e-12));
}

void TestMainWindow::keepsTypedWeights()
{
    defineStudy();
    user::showPage(*window, WeightPage);
    QTableWidget* weights = the<QTableWidget>("_2_tw_weightDefinition");
    QCOMPARE(cell("_2_tw_weightDefinition", 1, 0), "(0-1-ofv/2)");
    QCOMPARE(cell("_2_tw_relativeWeight", 0, 0), "0.731059"); // 1 / (1 + exp(-1))
    QTableWidget* relative = the<QTableWidget>("_2_tw_relativeWeight");
    QCOMPARE(relative->item(0, 0)->background().color(), QColor(Qt::red));
    QCOMPARE(relative->item(0, 1)->background().color(), QColor(Qt::white));
    QCOMPARE(relative->item(2, 1)->background().color(), QColor(Qt::red));
    user::editCell(weights, 0, 0, "");
    QCOMPARE(cell("_2_tw_relativeWeight", 0, 0), "0");
    user::showPage(*window, ProbabilityPage);
    user::showPage(*window, WeightPage);
    QCOMPARE(cell("_2_tw_weightDefinition", 0, 0), "");
    user::click(the<QCheckBox>("_2_cb_logScale"));
    user::click(the<QCheckBox>("_2_cb_logScale"));
    QCOMPARE(weights->horizontalHeaderItem(0)->text(), "Weight Definition");
}

void TestMainWindow::readsBounds()
{
    defineStudy();
    QLineEdit* upper = the<QLineEdit>("_3_le_upperBound");
    const auto lastProbability = [this] {
        user::click(the<QPushButton>("_3_pb_calculatePoS"));
        return curve("_3_cp_PoS").last();
    };
    user::typeText(the<QLineEdit>("_3_le_lowerBound"), "-1");
    user::showPage(*window, EndpointPage);
    user::typeText(the<QLineEdit>("_1_le_possibleDoses"), "0,1,11");
    user::showPage(*window, ProbabilityPage);
    QCOMPARE(upper->text(), "inf");
    QCOMPARE(lastProbability(), 0.0); // endpoints of 11 and more exceed the 10 of an empty bound
    upper->setFocus();
    QTest::keyClick(upper, Qt::Key_Return);
    QCOMPARE(lastProbability(), 0.0); // the text was placed by the program
    user::typeText(upper, "inf");
    QCOMPARE(lastProbability(), 100.0); // this one by the user
    user::typeText(upper, "x");
    QCOMPARE(lastProbability(), 0.0);
}

void TestMainWindow::findsProbabilities_data()
{
    QTest::addColumn<int>("method"); // averaging, selection
    QTest::addColumn<int>("ofv");    // one, individual
    QTest::addColumn<QVector<double>>("probability");
    // In the interval: of model "a" (THETA1*DOSE) no sample, samples 1 to 3, all; of model
    // "b" (THETA1+DOSE) none, all, all.
    const double a1 = 1 / (1 + std::exp(-1.0));
    QTest::newRow("average, one") << 0 << 0 << QVector<double>{0, (1 - a1) * 100 + a1 * 75, 100};
    QTest::newRow("average, individual") << 0 << 1 << QVector<double>{0, 75 + (1 - a1) * 25, 100};
    QTest::newRow("selection, one") << 1 << 0 << QVector<double>{0, 75, 100};
    QTest::newRow("selection, individual") << 1 << 1 << QVector<double>{0, 75, 100};
}

void TestMainWindow::findsProbabilities()
{
    defineStudy();
    QFETCH(int, method);
    QFETCH(int, ofv);
    QFETCH(QVector<double>, probability);
    user::chooseItem(the<QComboBox>("_3_cb_aveORselect"), method);
    user::chooseItem(the<QComboBox>("_3_cb_indOFVone"), ofv);
    user::click(the<QPushButton>("_3_pb_calculatePoS"));
    QVERIFY(almostEqual(curve("_3_cp_PoS"), probability));
    QCOMPARE(the<QCustomPlot>("_3_cp_PoS")->xAxis->label(), "DOSE");
    QCOMPARE(the<QCustomPlot>("_3_cp_PoS")->yAxis->range().upper, 100.0);
}

void TestMainWindow::selectsDoses()
{
    defineStudy();
    user::showPage(*window, DosePage);
    user::typeText(the<QLineEdit>("_4_le_probabilities"), "80:10:95,");
    user::click(the<QPushButton>("_4_pb_startCalculation"));
    QCOMPARE(the<QTableWidget>("_4_tw_doseChoice")->columnCount(), 0);
    const auto choose = [this](const QString& levels) {
        user::showPage(*window, DosePage);
        user::typeText(the<QLineEdit>("_4_le_probabilities"), levels);
        user::click(the<QPushButton>("_4_pb_startCalculation"));
        QStringList doses;
        for (int level = 0; level < the<QTableWidget>("_4_tw_doseChoice")->columnCount(); ++level) {
            doses += cell("_4_tw_doseChoice", 0, level);
        }
        return doses.join(' ');
    };
    QCOMPARE(choose("75,100,70"), "1 2 nan");
    QCOMPARE(the<QTableWidget>("_4_tw_doseChoice")->horizontalHeaderItem(1)->text(), "75");

    // The cache serves both methods, and is trusted until it is cleared.
    user::click(the<QCheckBox>("_4_cb_useCash"));
    QCOMPARE(choose("70,75"), "1 2");
    user::showPage(*window, EndpointPage);
    user::editCell(the<QTableWidget>("_1_tw_endPoints"), 0, 0, "THETA1*0");
    user::showPage(*window, ProbabilityPage);
    user::chooseItem(the<QComboBox>("_3_cb_aveORselect"), 0);
    QCOMPARE(choose("70,80"), "1 1");
    user::click(the<QPushButton>("_4_pb_clearCash"));
    QCOMPARE(choose("10,80"), "1 nan");
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
