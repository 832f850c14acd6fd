// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/record.h"

#include "batch/error.h"
#include "batch/outputfolder.h"
#include "model/deviates.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSysInfo>

#include <gnu/libc-version.h>

namespace {

QJsonObject fileObject(const ReportedFile& file)
{
    return {{"use", file.use},
            {"path", file.file.path},
            {"bytes", double(file.file.size)},
            {"sha256", QString::fromLatin1(file.check.sha256)}};
}

ReportedFile fileOf(const QJsonObject& object)
{
    ReportedFile file;
    file.use = object.value("use").toString();
    file.file.path = object.value("path").toString();
    file.file.size = qint64(object.value("bytes").toDouble(-1));
    file.check = {FileCheck::State::Same, object.value("sha256").toString().toLatin1()};
    return file;
}

/// Begins the SHA-256 of a thousand deviates of numbers that spread over their range.
QString hashOfDeviates()
{
    constexpr int count = 1000;
    QVector<int> numbers(2 * count);
    quint32 number = 1;
    for (int& value : numbers) {
        number = number * 1664525 + 1013904223; // Press et al., Numerical Recipes
        value = int(number >> 1);
    }
    QVector<double> deviates(count);
    fillNormalDeviates(numbers.constData(), count, deviates.data());
    const QByteArray bytes(reinterpret_cast<const char*>(deviates.constData()),
                           count * int(sizeof(double)));
    return QString::fromLatin1(
        QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex().left(16));
}

} // namespace

Machine thisMachine()
{
    Machine machine{QSysInfo::currentCpuArchitecture(),
                    {},
                    QString("glibc ") + gnu_get_libc_version(),
                    hashOfDeviates()};
#ifdef __x86_64__
    const auto add = [&machine](bool has, const char* name) {
        if (has) {
            machine.features.append(name);
        }
    };
    // The C library chooses its mathematical functions by these.
    add(__builtin_cpu_supports("avx") != 0, "avx");
    add(__builtin_cpu_supports("avx2") != 0, "avx2");
    add(__builtin_cpu_supports("fma") != 0, "fma");
    add(__builtin_cpu_supports("fma4") != 0, "fma4");
    add(__builtin_cpu_supports("avx512f") != 0, "avx512f");
#endif
    return machine;
}

QString machineText(const Machine& machine)
{
    return QString("%1%2, %3, normal deviates %4")
        .arg(machine.architecture,
             machine.features.isEmpty() ? QString() : " with " + machine.features.join(' '),
             machine.cLibrary, machine.deviates);
}

QString programName()
{
    return "Velmora " VELMORA_VERSION;
}

QJsonObject recordObject(const RunRecord& record)
{
    QJsonArray files;
    for (const ReportedFile& file : record.files) {
        files.append(fileObject(file));
    }
    return {{"program", record.program},
            {"settings", record.settings.json()},
            {"data_sets", record.dataSetCount},
            {"first_data_set", record.dataSets.first},
            {"end_data_set", record.dataSets.end},
            {"files", files},
            {"random_position", QJsonObject{{"before", double(record.positionBefore)},
                                            {"after", double(record.positionAfter)}}},
            {"architecture", record.machine.architecture},
            {"processor_features", QJsonArray::fromStringList(record.machine.features)},
            {"c_library", record.machine.cLibrary},
            {"normal_deviates", record.machine.deviates},
            {"seconds", record.seconds}};
}

QByteArray recordText(const RunRecord& record)
{
    return QJsonDocument(recordObject(record)).toJson();
}

bool hasRecord(const QString& folder)
{
    return QFileInfo(folder + '/' + OutputFolder::recordName).isFile();
}

RunRecord readRecord(const QString& folder)
{
    if (!hasRecord(folder)) {
        fail(QString("%1 is not complete: it has no %2.").arg(folder, OutputFolder::recordName));
    }
    return readRecordFile(folder + '/' + OutputFolder::recordName);
}

RunRecord readRecordFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        fail(QString("%1 cannot be read: %2.").arg(path, file.errorString()));
    }
    const QByteArray text = file.readAll();
    const QJsonObject object = QJsonDocument::fromJson(text).object();
    RunRecord record;
    record.program = object.value("program").toString();
    if (record.program.isEmpty() || !object.value("settings").isObject()) {
        fail(QString("%1 is damaged.").arg(path));
    }
    record.settings = BatchSettings::fromJson(text, path, QFileInfo(path).path());
    record.dataSetCount = object.value("data_sets").toInt();
    record.dataSets = {object.value("first_data_set").toInt(),
                       object.value("end_data_set").toInt()};
    for (const QJsonValue entry : object.value("files").toArray()) {
        record.files.append(fileOf(entry.toObject()));
    }
    const QJsonObject position = object.value("random_position").toObject();
    record.positionBefore = quint32(position.value("before").toDouble());
    record.positionAfter = quint32(position.value("after").toDouble());
    record.machine.architecture = object.value("architecture").toString();
    for (const QJsonValue feature : object.value("processor_features").toArray()) {
        record.machine.features.append(feature.toString());
    }
    record.machine.cLibrary = object.value("c_library").toString();
    record.machine.deviates = object.value("normal_deviates").toString();
    record.seconds = object.value("seconds").toDouble();
    return record;
}
