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

/// Imports into a new window, timed from the chosen folder to the shown results.
void importInNewWindow(const StudyFiles& files, Stopwatch& watch)
{
    watch.pause();
    auto window = openImportPage();
    importFolder(*window, files, size, &watch);
    watch.pause();
    window.reset();
    watch.resume();
}

/// Reads the heading and the numbers of every file and keeps the numbers to the end.
void readFiles(const StudyFiles& files, Stopwatch& watch)
{
    QVector<Table> tables;
    for (int file = 0; file < size.models * size.dataSets; ++file) {
        const QString path = files.path(folderFileName(file / size.dataSets, file % size.dataSets));
        const QStringList heading = csvWithHeaderReadHeader(path);
        tables.append(csvWithHeaderReadToDouble(path));
        require(heading.size() == InputColumnCount && tables.last().size() == size.samples,
                "a file was not read");
    }
    watch.pause();
    tables.clear();
    watch.resume();
}

} // namespace

void registerFolderImport(Report& report)
{
    const auto files = std::make_shared<StudyFiles>();
    writeFolder(*files, size);
    report.addMost("memory of csv_folder to its numbers", 1.5,
                   memoryOf([&files] { importFolder(*openImportPage(), *files, size); })
                       / numbersInBytes);

    Comparison comparison;
    comparison.name = "csv_folder";
    comparison.bar = 1.15;
    comparison.contests = {
        {timedInPart([files](Stopwatch& watch) { importInNewWindow(*files, watch); }),
         timedInPart([files](Stopwatch& watch) { readFiles(*files, watch); })}};
    comparison.longestSeconds = 60;
    registerComparison(report, comparison);
}
