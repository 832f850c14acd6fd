// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/comparison.h"
#include "bench/folderimport.h"
#include "bench/memory.h"
#include "bench/subjects.h"
#include "io/csv.h"

#include <QProcess>
#include <QTableWidget>

#include <algorithm>
#include <memory>

namespace {

constexpr int shardCount = 20;
const StudySize sizeOfRun{4, 100, 1000};
const StudySize sizeOfShards{4, 5 * shardCount, 1000};
const StudySize sizeForMemory{4, 50, 100};
constexpr int fewDataSets = 50;
constexpr int manyDataSets = 500;

/// Runs the program without a window. Returns its peak memory if it is watched, else 0.
double runProgram(const QStringList& arguments, bool isWatched = false)
{
    constexpr int millisecondsBetween = 5;
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(VELMORA_BATCH, arguments);
    double memory = 0;
    while (!program.waitForFinished(isWatched ? millisecondsBetween : -1)
           && program.error() == QProcess::Timedout) {
        memory = std::max(memory, peakMemory(program.processId()));
    }
    require(program.error() != QProcess::FailedToStart
                && program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0,
            "velmora-batch failed");
    return memory;
}

/// A folder of many data sets, and the arguments of velmora-batch for it.
class BatchStudy
{
public:
    explicit BatchStudy(const StudySize& ofFolder)
        : size(ofFolder)
        , definitions(makeStudy({size.models, 1, 1}, Variability::None))
    {
        writeFolder(files, size);
    }

    QStringList arguments() const
    {
        QStringList words{"--quiet",    "--folder",     files.path(), "--doses",
                          "0:10:100",   "--method",     "average",    "--ofv",
                          "individual", "--processors", "1"};
        words << "--lower" << definitions.lowerBound << "--upper" << definitions.upperBound;
        words << "--levels" << definitions.doseChoiceLabels.join(',');
        for (int model = 0; model < size.models; ++model) {
            const QString name = QString("#%1=").arg(model);
            words << "--endpoint" << name + definitions.endPointExpressions.at(model);
            words << "--weight" << name + definitions.weightExpressions.at(model);
        }
        return words;
    }

    /// The same with ETAs, so that each shard begins at its own place in the random numbers.
    QStringList withEtas() const
    {
        const ProjectItems varying = makeStudy({size.models, 1, 1}, Variability::TwoEtas);
        QStringList words = arguments() + QStringList{"--individuals", "20"};
        for (int model = 0; model < size.models; ++model) {
            const QString name = QString("#%1=").arg(model);
            words << "--endpoint" << name + varying.endPointExpressions.at(model);
            words << "--omega" << name + "COL25,COL26;COL26,COL27";
        }
        return words;
    }

    /// Runs all data sets at once; the results are in the output folder.
    void run(const QString& output) const { runProgram(arguments() + QStringList{"-o", output}); }

    void runWithEtas(const QString& output) const
    {
        runProgram(withEtas() + QStringList{"-o", output});
    }

    /// Writes the plan that all shards need.
    void plan(const StudyFiles& place) const { runProgram(planned(place)); }

    /// Runs the shards of the planned run with ETAs, one after another.
    void runShards(const StudyFiles& place) const
    {
        const auto edge = [this](int shard) { return shard * size.dataSets / shardCount; };
        for (int shard = 0; shard < shardCount; ++shard) {
            const QString range = QString("%1:%2").arg(edge(shard)).arg(edge(shard + 1));
            runProgram(planned(place)
                       + QStringList{"--data-sets", range, "-o", place.path(shardName(shard))});
        }
    }

    /// Merges the results of all shards.
    void merge(const StudyFiles& place) const
    {
        QStringList words{"merge", "--quiet", "-o", place.path("results")};
        for (int shard = 0; shard < shardCount; ++shard) {
            words.append(place.path(shardName(shard)));
        }
        runProgram(words);
    }

    const StudySize size;
    const ProjectItems definitions;
    const StudyFiles files;

private:
    static QString shardName(int shard) { return QString("shard%1").arg(shard); }

    QStringList planned(const StudyFiles& place) const
    {
        return withEtas() + QStringList{"--plan", place.path("plan.json")};
    }
};

/// The same in the window: the import of the folder, then the button of page "4". A stopwatch times
/// these two only.
std::unique_ptr<StudyWindow> runInWindow(const BatchStudy& study, Stopwatch* watch = nullptr)
{
    auto window = std::make_unique<StudyWindow>(study.definitions);
    window->showPage(DosePage);
    user::typeText(window->widget<QLineEdit>("_4_le_probabilities"),
                   study.definitions.doseChoiceLabels.join(','));
    showFolderImport(*window);
    importFolder(*window, study.files, study.size, watch);
    if (watch != nullptr) {
        watch->pause();
    }
    window->showPage(DosePage);
    if (watch != nullptr) {
        watch->resume();
    }
    window->press("_4_pb_startCalculation");
    return window;
}

/// The table of doses as the file holds it, without heading.
QByteArray dosesOf(const StudyWindow& window)
{
    const auto* table = window.widget<QTableWidget>("_4_tw_doseChoice");
    QByteArray text;
    for (int row = 0; row < table->rowCount(); ++row) {
        text += QByteArray::number(row);
        for (int column = 0; column < table->columnCount(); ++column) {
            const QString cell = csvCellText(table, row, column);
            text += ',' + (cell == "nan" ? "NA" : cell.toLatin1());
        }
        text += "\r\n";
    }
    return text;
}

bool isSameAsInWindow(const BatchStudy& study)
{
    const StudyFiles whole;
    study.run(whole.path());
    const QByteArray ofWhole = contentOf(whole.path("doses.csv"));
    return ofWhole.mid(ofWhole.indexOf('\n') + 1) == dosesOf(*runInWindow(study));
}

bool isSameInShards(const BatchStudy& study)
{
    const StudyFiles whole;
    study.runWithEtas(whole.path());
    const StudyFiles parted;
    study.plan(parted);
    study.runShards(parted);
    study.merge(parted);
    return contentOf(whole.path("probability.csv"))
           == contentOf(parted.path("results/probability.csv"));
}

/// Times programs, their start included, after a first step that is not timed.
Side timedPrograms(const std::function<void(const StudyFiles&)>& work,
                   const std::function<void(const StudyFiles&)>& first = {})
{
    return timedInPart(
        [work, first](Stopwatch& watch) {
            watch.pause();
            const StudyFiles place;
            if (first) {
                first(place);
            }
            watch.resume();
            work(place);
        },
        Clock::Programs);
}

/// The peak memory of a run over links to the same files again and again.
double memoryOfRun(const BatchStudy& study, int dataSetCount)
{
    const StudyFiles folder;
    for (int model = 0; model < study.size.models; ++model) {
        for (int dataSet = 0; dataSet < dataSetCount; ++dataSet) {
            const int linked = dataSet % study.size.dataSets;
            QFile::link(study.files.path(folderFileName(model, linked)),
                        folder.path(folderFileName(model, dataSet)));
        }
    }
    const StudyFiles output;
    return runProgram(
        study.arguments() + QStringList{"--folder", folder.path(), "-o", output.path()}, true);
}

Comparison compareWithWindow(const std::shared_ptr<BatchStudy>& study)
{
    Comparison comparison;
    comparison.name = "batch";
    comparison.bar = 1.1;
    const Side program =
        timedPrograms([study](const StudyFiles& place) { study->run(place.path()); });
    comparison.contests = {{program, timedInPart([study](Stopwatch& watch) {
                                watch.pause();
                                const auto window = runInWindow(*study, &watch);
                                watch.pause();
                            })}};
    comparison.agree = [study] { return isSameAsInWindow(*study); };
    comparison.longestSeconds = 120;
    return comparison;
}

Comparison compareShards(const std::shared_ptr<BatchStudy>& study)
{
    Comparison comparison;
    comparison.name = "batch_shards";
    comparison.bar = 1.2;
    comparison.contests = {
        {timedPrograms([study](const StudyFiles& place) { study->runShards(place); },
                       [study](const StudyFiles& place) { study->plan(place); }),
         timedPrograms([study](const StudyFiles& place) { study->runWithEtas(place.path()); })}};
    comparison.agree = [study] { return isSameInShards(*study); };
    comparison.longestSeconds = 120;
    return comparison;
}

Comparison compareMemory(const std::shared_ptr<BatchStudy>& study)
{
    const auto side = [study](int dataSetCount) {
        return [study, dataSetCount] { return memoryOfRun(*study, dataSetCount); };
    };
    Comparison comparison;
    comparison.name = "batch_memory";
    comparison.bar = 1.5;
    comparison.isTime = false;
    comparison.contests = {{side(manyDataSets), side(fewDataSets)}};
    comparison.longestSeconds = 150;
    return comparison;
}

} // namespace

void registerBatch(Report& report)
{
    registerComparison(report, compareWithWindow(std::make_shared<BatchStudy>(sizeOfRun)));
    registerComparison(report, compareShards(std::make_shared<BatchStudy>(sizeOfShards)));
    registerComparison(report, compareMemory(std::make_shared<BatchStudy>(sizeForMemory)));
}
