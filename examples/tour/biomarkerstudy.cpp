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

struct Method
{
    Choice choice;
    QString name;
};

const QVector<Method> methods{{ModelAverage, "average"}, {ModelSelection, "selection"}};

constexpr char endpointTable[] = "_1_tw_endPoints";
constexpr char doseTable[] = "_4_tw_doseChoice";

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
    tour.require(tour.widget<QTableWidget>(endpointTable)->rowCount() == models.size(),
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
    auto* endpoints = tour.widget<QTableWidget>(endpointTable);
    for (int model = 0; model < models.size(); ++model) {
        user::editCell(endpoints, model, 0, models.at(model).endpoint);
        tour.pause();
    }
    user::clickCell(endpoints, emax, 0);
    tour.savePicture("1-endpoints");
}

void weighModels(Tour& tour)
{
    tour.showPage(WeightPage);
    tour.saveTable("2-weight-definition", "_2_tw_weightDefinition");
    tour.saveTable("2-relative-weights", "_2_tw_relativeWeight");
    tour.savePicture("2-weights");
}

void defineTarget(Tour& tour)
{
    tour.showPage(ProbabilityPage);
    user::typeText(tour.widget<QLineEdit>("_3_le_lowerBound"), "0.4");
    user::typeText(tour.widget<QLineEdit>("_3_le_upperBound"), "inf");
    user::chooseItem(tour.widget<QComboBox>("_3_cb_indOFVone"), IndividualOfv);
}

/// Chooses how to combine the models, on page "3"; page "4" uses these choices, too.
void chooseMethod(Tour& tour, const Method& method)
{
    tour.showPage(ProbabilityPage);
    user::chooseItem(tour.widget<QComboBox>("_3_cb_aveORselect"), method.choice);
}

void computeProbability(Tour& tour, const QString& name)
{
    user::click(tour.widget<QPushButton>("_3_pb_calculatePoS"));
    tour.saveCurves("3-probability-" + name, "_3_cp_PoS", "dose,probability");
    tour.savePicture("3-probability-" + name);
}

void chooseDoses(Tour& tour, const QString& name)
{
    tour.showPage(DosePage);
    user::typeText(tour.widget<QLineEdit>("_4_le_probabilities"), "50,60,70,80,90");
    user::click(tour.widget<QPushButton>("_4_pb_startCalculation"));
    auto* doses = tour.widget<QTableWidget>(doseTable);
    tour.require(doses->rowCount() == 1 && doses->columnCount() == 5, "no dose choice came");
    user::clickCell(doses, 0, 0);
    tour.saveTable("4-dose-choice-" + name, doseTable);
    tour.savePicture("4-dose-choice-" + name);

    QTextStream out(stdout);
    out << "\nDose chosen by model " << QString(name).replace('-', ' ')
        << ", effect over placebo above 0.4:\n";
    for (int level = 0; level < doses->columnCount(); ++level) {
        out << "  probability above " << doses->horizontalHeaderItem(level)->text()
            << " %: " << doses->item(0, level)->text() << '\n';
    }
}

/// Pages "3" and "4", each by all methods, in files with this at the end of their names.
void decide(Tour& tour, const QString& suffix)
{
    for (const Method& method : methods) {
        chooseMethod(tour, method);
        computeProbability(tour, method.name + suffix);
    }
    for (const Method& method : methods) {
        chooseMethod(tour, method);
        chooseDoses(tour, method.name + suffix);
    }
}

/// The residual variance of the emax model, column 24, taken as variance between subjects.
void addBetweenSubjectVariability(Tour& tour)
{
    tour.showPage(EndpointPage);
    user::editCell(tour.widget<QTableWidget>(endpointTable), emax, 0,
                   QString(models.at(emax).endpoint) + "+ETA1");
    tour.pause();
    user::editCell(tour.widget<QTableWidget>("_1_tw_etaDefinition"), 0, 0, "COL24");
    tour.savePicture("1-endpoint-with-eta");
    const auto* weights = tour.widget<QTableWidget>("_2_tw_weightDefinition");
    tour.require(weights->item(emax, 0)->toolTip().contains("With K = 3"),
                 "the weight does not show that an ETA counts in K");
}

/// Without the ETA, the doses by the method chosen last are the same as before.
void takeBetweenSubjectVariabilityBack(Tour& tour, const QString& dosesBefore)
{
    tour.showPage(EndpointPage);
    user::editCell(tour.widget<QTableWidget>(endpointTable), emax, 0, models.at(emax).endpoint);
    tour.showPage(DosePage);
    user::click(tour.widget<QPushButton>("_4_pb_startCalculation"));
    tour.require(tour.tableText(doseTable) == dosesBefore,
                 "without the ETA the doses are not those of before");
}

/// Shows how certain the doses by averaging are, and saves all exports of it.
void judgeCertainty(Tour& tour)
{
    chooseMethod(tour, methods.first());
    user::click(tour.widget<QPushButton>("_3_pb_calculatePoS"));
    tour.saveEndpoints("3-endpoints", "_3_cp_PoS");
    tour.showPage(DosePage);
    user::click(tour.widget<QPushButton>("_4_pb_startCalculation"));
    constexpr int eightyPercent = 3;
    tour.savePictureOfTip("4-certainty", doseTable, eightyPercent);
    user::clickCell(tour.widget<QTableWidget>(doseTable), 0, 0);
    tour.saveCopied("4-certainty-of-doses", doseTable, "Copy certainty of doses");
    tour.saveCopied("4-contributions", doseTable, "Copy contributions");
    tour.saveCopied("4-averaged-endpoint", doseTable, "Copy averaged endpoint");
    tour.saveCopied("4-sensitivity", doseTable, "Copy sensitivity");
    tour.saveCopied("4-probabilities", doseTable, "Copy probabilities");
    tour.saveEndpoints("4-endpoints", doseTable);
    tour.saveReports("report");
}

} // namespace

void playBiomarkerStudy(Tour& tour, const QString& dataFolder, const QString& projectPath)
{
    importFiles(tour, dataFolder);
    viewResults(tour);
    defineEndpoints(tour);
    weighModels(tour);
    defineTarget(tour);
    decide(tour, "-without-eta");
    const QString doses = tour.tableText(doseTable);
    addBetweenSubjectVariability(tour);
    decide(tour, "");
    takeBetweenSubjectVariabilityBack(tour, doses);
    judgeCertainty(tour);
    tour.saveProject(projectPath);
}
