// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/comparison.h"
#include "bench/painting.h"
#include "bench/studywindow.h"
#include "bench/subjects.h"
#include "tests/support/dialogdriver.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

/// The longest time in seconds that a user does not feel as waiting.
constexpr double unnoticed = 0.05;

constexpr int modelCount = 5;

const QStringList endpoints{"THETA2*DOSE/(THETA3+DOSE)", "THETA2*(exp(DOSE/THETA3)-1)",
                            "THETA2*DOSE", "THETA2*DOSE+THETA3*DOSE^2",
                            "THETA2*DOSE^THETA4/(THETA3^THETA4+DOSE^THETA4)"};

/// Presses keys in the window of the biomarker study and times each until the window is painted.
class Editing
{
public:
    Editing();

    /// Edits on both pages; returns the seconds of the slowest key.
    double playRound();

private:
    void press(Qt::Key key);
    void type(const QString& text);
    void editDoses(const QString& text);
    void editCell(const char* name, int row, const QString& text);

    StudyWindow window;
    PaintCounter paints;
    std::vector<double> seconds;
};

Editing::Editing()
    : paints(window.window())
{
    const QDir folder(QStringLiteral(VELMORA_EXAMPLES "/biomarker"));
    QStringList paths;
    for (const QString& file : folder.entryList({"raw_results_*.csv"}, QDir::Files)) {
        paths.append(folder.filePath(file));
    }
    window.showPage(ImportPage);
    DialogDriver dialogs;
    dialogs.answerFiles(paths);
    window.press("__pb_importFbF");
    require(window.widget<QTableWidget>("_1_tw_endPoints")->rowCount() == modelCount,
            "the biomarker study is not there");
}

void Editing::press(Qt::Key key)
{
    seconds.push_back(
        secondsUntilSeen(paints, [key] { QTest::keyClick(QApplication::focusWidget(), key); }));
}

void Editing::type(const QString& text)
{
    for (const QChar letter : text) {
        seconds.push_back(secondsUntilSeen(
            paints, [letter] { QTest::keyClick(QApplication::focusWidget(), letter.toLatin1()); }));
    }
}

void Editing::editDoses(const QString& text)
{
    auto* edit = window.widget<QLineEdit>("_1_le_possibleDoses");
    edit->setFocus();
    edit->selectAll();
    type(text);
    require(edit->text() == text, "the doses were not typed");
}

/// Types the last letter only, and Return.
void Editing::editCell(const char* name, int row, const QString& text)
{
    auto* table = window.widget<QTableWidget>(name);
    const QPoint place = user::clickCell(table, row, 0);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    require(editor != nullptr, "a cell cannot be edited");
    editor->setText(text.chopped(1));
    QCoreApplication::processEvents();
    type(text.right(1));
    press(Qt::Key_Return);
    require(table->item(row, 0)->text() == text, "a cell was not edited");
}

double Editing::playRound()
{
    seconds.clear();
    window.showPage(EndpointPage);
    editDoses("0:0.05:1");
    for (int model = 0; model < modelCount; ++model) {
        editCell("_1_tw_endPoints", model, endpoints.at(model));
        editCell("_1_tw_endPoints", model, endpoints.at(model) + "+ETA1");
        editCell("_1_tw_etaDefinition", 0, "0.04");
        editCell("_1_tw_etaDefinition", 0, "COL24");
    }
    editDoses("0,0.1,0.2,0.5,1");
    window.showPage(WeightPage);
    for (int repeat = 0; repeat < 4; ++repeat) {
        for (int model = 0; model < modelCount; ++model) {
            editCell("_2_tw_weightDefinition", model, QString("(0-%1-ofv/2)").arg(model + repeat));
        }
    }
    require(seconds.size() >= 100, "too few keys");
    return *std::max_element(seconds.begin(), seconds.end());
}

} // namespace

void registerEditing(Report& report)
{
    const auto editing = std::make_shared<Editing>();
    Comparison comparison;
    comparison.name = "edit_latency";
    comparison.bar = 0.4;
    const Side slowestKey = [editing] { return editing->playRound(); };
    comparison.contests = {{slowestKey, constant(unnoticed)}};
    registerComparison(report, comparison);
}
