// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "examples/tour/studies.h"
#include "examples/tour/tour.h"
#include "tests/support/dialogdriver.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTextStream>

namespace {

struct CandidateModel
{
    const char* name;
    const char* endpoint;
};

/// In the order of their files' names; each endpoint is the effect over placebo.
const QVector<CandidateModel> models{
    {"emax", "THETA2*DOSE/(THETA3+DOSE)"},
    {"exponential", "THETA2*(exp(DOSE/THETA3)-1)"},
    {"linear", "THETA2*DOSE"},
    {"quadratic", "THETA2*DOSE+THETA3*DOSE^2"},
    {"sigemax", "THETA2*DOSE^THETA4/(THETA3^THETA4+DOSE^THETA4)"},
};
constexpr int emax = 0;

void importFiles(Tour& tour, const QString& dataFolder)
{
    tour.showPage(ImportPage);
    QStringList paths;
    for (const CandidateModel& model : models) {
        paths.append(QFileInfo(QDir(dataFolder), QString("raw_results_%1.csv").arg(model.name))
                         .absoluteFilePath());
        tour.require(QFile::exists(paths.last()), "there is no " + paths.last());
    }
    DialogDriver dialogs;
    dialogs.answerFiles(paths);
    user::click(tour.widget<QPushButton>("__pb_importFbF"));
    tour.require(tour.widget<QTableWidget>("_1_tw_endPoints")->rowCount() == models.size(),
                 "not every model was imported");
    tour.savePicture("0-import");
}

void viewResults(Tour& tour)
{
    tour.showPage(ResultsPage);
    auto* results = tour.widget<QTableWidget>("_0_tw_RawResults");
    int column = 0;
    while (column < results->columnCount()
           && !results->horizontalHeaderItem(column)->text().contains("THETA2")) {
        ++column;
    }
    user::clickCell(results, 0, column);
    tour.savePicture("0-bootstrap-results");
}

void defineEndpoints(Tour& tour)
{
    tour.showPage(EndpointPage);
    user::typeText(tour.widget<QLineEdit>("_1_le_possibleDoses"), "0:0.1:1");
    auto* endpoints = tour.widget<QTableWidget>("_1_tw_endPoints");
    for (int model = 0; model < models.size(); ++model) {
        user::editCell(endpoints, model, 0, models.at(model).endpoint);
        tour.pause();
    }
    user::clickCell(endpoints, emax, 0);
    tour.savePicture("1-endpoints");
}

/// The residual variance of the emax model, column 24, taken as variance between subjects.
void addBetweenSubjectVariability(Tour& tour)
{
    tour.showPage(EndpointPage);
    user::editCell(tour.widget<QTableWidget>("_1_tw_endPoints"), emax, 0,
                   QString(models.at(emax).endpoint) + "+ETA1");
    tour.pause();
    user::editCell(tour.widget<QTableWidget>("_1_tw_etaDefinition"), 0, 0, "COL24");
    tour.savePicture("1-endpoint-with-eta");
}

void weighModels(Tour& tour)
{
    tour.showPage(WeightPage);
    tour.saveTable("2-weight-definition", "_2_tw_weightDefinition");
    tour.saveTable("2-relative-weights", "_2_tw_relativeWeight");
    tour.savePicture("2-weights");
}

void computeProbability(Tour& tour, Choice choice, const QString& name)
{
    tour.showPage(ProbabilityPage);
    user::typeText(tour.widget<QLineEdit>("_3_le_lowerBound"), "0.4");
    user::typeText(tour.widget<QLineEdit>("_3_le_upperBound"), "");
    user::chooseItem(tour.widget<QComboBox>("_3_cb_aveORselect"), choice);
    user::chooseItem(tour.widget<QComboBox>("_3_cb_indOFVone"), IndividualOfv);
    user::click(tour.widget<QPushButton>("_3_pb_calculatePoS"));
    tour.saveCurves("3-probability-" + name, "_3_cp_PoS", "dose,probability");
    tour.savePicture("3-probability-" + name);
}

/// By the choice that the page before shows.
void chooseDoses(Tour& tour, const QString& name)
{
    tour.showPage(DosePage);
    user::typeText(tour.widget<QLineEdit>("_4_le_probabilities"), "50,60,70,80,90");
    user::click(tour.widget<QPushButton>("_4_pb_startCalculation"));
    auto* doses = tour.widget<QTableWidget>("_4_tw_doseChoice");
    tour.require(doses->rowCount() == 1 && doses->columnCount() == 5, "no dose choice came");
    user::clickCell(doses, 0, 0);
    tour.saveTable("4-dose-choice-" + name, "_4_tw_doseChoice");
    tour.savePicture("4-dose-choice-" + name);

    QTextStream out(stdout);
    out << "\nDose chosen by model " << QString(name).replace('-', ' ')
        << ", effect over placebo above 0.4:\n";
    for (int level = 0; level < doses->columnCount(); ++level) {
        out << "  probability above " << doses->horizontalHeaderItem(level)->text()
            << " %: " << doses->item(0, level)->text() << '\n';
    }
}

/// By both methods, in files with this at the end of their names.
void decide(Tour& tour, const QString& suffix)
{
    computeProbability(tour, ModelAverage, "average" + suffix);
    chooseDoses(tour, "average" + suffix);
    computeProbability(tour, ModelSelection, "selection" + suffix);
    chooseDoses(tour, "selection" + suffix);
}

} // namespace

void playBiomarkerStudy(Tour& tour, const QString& dataFolder)
{
    importFiles(tour, dataFolder);
    viewResults(tour);
    defineEndpoints(tour);
    weighModels(tour);
    decide(tour, "-without-eta");
    addBetweenSubjectVariability(tour);
    decide(tour, "");
}
