// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/comparison.h"
#include "bench/inputs.h"
#include "bench/report.h"
#include "bench/studywindow.h"
#include "bench/subjects.h"
#include "io/csv.h"
#include "tests/support/dialogdriver.h"
#include "tests/support/studyfiles.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QSpinBox>
#include <QTabWidget>

#include <limits>
#include <malloc.h>
#include <memory>

namespace {

constexpr int modelCount = 4;
constexpr int dataSetCount = 100;
constexpr int sampleCount = 1000;
constexpr int simulationTab = 1;
constexpr double numbersInBytes = 8.0 * modelCount * dataSetCount * sampleCount * InputColumnCount;

QString fileName(int model, int dataSet)
{
    return QString("raw_results_estimation_model%1_data%2.csv").arg(model).arg(dataSet);
}

/// 190 MB of numbers in files, a fifth of them different.
void writeStudy(const StudyFiles& files)
{
    InputNumbers numbers;
    QByteArray content;
    for (int file = 0; file < modelCount * dataSetCount; ++file) {
        if (file % 5 == 0) {
            content = rawResultsText(bootstrapTable(numbers, sampleCount));
        }
        files.write(fileName(file / dataSetCount, file % dataSetCount), content);
    }
}

/// Goes on with the time when the user is done with choosing a file.
class FileDialogClock : public QObject
{
public:
    explicit FileDialogClock(benchmark::State& stoppedState)
        : state(stoppedState)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Hide && qobject_cast<QFileDialog*>(watched) != nullptr) {
            QCoreApplication::instance()->removeEventFilter(this);
            state.ResumeTiming();
        }
        return false;
    }

private:
    benchmark::State& state;
};

/// Memory of this program in bytes: now, or the most that it ever had. NaN where the
/// system does not tell.
double memory(const char* field)
{
    QFile file("/proc/self/status");
    file.open(QIODevice::ReadOnly);
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith(field)) {
            return 1024.0 * line.simplified().split(' ').value(1).toDouble();
        }
    }
    return std::numeric_limits<double>::quiet_NaN();
}

/// Lets the most memory be that of now, where the system allows it.
void forgetPeakMemory()
{
    malloc_trim(0);
    QFile file("/proc/self/clear_refs");
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        file.write("5");
    }
}

void chooseFolder(StudyWindow& window, const QString& path)
{
    DialogDriver dialogs;
    dialogs.answerFiles({path});
    window.press("__pb_import");
    require(window.widget<QSpinBox>("_0_sb_model")->maximum() == modelCount - 1
                && window.widget<QSpinBox>("_0_sb_data")->maximum() == dataSetCount - 1,
            "the folder was not imported");
}

std::unique_ptr<StudyWindow> openImportPage()
{
    auto window = std::make_unique<StudyWindow>();
    window->showPage(ImportPage);
    window->widget<QTabWidget>("tabWidget")->setCurrentIndex(simulationTab);
    return window;
}

/// The import in a new window, timed from the chosen folder to the shown results.
void importFolder(const StudyFiles& files, benchmark::State& state)
{
    state.PauseTiming();
    auto window = openImportPage();
    {
        const FileDialogClock clock(state);
        chooseFolder(*window, files.path());
    }
    state.PauseTiming();
    window.reset();
    state.ResumeTiming();
}

/// Every file by the two readers, the numbers kept to the end.
void readFiles(const StudyFiles& files, benchmark::State& state)
{
    QVector<Table> tables;
    for (int file = 0; file < modelCount * dataSetCount; ++file) {
        const QString path = files.path(fileName(file / dataSetCount, file % dataSetCount));
        const QStringList heading = csvWithHeaderReadHeader(path);
        tables.append(csvWithHeaderReadToDouble(path));
        require(heading.size() == InputColumnCount && tables.last().size() == sampleCount,
                "a file was not read");
    }
    state.PauseTiming();
    tables.clear();
    state.ResumeTiming();
}

/// The memory that the import takes to that of the numbers. Too much rather than too little
/// where the most memory ever taken cannot be forgotten.
double memoryOfImport(const StudyFiles& files)
{
    forgetPeakMemory();
    const double before = memory("VmRSS:");
    chooseFolder(*openImportPage(), files.path());
    return (memory("VmHWM:") - before) / numbersInBytes;
}

} // namespace

void registerFolderImport(Report& report)
{
    const auto files = std::make_shared<StudyFiles>();
    writeStudy(*files);
    const double usedMemory = memoryOfImport(*files);

    Comparison comparison;
    comparison.subject = "folder";
    comparison.ways = {
        {"files", [files](benchmark::State& state) { readFiles(*files, state); }},
        {"import", [files](benchmark::State& state) { importFolder(*files, state); }},
    };
    comparison.repetitions = 4;
    registerComparison(comparison);
    report.addRow("csv_folder", 1.2, timeRatio("folder/import", "folder/files"));
    report.addMost("memory of csv_folder to its numbers", 1.5,
                   [usedMemory](const Measurements& /*measurements*/) { return usedMemory; });
}
