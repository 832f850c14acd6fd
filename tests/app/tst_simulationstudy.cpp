// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/windowtest.h"

#include <csignal>
#include <sys/resource.h>

namespace {

const char simulationCountText[] =
    "The number of imported raw results files must be the same as number of simulations or one "
    "(if all the simulaitons were generated from the same model with the same parameters).";
const char formatText[] =
    "The file imported does not follow the recognizable format.  Make sure that it is a csv file "
    "with either one row or column.";
const char headersText[] = "Some of the headers for the raw_results files for the simulation "
                           "models do not match with the estimation models.  Please double check.";
const char notFound[] =
    "raw results file cannot be found in this folder, check the namr format definition.";

constexpr int simulations = 3;

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

} // namespace

/// Simulation studies from import to comparison, and analyses saved and opened again.
class TestSimulationStudy : public WindowTest
{
    Q_OBJECT

private slots:
    void init() { openWindow(); }
    void importsSimulationFiles_data();
    void importsSimulationFiles();
    void importsTrueModels_data();
    void importsTrueModels();
    void comparesInBothModes();
    void comparesAtAnyTime();
    void savesWhatItOpened();
    void opensPartsOfFiles_data();
    void opensPartsOfFiles();
    void keepsTheOldFile();

private:
    void importStudy();
    void chooseDoses();
    void saveTo(const QString& path);
    void open(const QString& path, const QString& message = {});
    void pressShortcut(Qt::Key key, const QString& path, const QString& message);
    QStringList column(const char* table, int number) const;

    StudyFiles files;
};

/// Three data sets of two models with the slopes 1, 2 and 3 in every bootstrap sample.
void TestSimulationStudy::importStudy()
{
    for (int model = 0; model < 2; ++model) {
        for (int dataSet = 0; dataSet < simulations; ++dataSet) {
            const QVector<double> row{10.0 * (model + 1), dataSet + 1.0};
            files.writeRawResults(
                QString("raw_results_estimation_model%1_data%2.csv").arg(model).arg(dataSet),
                {row, row});
        }
    }
    pressAndAnswer(ImportPage, "__pb_import", {files.path()}, {}, 1);
}

/// The estimated MEDs are 3, 2 and 1: model 0 is the better one.
void TestSimulationStudy::chooseDoses()
{
    user::showPage(*window, EndpointPage);
    user::typeText(the<QLineEdit>("_1_le_possibleDoses"), "0:1:3");
    user::editCell(the<QTableWidget>("_1_tw_endPoints"), 0, 0, "THETA1*DOSE");
    user::editCell(the<QTableWidget>("_1_tw_endPoints"), 1, 0, "THETA1*DOSE*2");
    user::showPage(*window, WeightPage);
    user::showPage(*window, ProbabilityPage);
    user::typeText(the<QLineEdit>("_3_le_lowerBound"), "2.5");
    user::showPage(*window, DosePage);
    user::typeText(the<QLineEdit>("_4_le_probabilities"), "40,80");
    user::click(the<QCheckBox>("_4_cb_useCash"));
    user::click(the<QPushButton>("_4_pb_startCalculation"));
}

QStringList TestSimulationStudy::column(const char* table, int number) const
{
    QStringList texts;
    for (int row = 0; row < the<QTableWidget>(table)->rowCount(); ++row) {
        texts += cell(table, row, number);
    }
    return texts;
}

void TestSimulationStudy::importsSimulationFiles_data()
{
    QTest::addColumn<int>("fileCount");
    QTest::addColumn<int>("rows");
    QTest::newRow("one for all") << 1 << 1;
    QTest::newRow("one each") << simulations << simulations;
    QTest::newRow("too few") << 2 << 0;
    QTest::newRow("cancelled") << 0 << 0;
}

void TestSimulationStudy::importsSimulationFiles()
{
    importStudy();
    QFETCH(int, fileCount);
    QStringList paths;
    for (int i = 0; i < fileCount; ++i) {
        paths += files.writeRawResults(QString("raw_results_simulation%1.csv").arg(i), {{0, 1}});
    }
    QFETCH(int, rows);
    pressAndAnswer(ImportPage, "_5_pb_importSimRawRes", paths, rows == 0 ? simulationCountText : "",
                   1);
    QCOMPARE(the<QTableWidget>("_5_tw_trueModelTMED")->rowCount(), rows);
}

void TestSimulationStudy::importsTrueModels_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("numbers"); // none: refused
    QTest::newRow("row") << QByteArray("0,1,1\n") << QStringList{"0", "1", "1"};
    QTest::newRow("column, CRLF, no final break")
        << QByteArray("0\r\n1.9\r\n-0.5") << QStringList{"0", "1", "0"};
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbf"
                                                   "1,0,1\n")
                                     << QStringList{"1", "0", "1"};
    QTest::newRow("heading") << QByteArray("model\n0\n1\n1\n") << QStringList();
    QTest::newRow("no such model") << QByteArray("0,1,2\n") << QStringList();
    QTest::newRow("text") << QByteArray("0,x,1\n") << QStringList();
    QTest::newRow("empty") << QByteArray() << QStringList();
}

void TestSimulationStudy::importsTrueModels()
{
    importStudy();
    QFETCH(QByteArray, content);
    QFETCH(QStringList, numbers);
    pressAndAnswer(ImportPage, "_5_pb_simTrueModel", {files.write("true_models.csv", content)},
                   numbers.isEmpty() ? formatText : headersText, 1);
    QCOMPARE(column("_5_tw_trueModelTMED", 0), numbers);
}

void TestSimulationStudy::comparesInBothModes()
{
    importStudy();
    chooseDoses();
    // By a file: one exact hit, one estimate above, one below.
    pressAndAnswer(TruthPage, "_4_pb_compTruth", {files.write("meds.csv", "0,2.1\n0,1\n1,1.5\n")});
    QCOMPARE(column("_5_tw_trueModelTMED", 1), QStringList({"3", "1", "2"}));
    QCOMPARE(column("_5_tw_aveUnderEstOverEst", 0), QStringList({"1", "1"}));
    QCOMPARE(column("_5_tw_Summary", 0), QStringList({"0", "1", "0.2", "0", "1", "0.4"}));
    QCOMPARE(column("_5_tw_Summary", 1), QStringList({"0", "1", "0.4", "0", "1", "0.4"}));
    const char plot[] = "_5_cp_truthVisualization";
    QVERIFY(almostEqual(curve(plot, 0), {1.2, 2.4}));
    QVERIFY(almostEqual(curve(plot, 2), {2, 2}));
    QCOMPARE(the<QCustomPlot>(plot)->graph(3)->channelFillGraph(),
             the<QCustomPlot>(plot)->graph(2));
    QCOMPARE(the<QCustomPlot>(plot)->yAxis->range().upper, 3.0);

    // By the true models: 1 with slope 1 in all data sets, one file for data set 0 alone.
    pressAndAnswer(ImportPage, "_5_pb_simTrueModel", {files.write("models.csv", "1\n1\n1\n")},
                   headersText, 1);
    pressAndAnswer(ImportPage, "_5_pb_importSimRawRes",
                   {files.writeRawResults("raw_results_simulation.csv", {{0, 1}, {0, 9}})}, {}, 1);
    QCOMPARE(column("_5_tw_trueModelTMED", 0), QStringList({"1"}));
    user::showPage(*window, TruthPage);
    user::click(the<QPushButton>("_4_pb_compTruth"));
    QCOMPARE(cell("_5_tw_trueModelTMED", 0, 1), "2"); // 2 x 2 is the first above 2.5
    QVERIFY(almostEqual(curve(plot, 1), {1, 1}));     // the estimate of 3 is above

    // A number that cannot be read ends the comparison silently; the plot stays.
    user::editCell(the<QTableWidget>("_5_tw_trueModelTMED"), 0, 0, "one");
    user::click(the<QPushButton>("_4_pb_compTruth"));
    QCOMPARE(the<QTableWidget>("_5_tw_aveUnderEstOverEst")->rowCount(), 0);
    QCOMPARE(column("_5_tw_Summary", 0), QStringList({"nan", "nan", "nan", "0", "0", "0"}));
    QVERIFY(almostEqual(curve(plot, 1), {1, 1}));
}

void TestSimulationStudy::comparesAtAnyTime()
{
    const auto compare = [this] { pressAndAnswer(TruthPage, "_4_pb_compTruth", {}); };
    compare();
    importStudy();
    compare();
    chooseDoses();
    compare();
    QCOMPARE(column("_5_tw_aveUnderEstOverEst", 0), QStringList({"nan", "nan"}));
    pressAndAnswer(ImportPage, "_5_pb_importSimRawRes", {files.write("bare.csv", "a,b\n")}, {}, 1);
    user::showPage(*window, TruthPage);
    user::click(the<QPushButton>("_4_pb_compTruth")); // no true model yet, no data row ever
    user::editCell(the<QTableWidget>("_5_tw_trueModelTMED"), 0, 0, "1");
    user::click(the<QPushButton>("_4_pb_compTruth"));
    QCOMPARE(column("_5_tw_trueModelTMED", 1), QStringList({"nan"}));
}

void TestSimulationStudy::saveTo(const QString& path)
{
    QFile::remove(path); // no question whether to replace it
    pressShortcut(Qt::Key_S, path, {});
}

void TestSimulationStudy::open(const QString& path, const QString& message)
{
    pressShortcut(Qt::Key_O, path, message);
    QCOMPARE(the<QLabel>("__lb_directory")->text(), path);
}

/// Ctrl and the key; the file dialog takes the path, a message box after it has the text.
void TestSimulationStudy::pressShortcut(Qt::Key key, const QString& path, const QString& message)
{
    user::show(*window);
    DialogDriver dialogs;
    dialogs.answerFiles({path});
    if (!message.isEmpty()) {
        dialogs.acknowledge(message);
    }
    QTest::keyClick(window.get(), key, Qt::ControlModifier);
}

void TestSimulationStudy::savesWhatItOpened()
{
    saveTo(files.path("empty"));
    importStudy();
    chooseDoses();
    user::showPage(*window, EndpointPage);
    user::editCell(the<QTableWidget>("_1_tw_endPoints"), 1, 0, "THETA1+ETA2");
    user::editCell(the<QTableWidget>("_1_tw_etaDefinition"), 1, 1, "0.123456789");
    user::editCell(the<QTableWidget>("_1_tw_etaDefinition"), 0, 1, "COL20");
    user::chooseItem(the<QComboBox>("_1_cb_iivEndPoint"), 2);
    user::showPage(*window, WeightPage);
    user::editCell(the<QTableWidget>("_2_tw_weightDefinition"), 0, 0, "");
    user::click(the<QCheckBox>("_2_cb_logScale"));
    user::showPage(*window, ProbabilityPage);
    user::chooseItem(the<QComboBox>("_3_cb_aveORselect"), 0);
    user::chooseItem(the<QComboBox>("_3_cb_indOFVone"), 0);
    user::typeText(the<QLineEdit>("_3_le_upperBound"), "");
    saveTo(files.path("first"));

    openWindow();
    open(files.path("first"));
    QCOMPARE(cell("_2_tw_relativeWeight", 0, 1), "nan");
    QCOMPARE(column("_4_tw_doseChoice", 0), QStringList({"3", "2", "1"}));
    saveTo(files.path("second"));
    QCOMPARE(contentOf(files.path("second")), contentOf(files.path("first")));

    open(files.path("empty"), notFound);
    saveTo(files.path("third"));
    QCOMPARE(the<QLineEdit>("_1_le_possibleDoses")->text(), "");
    openWindow();
    open(files.path("empty"), notFound);
    saveTo(files.path("fourth"));
    QCOMPARE(contentOf(files.path("fourth")), contentOf(files.path("empty")));
}

void TestSimulationStudy::opensPartsOfFiles_data()
{
    QTest::addColumn<int>("percent"); // of the file that is left
    for (const int percent : {0, 1, 30, 60, 80, 90, 95, 99, 100}) {
        QTest::addRow("%d", percent) << percent;
    }
}

void TestSimulationStudy::opensPartsOfFiles()
{
    importStudy();
    chooseDoses();
    saveTo(files.path("whole"));
    const QByteArray bytes = contentOf(files.path("whole"));
    QFETCH(int, percent);
    files.write("part", bytes.left(bytes.size() * percent / 100));
    for (const bool fresh : {true, false}) {
        if (fresh) {
            openWindow();
        }
        // Less than a third of the file ends within the bootstrap results.
        open(files.path("part"), percent > 0 && percent <= 30 ? notFound : "");
        user::showPage(*window, DosePage);
        user::click(the<QPushButton>("_4_pb_startCalculation"));
        user::showPage(*window, ProbabilityPage);
        user::click(the<QPushButton>("_3_pb_calculatePoS"));
        saveTo(files.path("again"));
    }
}

void TestSimulationStudy::keepsTheOldFile()
{
    importStudy();
    const QString path = files.write("project", "old");
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    const rlimit tooSmall{100, unlimited.rlim_max};
    signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &tooSmall);
    user::show(*window);
    {
        DialogDriver dialogs;
        dialogs.answerFiles({path});
        dialogs.acknowledge("project already exists.\nDo you want to replace it?");
        dialogs.acknowledge("File too large");
        QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier);
    }
    setrlimit(RLIMIT_FSIZE, &unlimited);
    QCOMPARE(contentOf(path), QByteArray("old"));
}

QTEST_MAIN(TestSimulationStudy)
#include "tst_simulationstudy.moc"
