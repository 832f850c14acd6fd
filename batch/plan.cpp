// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/plan.h"

#include "batch/error.h"
#include "batch/hashes.h"
#include "batch/progressline.h"
#include "io/csvexport.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace {

QJsonArray numbersOf(const QVector<qint64>& counts)
{
    QJsonArray numbers;
    for (const qint64 count : counts) {
        numbers.append(double(count));
    }
    return numbers;
}

QVector<qint64> countsOf(const QJsonValue& numbers)
{
    QVector<qint64> counts;
    for (const QJsonValue number : numbers.toArray()) {
        counts.append(qint64(number.toDouble(-1)));
    }
    return counts;
}

} // namespace

void writePlan(RunInputs& inputs, const QString& path, bool isQuiet)
{
    RunRecord record{programName(),
                     inputs.used,
                     inputs.source.dataSetCount(),
                     {0, inputs.source.dataSetCount()},
                     {},
                     inputs.randomPosition,
                     inputs.randomPosition,
                     thisMachine(),
                     0.0};
    Draws draws;
    {
        ProgressLine progress("planning data set", record.dataSetCount, isQuiet);
        draws = countDraws(inputs, record.dataSetCount, &record.files,
                           [&](int done) { progress.show(done); });
    }
    if (inputs.source.isProject()) {
        record.files.append(hashedFile("project", inputs.source.files(0).first()));
    }
    QJsonObject plan = recordObject(record);
    plan.insert("draws", numbersOf(draws.ofDataSets));
    plan.insert("truth_draws", numbersOf(draws.ofTruth));
    if (!writeFile(path, QJsonDocument(plan).toJson())) {
        fail(QString("--plan: %1 cannot be written.").arg(path));
    }
}

Plan readPlan(const QString& path, const RunRecord& record)
{
    if (!QFileInfo::exists(path)) {
        fail(QString("--plan: %1 does not exist. Without --output, this command would write it.")
                 .arg(path));
    }
    RunRecord planned = readRecordFile(path);
    RunRecord wanted = record;
    for (const char* const name : {"report", "endpoints"}) { // these draw nothing
        planned.settings.remove(name);
        wanted.settings.remove(name);
    }
    demandSameRun(wanted, "this run", planned, path);
    QFile file(path);
    const QJsonObject object = file.open(QIODevice::ReadOnly)
                                   ? QJsonDocument::fromJson(file.readAll()).object()
                                   : QJsonObject();
    Plan plan{{countsOf(object.value("draws")), countsOf(object.value("truth_draws"))},
              planned.files};
    const QVector<qint64> all = plan.draws.ofDataSets + plan.draws.ofTruth;
    if (plan.draws.ofDataSets.size() != record.dataSetCount
        || std::any_of(all.begin(), all.end(), [](qint64 count) { return count < 0; })) {
        fail(QString("--plan: %1 is damaged.").arg(path));
    }
    return plan;
}

void demandSameFiles(const QVector<ReportedFile>& files, const QVector<ReportedFile>& planned,
                     const QString& name)
{
    QHash<QString, const ReportedFile*> known;
    for (const ReportedFile& file : planned) {
        known.insert(file.use, &file);
    }
    for (const ReportedFile& file : files) {
        const ReportedFile* other = known.value(file.use);
        if (other != nullptr && other->check.sha256 != file.check.sha256) {
            fail(QString("%1, the file of %2, differs from that of %3: other SHA-256.")
                     .arg(file.file.path, file.use, name));
        }
    }
}

void demandSameRun(const RunRecord& first, const QString& firstName, const RunRecord& second,
                   const QString& secondName)
{
    const auto demand = [&](bool isSame, const QString& field) {
        if (!isSame) {
            fail(QString("%1 and %2 differ in \"%3\".").arg(firstName, secondName, field));
        }
    };
    demand(first.program == second.program, "program");
    demand(first.dataSetCount == second.dataSetCount, "data_sets");
    for (const SettingDefinition& definition : settingDefinitions()) {
        demand(first.settings.json().value(definition.name)
                   == second.settings.json().value(definition.name),
               definition.name);
    }
}
