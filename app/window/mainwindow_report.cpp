// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// The report of the analysis.

#include "app/widgets/exportmenu.h"
#include "app/widgets/memory.h"
#include "app/widgets/progressloop.h"
#include "app/window/mainwindow.h"
#include "report/content.h"
#include "report/formats.h"

namespace {

/// Steps of the progress dialog: those of reading the files again, and up to the end of the
/// document.
constexpr int stepsOfFiles = 600;
constexpr int stepsOfDocument = 700;
constexpr int allSteps = 1000;
/// Bytes that Qt may need for letters, fonts and pictures.
constexpr int memoryForDrawing = 96 << 20;

QVector<ReportedFile> reportedFiles(const ResultsSource& source, const SimulationSource& simulation,
                                    const SourceFile& truth)
{
    QVector<ReportedFile> files;
    for (int model = 0; model < source.read.size(); ++model) {
        const QVector<SourceFile>& read = source.read.at(model);
        for (int dataSet = 0; dataSet < read.size(); ++dataSet) {
            if (!read.at(dataSet).path.isEmpty()) {
                files.append({source.files.isEmpty() ? QString("project")
                              : source.namesModels
                                  ? QString("model %1").arg(model)
                                  : QString("model %1, data set %2").arg(model).arg(dataSet),
                              read.at(dataSet)});
            }
        }
    }
    for (int file = 0; file < simulation.read.size(); ++file) {
        files.append({QString("simulation model %1").arg(file), simulation.read.at(file)});
    }
    if (!truth.path.isEmpty()) {
        files.append({"true models or MEDs", truth});
    }
    return files;
}

} // namespace

ReportInputs MainWindow::reportInputs() const
{
    return {currentInputs(),
            results(),
            {studySource(), reportedFiles(source, simulationSource, truthFile), importCheckUp,
             allFindings(), QDateTime::currentDateTime()}};
}

/// The report as a file with the ending; none if aborted.
std::optional<QByteArray> MainWindow::writeReport(const QString& suffix)
{
    ReportInputs inputs = reportInputs();
    ProgressLoop progress(this, "Writing the report...", "Abort", allSteps);
    const bool areChecked = checkFiles(inputs.source.files, [&progress](double done) {
        return progress.advance(int(done * stepsOfFiles));
    });
    if (!areChecked) {
        return std::nullopt;
    }
    const auto document = reportDocument(inputs, [&progress] { return progress.poll(); });
    if (!document || !progress.advance(stepsOfDocument)) {
        return std::nullopt;
    }
    demandMemory(memoryForDrawing);
    return writtenReport(*document, suffix, [&progress](double done) {
        return progress.advance(stepsOfDocument + int(done * (allSteps - stepsOfDocument)));
    });
}

void MainWindow::saveReport()
{
    saveAs(this, "Save report...", "report.html", reportSuffixes(),
           [this](const QString& suffix) { return writeReport(suffix); });
}
