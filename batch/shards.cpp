// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/shards.h"

#include "analysis/calculation.h"
#include "batch/error.h"
#include "batch/finish.h"
#include "batch/hashes.h"
#include "batch/interrupt.h"
#include "batch/plan.h"
#include "io/streamlists.h"
#include "model/randomng.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

QDataStream& operator<<(QDataStream& stream, const std::optional<QVector<double>>& meds)
{
    stream << meds.has_value();
    writeList(stream, meds.value_or(QVector<double>()));
    return stream;
}

QDataStream& operator>>(QDataStream& stream, std::optional<QVector<double>>& meds)
{
    bool exists = false;
    QVector<double> found;
    stream >> exists;
    readList(stream, found);
    meds = exists ? std::make_optional(found) : std::nullopt;
    return stream;
}

QDataStream& operator<<(QDataStream& stream, const DataSetResult& result)
{
    writeList(stream, result.probability);
    writeList(stream, result.errors);
    writeList(stream, result.meds);
    writeList(stream, result.stability);
    writeList(stream, result.otherMeds);
    stream << result.draws;
    return stream << result.findings.join('\n');
}

QDataStream& operator>>(QDataStream& stream, DataSetResult& result)
{
    readList(stream, result.probability);
    readList(stream, result.errors);
    readList(stream, result.meds);
    readList(stream, result.stability);
    readList(stream, result.otherMeds);
    stream >> result.draws;
    QString findings;
    stream >> findings;
    result.findings = findings.split('\n', Qt::SkipEmptyParts);
    return stream;
}

namespace {

constexpr char shardName[] = "shard.dat";
constexpr quint32 shardMagic = 0x564c5348; // "VLSH"
constexpr int bytesAtATime = 1 << 20;

/// A folder with its record.
struct Shard
{
    QString folder;
    RunRecord record;
};

/// The shards of one run in the order of their data sets. A gap or overlap ends the run.
QVector<Shard> orderedShards(const QStringList& folders)
{
    QVector<Shard> shards;
    for (const QString& folder : folders) {
        shards.append({QDir::cleanPath(folder), readRecord(folder)});
    }
    std::stable_sort(shards.begin(), shards.end(), [](const Shard& a, const Shard& b) {
        return a.record.dataSets.first < b.record.dataSets.first;
    });
    const Shard& first = shards.constFirst();
    QVector<ReportedFile> files;
    int next = 0;
    for (const Shard& shard : qAsConst(shards)) {
        demandSameRun(first.record, first.folder, shard.record, shard.folder);
        demandSameFiles(shard.record.files, files, "the other shards");
        files += shard.record.files;
        const DataSetRange& range = shard.record.dataSets;
        if (range.first != next) {
            fail(
                range.first > next
                    ? QString("No shard has the data sets %1 to %2.").arg(next).arg(range.first - 1)
                    : QString("%1 and another shard both have data set %2.")
                          .arg(shard.folder)
                          .arg(range.first));
        }
        next = range.end;
    }
    if (next != first.record.dataSetCount) {
        fail(QString("No shard has the data sets %1 to %2.")
                 .arg(next)
                 .arg(first.record.dataSetCount - 1));
    }
    return shards;
}

/// Appends what a shard holds in addition to its tables.
void appendShard(const Shard& shard, RangeResults& results, CheckUpRun& checkUp)
{
    const QString path = shard.folder + '/' + shardName;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        fail(QString("%1 is not a shard: %2 cannot be read.").arg(shard.folder, shardName));
    }
    QDataStream stream(&file);
    stream.setVersion(QDataStream::Qt_5_15);
    quint32 magic = 0;
    QVector<DataSetResult> dataSets;
    QVector<double> meds;
    CheckUpCounts counts;
    stream >> magic;
    readList(stream, dataSets);
    readList(stream, meds);
    stream >> counts;
    if (magic != shardMagic || stream.status() != QDataStream::Ok
        || dataSets.size() != shard.record.dataSets.count() || !checkUp.append(counts)) {
        fail(QString("%1 is damaged; calculate this shard again.").arg(path));
    }
    results.dataSets += dataSets;
    results.theoreticalMeds += meds;
}

/// The files with lines for each data set.
QStringList tablesOfDataSets(const BatchSettings& settings)
{
    QStringList tables{ResultFile::probability, ResultFile::doses, ResultFile::weights};
    if (settings.isYes("endpoints")) {
        tables.append(ResultFile::endpoints);
    }
    if (settings.has("true-meds") || settings.has("true-models")) {
        tables.append(ResultFile::meds);
    }
    return tables;
}

/// Joins the lines of a table from all shards below one line of headings.
void joinTable(const QVector<Shard>& shards, const QString& name, OutputFolder& output)
{
    TableFile& joined = output.addFile(name);
    for (int shard = 0; shard < shards.size(); ++shard) {
        QFile file(shards.at(shard).folder + '/' + name);
        if (!file.open(QIODevice::ReadOnly)) {
            fail(QString("%1 cannot be read: %2.").arg(file.fileName(), file.errorString()));
        }
        const QByteArray heading = file.readLine();
        if (shard == 0) {
            joined.addLines(heading);
        }
        while (!file.atEnd()) {
            const QByteArray piece = file.read(bytesAtATime);
            if (piece.isEmpty()) {
                fail(QString("%1 cannot be read: %2.").arg(file.fileName(), file.errorString()));
            }
            joined.addLines(piece);
            endIfInterrupted();
        }
    }
}

/// The files of all shards: first those of their data sets, then those that all shards share.
QVector<ReportedFile> joinedFiles(const QVector<Shard>& shards, int sharedAtEnd)
{
    QVector<ReportedFile> files;
    for (const Shard& shard : shards) {
        const QVector<ReportedFile>& read = shard.record.files;
        for (int file = 0; file < read.size() - sharedAtEnd; ++file) {
            const bool isShared = read.at(file).use == QLatin1String("project");
            if (!isShared || files.isEmpty()) {
                files.append(read.at(file));
            }
        }
    }
    const QVector<ReportedFile>& read = shards.constFirst().record.files;
    return files + read.mid(qMax(0, read.size() - sharedAtEnd));
}

/// Ends the run unless every shard used the random numbers that the whole run would have used.
void demandOneSequence(const RunInputs& inputs, const QVector<Shard>& shards,
                       const RangeResults& results)
{
    Draws draws;
    draws.ofTruth = drawsOfTruth(inputs);
    for (const DataSetResult& result : results.dataSets) {
        draws.ofDataSets.append(qint64(result.draws));
    }
    for (const Shard& shard : shards) {
        const int end = shard.record.dataSets.end;
        const quint32 position = inputs.truth.byModels ? positionBeforeTruth(inputs, draws, end)
                                                       : positionBefore(inputs, draws, end);
        if (shard.record.positionAfter != position) {
            fail(QString("%1 does not have the random numbers of the whole run: the plan or files "
                         "of other data sets have changed; calculate it again.")
                     .arg(shard.folder));
        }
    }
}

/// A finding if the shards were calculated on machines whose results may differ in the last bits.
QStringList machineFindings(const QVector<Shard>& shards)
{
    QStringList machines;
    for (const Shard& shard : shards) {
        machines.append(machineText(shard.record.machine));
    }
    machines.removeDuplicates();
    return machines.size() < 2
               ? QStringList()
               : QStringList("The shards were calculated on different processors or with "
                             "different libraries, whose last digits may differ: "
                             + machines.join("; ") + '.');
}

} // namespace

void writeShard(const RangeResults& results, OutputFolder& output)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << shardMagic;
    writeList(stream, results.dataSets);
    writeList(stream, results.theoreticalMeds);
    stream << results.checkUp.counts();
    output.addFile(shardName).addLines(bytes);
}

bool isComplete(const QString& folder, const RunRecord& record)
{
    if (!hasRecord(folder)) {
        return false;
    }
    const RunRecord found = readRecord(folder);
    demandSameRun(record, "this run", found, folder);
    if (found.dataSets.first != record.dataSets.first
        || found.dataSets.end != record.dataSets.end) {
        fail(QString("%1 has the data sets %2 to %3; name another folder.")
                 .arg(folder)
                 .arg(found.dataSets.first)
                 .arg(found.dataSets.end - 1));
    }
    const QStringList tables = tablesOfDataSets(found.settings);
    const auto exists = [&](const QString& table) { return QFile::exists(folder + '/' + table); };
    if (!std::all_of(tables.begin(), tables.end(), exists)) {
        return false;
    }
    // A file that has changed since means another calculation.
    return std::all_of(found.files.begin(), found.files.end(), [](const ReportedFile& file) {
        const SourceFile now = sourceFile(file.file.path);
        return now.size == file.file.size
               && hashedFile(file.use, now).check.sha256 == file.check.sha256;
    });
}

QStringList mergeShards(const QStringList& folders, const QString& outputPath, bool resumes)
{
    if (folders.isEmpty() || outputPath.isEmpty()) {
        rejectUsage("merge needs the folders of shards and --output DIR.");
    }
    const QVector<Shard> shards = orderedShards(folders);
    const RunRecord& first = shards.constFirst().record;
    RunInputs inputs = runInputs(first.settings);
    for (const Shard& shard : shards) {
        if (QFileInfo(shard.folder).canonicalFilePath()
            == QFileInfo(outputPath).canonicalFilePath()) {
            rejectUsage(
                QString("--output: %1 is one of the shards; name another folder.").arg(outputPath));
        }
    }
    OutputFolder output(outputPath, resumes);
    RangeResults results(inputs);
    results.range = {0, first.dataSetCount};
    for (const QString& table : tablesOfDataSets(first.settings)) {
        joinTable(shards, table, output);
    }
    RunRecord record = first;
    record.dataSets = results.range;
    record.seconds = 0;
    for (const Shard& shard : shards) {
        appendShard(shard, results, results.checkUp);
        record.seconds += shard.record.seconds;
    }
    demandOneSequence(inputs, shards, results);
    record.positionAfter = shards.constLast().record.positionAfter;
    record.files =
        joinedFiles(shards, inputs.truth.exists() ? inputs.truth.simulationFiles.size() + 1 : 0);
    results.files = record.files;
    repeatFirstDataSet(inputs, results);
    QStringList findings = writeStudyFiles(inputs, results, machineFindings(shards), output);
    output.finish(recordText(record));
    return findings;
}
