// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/comparison.h"
#include "bench/folderimport.h"
#include "bench/inputs.h"
#include "bench/memory.h"
#include "bench/report.h"
#include "bench/subjects.h"
#include "io/csv.h"

#include <memory>

namespace {

const StudySize size{4, 100, 1000};
const double numbersInBytes = 8.0 * size.models * size.dataSets * size.samples * InputColumnCount;

std::unique_ptr<StudyWindow> openImportPage()
{
    auto window = std::make_unique<StudyWindow>();
    showFolderImport(*window);
    return window;
}

/// The import in a new window, timed from the chosen folder to the shown results.
void importInNewWindow(const StudyFiles& files, benchmark::State& state)
{
    state.PauseTiming();
    auto window = openImportPage();
    importFolder(*window, files, size, &state);
    state.PauseTiming();
    window.reset();
    state.ResumeTiming();
}

/// Every file by the two readers, the numbers kept to the end.
void readFiles(const StudyFiles& files, benchmark::State& state)
{
    QVector<Table> tables;
    for (int file = 0; file < size.models * size.dataSets; ++file) {
        const QString path = files.path(folderFileName(file / size.dataSets, file % size.dataSets));
        const QStringList heading = csvWithHeaderReadHeader(path);
        tables.append(csvWithHeaderReadToDouble(path));
        require(heading.size() == InputColumnCount && tables.last().size() == size.samples,
                "a file was not read");
    }
    state.PauseTiming();
    tables.clear();
    state.ResumeTiming();
}

} // namespace

void registerFolderImport(Report& report)
{
    const auto files = std::make_shared<StudyFiles>();
    writeFolder(*files, size);
    const double usedMemory =
        memoryOf([&files] { importFolder(*openImportPage(), *files, size); }) / numbersInBytes;

    Comparison comparison;
    comparison.subject = "folder";
    comparison.ways = {
        {"files", [files](benchmark::State& state) { readFiles(*files, state); }},
        {"import", [files](benchmark::State& state) { importInNewWindow(*files, state); }},
    };
    comparison.repetitions = 4;
    registerComparison(comparison);
    report.addRow("csv_folder", 1.2, timeRatio("folder/import", "folder/files"));
    report.addMost("memory of csv_folder to its numbers", 1.5,
                   [usedMemory](const Measurements& /*measurements*/) { return usedMemory; });
}
