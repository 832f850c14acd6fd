// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "examples/tour/studies.h"
#include "examples/tour/tour.h"
#include "tests/support/dialogdriver.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QTextStream>

namespace {

/// Effects over placebo of the linear, the emax and the quadratic model.
const QStringList endpoints{"THETA2*DOSE", "THETA2*DOSE/(THETA3+DOSE)",
                            "THETA2*DOSE+THETA3*DOSE^2"};
constexpr int emax = 1;

constexpr int dataSets = 20;
constexpr int simulationTab = 1;
constexpr int theoreticalMedColumn = 1;

const char headersText[] = "Some of the headers for the raw_results files for the simulation "
                           "models do not match with the estimation models.  Please double check.";

void showSimulationTab(Tour& tour)
{
    tour.showPage(ImportPage);
    const auto* tabs = tour.widget<QTabWidget>("tabWidget");
    QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {},
                      tabs->tabBar()->tabRect(simulationTab).center());
    tour.require(tabs->currentIndex() == simulationTab, "the simulation tab does not open");
    tour.pause();
}

void importFolder(Tour& tour, const QString& dataFolder)
{
    showSimulationTab(tour);
    DialogDriver dialogs;
    dialogs.answerFiles({QDir(dataFolder).absolutePath()});
    user::click(tour.widget<QPushButton>("__pb_import"));
    tour.require(tour.widget<QTableWidget>("_1_tw_endPoints")->rowCount() == endpoints.size()
                     && tour.widget<QSpinBox>("_0_sb_data")->maximum() == dataSets - 1,
                 "not every model and data set was imported from " + dataFolder);
    tour.savePicture("0-import");
}

/// The emax fits of the last data set.
void viewResults(Tour& tour)
{
    tour.showPage(ResultsPage);
    user::typeText(tour.widget<QSpinBox>("_0_sb_model"), QString::number(emax));
    user::typeText(tour.widget<QSpinBox>("_0_sb_data"), QString::number(dataSets - 1));
    tour.pause();
}

void defineEndpoints(Tour& tour)
{
    tour.showPage(EndpointPage);
    user::typeText(tour.widget<QLineEdit>("_1_le_possibleDoses"), "0:0.1:1");
    auto* table = tour.widget<QTableWidget>("_1_tw_endPoints");
    for (int model = 0; model < endpoints.size(); ++model) {
        user::editCell(table, model, 0, endpoints.at(model));
        tour.pause();
    }
    user::clickCell(table, emax, 0);
    tour.savePicture("1-endpoints");
}

void weighModels(Tour& tour)
{
    tour.showPage(WeightPage);
    tour.saveTable("2-weight-definition", "_2_tw_weightDefinition");
    tour.savePicture("2-weights");
}

void computeProbability(Tour& tour)
{
    tour.showPage(ProbabilityPage);
    user::typeText(tour.widget<QLineEdit>("_3_le_lowerBound"), "0.4");
    user::typeText(tour.widget<QLineEdit>("_3_le_upperBound"), "inf");
    user::chooseItem(tour.widget<QComboBox>("_3_cb_aveORselect"), ModelAverage);
    user::chooseItem(tour.widget<QComboBox>("_3_cb_indOFVone"), IndividualOfv);
    user::click(tour.widget<QPushButton>("_3_pb_calculatePoS"));
    tour.saveCurves("3-probability-data-set-0", "_3_cp_PoS", "dose,probability");
    tour.savePicture("3-probability-data-set-0");
}

/// For every data set; the chart shows the doses chosen at a level of 50 %.
void chooseDoses(Tour& tour)
{
    constexpr int fiftyPercent = 4;
    tour.showPage(DosePage);
    user::typeText(tour.widget<QLineEdit>("_4_le_probabilities"), "10:10:90");
    user::click(tour.widget<QCheckBox>("_4_cb_useCash"));
    user::click(tour.widget<QPushButton>("_4_pb_startCalculation"));
    auto* doses = tour.widget<QTableWidget>("_4_tw_doseChoice");
    tour.require(doses->rowCount() == dataSets && doses->columnCount() == 9,
                 "not every dose choice came");
    user::clickCell(doses, 0, fiftyPercent);
    tour.saveTable("4-dose-choice", "_4_tw_doseChoice");
    tour.saveCurves("4-dose-distribution-50", "_4_cp_doseChoiceDistribution", "dose,frequency");
    tour.savePicture("4-dose-choice");
}

/// The theoretical MEDs as shown, one per data set.
QStringList showComparison(Tour& tour, const QString& name)
{
    const auto* table = tour.widget<QTableWidget>("_5_tw_trueModelTMED");
    tour.require(table->rowCount() == dataSets && table->columnCount() == 2,
                 "the theoretical MEDs " + name + " are missing");
    QStringList meds;
    for (int dataSet = 0; dataSet < dataSets; ++dataSet) {
        const QTableWidgetItem* item = table->item(dataSet, theoreticalMedColumn);
        tour.require(item, QString("data set %1 has no theoretical MED").arg(dataSet));
        meds.append(item->text());
    }
    tour.saveTable("5-theoretical-meds-" + name, "_5_tw_trueModelTMED");
    tour.saveCurves("5-counts-" + name, "_5_cp_truthVisualization",
                    "level,nominal,over,over or equal,all");
    tour.saveCopied("5-analysis-summary-" + name, "_5_cp_truthVisualization",
                    "Copy analysis summary");
    tour.saveTable("5-summary-" + name, "_5_tw_Summary");
    tour.saveTable("5-mean-absolute-errors-" + name, "_5_tw_aveUnderEstOverEst");
    tour.savePicture("5-comparison-" + name);
    return meds;
}

/// Without results of simulation models, the window asks for the true MEDs.
QStringList compareByFile(Tour& tour, const QString& dataFolder)
{
    tour.showPage(TruthPage);
    DialogDriver dialogs;
    dialogs.answerFiles({QDir(dataFolder).absoluteFilePath("true_meds.csv")});
    user::click(tour.widget<QPushButton>("_4_pb_compTruth"));
    return showComparison(tour, "by-file");
}

void importTruth(Tour& tour, const QString& dataFolder)
{
    showSimulationTab(tour);
    QStringList paths;
    for (int dataSet = 0; dataSet < dataSets; ++dataSet) {
        paths.append(
            QDir(dataFolder)
                .absoluteFilePath(
                    QString("raw_results_simulation%1.csv").arg(dataSet, 2, 10, QChar('0'))));
        tour.require(QFile::exists(paths.last()), "there is no " + paths.last());
    }
    DialogDriver dialogs;
    dialogs.answerFiles(paths);
    user::click(tour.widget<QPushButton>("_5_pb_importSimRawRes"));
    dialogs.answerFiles({QDir(dataFolder).absoluteFilePath("true_models.csv")});
    dialogs.acknowledge(headersText);
    user::click(tour.widget<QPushButton>("_5_pb_simTrueModel"));
    tour.savePicture("5-import-of-the-truth");
}

QStringList compareByTrueModels(Tour& tour)
{
    tour.showPage(TruthPage);
    user::click(tour.widget<QPushButton>("_4_pb_compTruth"));
    return showComparison(tour, "by-true-models");
}

void printAgreement(const QStringList& byFile, const QStringList& byTrueModels)
{
    QTextStream out(stdout);
    out << "\nTheoretical MEDs of " << byFile.size() << " simulated data sets, by a file and by "
        << "the true models: ";
    if (byFile == byTrueModels) {
        out << "they agree.\n";
        return;
    }
    out << "they differ.\n";
    for (int dataSet = 0; dataSet < byFile.size(); ++dataSet) {
        if (byFile.at(dataSet) != byTrueModels.at(dataSet)) {
            out << "  data set " << dataSet << ": " << byFile.at(dataSet) << " by file, "
                << byTrueModels.at(dataSet) << " by true model\n";
        }
    }
}

void printSummary(const Tour& tour)
{
    const auto* summary = tour.widget<QTableWidget>("_5_tw_Summary");
    QTextStream out(stdout);
    out << "\nData sets beyond the nominal count, over the probability levels:\n";
    for (int row = 0; row < summary->rowCount(); ++row) {
        out << "  " << summary->verticalHeaderItem(row)->text();
        for (int column = 0; column < summary->columnCount(); ++column) {
            out << ", " << summary->horizontalHeaderItem(column)->text() << ": "
                << summary->item(row, column)->text();
        }
        out << '\n';
    }
}

/// Opens the project in a second window, which must show what the first one shows.
void reopenProject(const Tour& tour, const QString& path)
{
    Tour reopened(tour.outputFolder());
    DialogDriver dialogs;
    dialogs.answerFiles({path});
    QTest::keyClick(&reopened.window(), Qt::Key_O, Qt::ControlModifier);
    reopened.showPage(DosePage);
    reopened.savePicture("6-reopened-dose-choice");
    viewResults(reopened);
    reopened.savePicture("6-reopened-results");
    for (const char* table : {"_4_tw_doseChoice", "_0_tw_RawResults"}) {
        tour.require(reopened.tableText(table) == tour.tableText(table),
                     QString("%1 is not the same in the reopened project").arg(table));
    }
    QTextStream(stdout) << "\nReopened from " << path << ": bootstrap results and dose choice are "
                        << "the same.\n";
}

} // namespace

void playSimulationStudy(Tour& tour, const QString& dataFolder, const QString& projectPath)
{
    importFolder(tour, dataFolder);
    viewResults(tour);
    tour.savePicture("0-bootstrap-results");
    defineEndpoints(tour);
    weighModels(tour);
    computeProbability(tour);
    chooseDoses(tour);

    const QStringList byFile = compareByFile(tour, dataFolder);
    importTruth(tour, dataFolder);
    const QStringList byTrueModels = compareByTrueModels(tour);
    printAgreement(byFile, byTrueModels);
    printSummary(tour);
    tour.showPage(DosePage);
    tour.saveCopied("4-probabilities", "_4_tw_doseChoice", "Copy probabilities");
    tour.saveEndpoints("4-endpoints", "_4_tw_doseChoice");
    tour.saveReports("report");

    tour.saveProject(projectPath);
    reopenProject(tour, QFileInfo(projectPath).absoluteFilePath());
}
