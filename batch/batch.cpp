// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/batch.h"

#include "batch/finish.h"
#include "batch/hashes.h"
#include "batch/plan.h"
#include "batch/progressline.h"
#include "batch/shards.h"
#include "report/formats.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>

#include <cstdio>

namespace {

/// The data sets of a shard, or all of them.
DataSetRange rangeOf(const CommandLine& line, int dataSetCount)
{
    const DataSetRange range = line.dataSets.value_or(DataSetRange{0, dataSetCount});
    if (range.end > dataSetCount) {
        rejectUsage(QString("--data-sets ends at %1, but the number of data sets is %2.")
                        .arg(range.end)
                        .arg(dataSetCount));
    }
    return range;
}

/// The draws that decide where a range begins in the random sequence.
Draws drawsBefore(RunInputs& inputs, const CommandLine& line, const DataSetRange& range)
{
    const bool isShard = line.dataSets.has_value();
    if (!isShard || !drawsNumbers(inputs.study)) {
        Draws draws;
        draws.ofTruth = drawsOfTruth(inputs);
        return draws;
    }
    const bool drawsAfter = inputs.truth.byModels && inputs.truthPosition == 0;
    const int end = drawsAfter ? inputs.source.dataSetCount() : range.first;
    ProgressLine progress("counting random numbers of data set", end, line.isQuiet);
    return countDraws(inputs, end, nullptr, [&](int done) { progress.show(done); });
}

QVector<ReportedFile> truthFiles(const TruthInputs& truth)
{
    QVector<ReportedFile> files;
    for (int file = 0; file < truth.simulationFiles.size(); ++file) {
        files.append(
            hashedFile(QString("simulation model %1").arg(file), truth.simulationFiles.at(file)));
    }
    if (truth.exists()) {
        files.append(hashedFile("true models or MEDs", truth.file));
    }
    return files;
}

void print(const char* text)
{
    if (std::fputs(text, stdout) < 0 || std::fflush(stdout) != 0) {
        fail("Standard output cannot be written.");
    }
}

/// Shows the findings. Returns the exit code of the program.
ExitCode showFindings(const QStringList& findings, const CommandLine& line)
{
    if (!line.isQuiet) {
        for (const QString& finding : findings) {
            std::fprintf(stderr, "%s\n", qUtf8Printable(finding));
        }
    }
    return line.isStrict && !findings.isEmpty() ? ExitCode::Findings : ExitCode::Done;
}

/// The findings of a complete run; none of a shard, which keeps them for the merge.
QStringList findingsOf(const QString& folder)
{
    QFile file(folder + '/' + ResultFile::findings);
    return file.open(QIODevice::ReadOnly)
               ? QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts)
               : QStringList();
}

ExitCode calculate(const CommandLine& line)
{
    QElapsedTimer timer;
    timer.start();
    RunInputs inputs = runInputs(line.settings);
    const DataSetRange range = rangeOf(line, inputs.source.dataSetCount());
    if (line.isDryRun) {
        print(QJsonDocument(inputs.used.json()).toJson().constData());
        return ExitCode::Done;
    }
    if (line.output.isEmpty()) {
        if (line.plan.isEmpty()) {
            rejectUsage("Results need a folder: give --output DIR.");
        }
        writePlan(inputs, line.plan, line.isQuiet);
        return ExitCode::Done;
    }
    RunRecord record{programName(),
                     inputs.used,
                     inputs.source.dataSetCount(),
                     range,
                     {},
                     inputs.randomPosition,
                     0,
                     thisMachine(),
                     0.0};
    if (line.resumes && isComplete(line.output, record) && line.project.isEmpty()) {
        return showFindings(findingsOf(line.output), line);
    }
    const std::optional<Plan> plan =
        line.plan.isEmpty() ? std::nullopt : std::optional<Plan>(readPlan(line.plan, record));
    const Draws draws = plan ? plan->draws : drawsBefore(inputs, line, range);
    OutputFolder output(line.output, line.resumes);
    RangeResults results(inputs);
    {
        ProgressLine progress("data set", range.count(), line.isQuiet);
        results = runRange(inputs, range, output, draws, [&](int done) { progress.show(done); });
    }
    results.files += truthFiles(inputs.truth);
    QStringList findings;
    if (plan) {
        demandSameFiles(results.files, plan->files, line.plan);
    }
    if (line.dataSets) {
        writeShard(results, output);
        findings = results.findings();
    } else {
        inputs.source.load(inputs.study, 0);
        findings = writeStudyFiles(inputs, results, {}, output);
    }
    if (!line.project.isEmpty()) {
        saveProject(inputs, results.dataSets, line.project);
    }
    record.files = results.files;
    record.positionAfter = results.positionAfter;
    record.seconds = double(timer.elapsed()) / 1000;
    output.finish(recordText(record));
    return showFindings(findings, line);
}

} // namespace

ExitCode performTask(const CommandLine& line)
{
    switch (line.task) {
    case CommandLine::Task::Help:
        print(qUtf8Printable(line.helpText));
        break;
    case CommandLine::Task::Version:
        print("velmora-batch " VELMORA_VERSION "\n");
        break;
    case CommandLine::Task::Run:
        return calculate(line);
    case CommandLine::Task::Merge:
        return showFindings(mergeShards(line.shards, line.output, line.resumes), line);
    }
    return ExitCode::Done;
}
