// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Certainty of results: resampled doses, tooltips and tables to copy.

#include "analysis/certainty/certaintytables.h"
#include "analysis/certainty/endpointcsv.h"
#include "app/tables/tabletips.h"
#include "app/widgets/exportmenu.h"
#include "app/widgets/memory.h"
#include "app/widgets/progressloop.h"
#include "app/window/mainwindow.h"
#include "ui_mainwindow.h"

#include <limits>

namespace {

const char resamplingText[] = "Resampling bootstrap samples...";
const char abortText[] = "Abort";
constexpr int copiedDigits = std::numeric_limits<double>::digits10;

struct CertaintyEntry
{
    const char* name;
    const char* text;
    CertaintyTable table;
};

const CertaintyEntry certaintyEntries[] = {
    {"CopyCertainty", "Copy certainty of doses", CertaintyTable::Doses},
    {"CopyContributions", "Copy contributions", CertaintyTable::Contributions},
    {"CopyAveragedEndpoint", "Copy averaged endpoint", CertaintyTable::Endpoint},
    {"CopySensitivity", "Copy sensitivity", CertaintyTable::Sensitivity}};

/// Remarks on the result, a line each, above the headings of the table.
QStringList startOfTable(CertaintyTable table, const QVector<endPoint>& models,
                         const QStringList& remarks)
{
    return remarks + QStringList(tabSeparated({certaintyHeadings(table, models)}));
}

QString tableText(CertaintyTable table, const JudgedResult& result)
{
    return tabSeparated(certaintyRows(table, result, copiedDigits));
}

/// Begins a table of certain doses with the reason why it has no row.
void noteUncounted(QStringList& parts, CertaintyTable table, const Study& study)
{
    const QString reason = uncountedResamples(study);
    if (table == CertaintyTable::Doses && !reason.isEmpty()) {
        parts.prepend("No row, as " + reason + '.');
    }
}

} // namespace

/// Resamples the doses, which the table shows already, where their certainty is not known.
void MainWindow::resampleDoses()
{
    ProgressLoop progress(this, resamplingText, abortText, doseChoice.size(),
                          ProgressLoop::Construction::WhenNeeded);
    resample(
        shown.selection, [&progress](int done) { return progress.advance(done); },
        [&progress] { return progress.poll(); });
    changed(Change::Calculated);
}

/// Adds tooltips to the tables of data sets and doses.
void MainWindow::describeTables()
{
    const auto dataSetText = [](int row) { return QString("data set %1").arg(row); };
    new TableTips(ui->_5_tw_trueModelTMED, {dataSetText, {}, {}});
    const auto withRemarks = [this](const QString& text) {
        return (QStringList(text) + selectionRemarks(results(), currentInputs())).join('\n');
    };
    new TableTips(ui->_4_tw_doseChoice,
                  {dataSetText,
                   [=](int level) { return withRemarks(stabilityText(shown.selection, level)); },
                   [=](int dataSet, int level) {
                       return withRemarks(stabilityText(shown.selection, dataSet, level));
                   }});
}

/// Adds the tables of certainty to the menu of the curve or, without ofCurve, of the doses.
void MainWindow::addCertaintyEntries(ExportMenu* menu, bool ofCurve)
{
    menu->addSeparator();
    for (const CertaintyEntry& entry : certaintyEntries) {
        const CertaintyTable table = entry.table;
        QAction* action = menu->addEntry(entry.name, entry.text, [this, table, ofCurve] {
            ofCurve ? copyCurveCertainty(table) : copyDoseCertainty(table);
        });
        menu->setObstacle(action, [this, ofCurve] {
            return ofCurve ? missingEvaluation(shown.curve) : missingEvaluation(shown.selection, 0);
        });
    }
    if (!ofCurve) {
        QAction* copy = menu->addEntry("CopyProbabilities", "Copy probabilities", [this] {
            copyText((selectionRemarks(results(), currentInputs())
                      + QStringList(tabSeparated(probabilityRows(shown.selection, copiedDigits))))
                         .join('\n'));
        });
        menu->setObstacle(copy, [this] {
            return shown.selection.probability.isEmpty() ? missingEvaluation(shown.selection, 0)
                                                         : QString();
        });
    }
    QAction* save = menu->addEntry("SaveEndpoints", "Save endpoint values as CSV...",
                                   [this, ofCurve] { saveEndpoints(ofCurve); });
    menu->setObstacle(save, [this, ofCurve] {
        return ofCurve ? missingEvaluation(shown.curve) : missingEvaluation(shown.selection);
    });
}

void MainWindow::saveEndpoints(bool ofCurve)
{
    saveAs(this, "Save endpoint values as CSV...", "endpoints.csv", [&](QIODevice& file) {
        const int count = ofCurve ? 1 : shown.selection.evaluations.size();
        ProgressLoop progress(this, "Saving endpoint values...", abortText, count,
                              ProgressLoop::Construction::WhenNeeded);
        return writeEndpoints(
            file, count,
            [&](int dataSet) {
                return ofCurve ? judgedResult(shown.curve, {})
                               : judgedResult(shown.selection, dataSet);
            },
            [&progress](int done) { return progress.advance(done); });
    });
}

void MainWindow::copyCurveCertainty(CertaintyTable table)
{
    const CurrentInputs now = currentInputs();
    JudgedResult result = judgedResult(shown.curve, now.study.levels);
    if (table == CertaintyTable::Doses) {
        ProgressLoop progress(this, resamplingText, abortText, 0,
                              ProgressLoop::Construction::WhenNeeded);
        const Grid hits = hitWeights(result.made, result.evaluation,
                                     appliedWeights(result.made, result.evaluation));
        const auto stability =
            doseStability(hits, result.evaluation.sampleCount, result.probability,
                          result.made.levels, [&progress] { return progress.poll(); });
        if (!stability) {
            return;
        }
        result.stability = *stability;
    }
    QStringList parts = startOfTable(table, result.made.endPoints, curveRemarks(results(), now));
    noteUncounted(parts, table, result.made);
    parts.append(tableText(table, result));
    copyText(parts.join('\n'));
}

/// Copies the table for all data sets whose endpoints are kept.
void MainWindow::copyDoseCertainty(CertaintyTable table)
{
    if (table == CertaintyTable::Doses) {
        resampleDoses();
        if (shown.selection.stability.size() < shown.selection.evaluations.size()) {
            return; // aborted
        }
    }
    const DoseSelection& selection = shown.selection;
    QStringList parts = startOfTable(table, selection.made.inputs.endPoints,
                                     selectionRemarks(results(), currentInputs()));
    ProgressLoop progress(this, "Collecting figures...", abortText, selection.evaluations.size(),
                          ProgressLoop::Construction::WhenNeeded);
    if (const QString missing = missingEvaluation(selection); !missing.isEmpty()) {
        parts.prepend("Some data sets are left out, as " + missing + '.');
    }
    noteUncounted(parts, table, selection.made.inputs);
    for (int dataSet = 0; dataSet < selection.evaluations.size(); ++dataSet) {
        if (selection.evaluations.at(dataSet).exists()) {
            parts.append(tableText(table, judgedResult(selection, dataSet)));
        }
        if (!progress.advance(dataSet + 1)) {
            return;
        }
    }
    copyText(parts.join('\n'));
}
