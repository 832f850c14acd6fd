// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/checkup.h"

#include "analysis/checkup/wording.h"

#include <algorithm>

namespace {

CheckedModel modelOf(const QString& name, const Heading& heading, int colNumOFV)
{
    CheckedModel model;
    model.name = name;
    model.heading = heading;
    if (!heading.isNumeric && heading.foreignSeparator.isNull()) {
        model.names = heading.names;
    }
    model.columns = columnsByName(model.names, colNumOFV);
    const int ofv = columnNamed(model.names, "ofv");
    model.columns.ofv = ofv < 0 ? model.columns.ofv : ofv;
    return model;
}

int commonWidth(const QVector<SampleCounts>& dataSets)
{
    QMap<int, qint64> widths;
    for (const SampleCounts& counts : dataSets) {
        for (auto width = counts.widths.begin(); width != counts.widths.end(); ++width) {
            widths[width.key()] += width.value();
        }
    }
    const auto common = std::max_element(widths.begin(), widths.end());
    return common == widths.end() ? 0 : common.key();
}

bool hasZero(const QVector<CheckedModel>& models)
{
    const auto startsAtZero = [](const SampleCounts& counts) { return counts.firstNumber == 0; };
    return std::any_of(models.begin(), models.end(), [&](const CheckedModel& model) {
        return std::any_of(model.dataSets.begin(), model.dataSets.end(), startsAtZero);
    });
}

ModelCheckUp resultOf(const CheckedModel& model)
{
    ModelCheckUp result;
    for (const Finding& finding : model.findings) {
        result.findings.append(finding.text);
    }
    QStringList lines{model.name};
    lines += model.facts;
    lines.append(result.findings.isEmpty() ? "no findings" : "findings:");
    for (const QString& finding : qAsConst(result.findings)) {
        lines.append("- " + finding);
    }
    result.text = lines.join('\n');
    return result;
}

/// "5 models, 1 data set, 1001 samples each".
QString extent(const QVector<CheckedModel>& models)
{
    QVector<qint64> dataSetCounts;
    QVector<qint64> sampleCounts;
    for (const CheckedModel& model : models) {
        dataSetCounts.append(model.dataSets.size());
        for (const SampleCounts& counts : model.dataSets) {
            sampleCounts.append(counts.samples);
        }
    }
    const auto range = [](const QVector<qint64>& numbers, const QString& noun) {
        const auto limits = std::minmax_element(numbers.begin(), numbers.end());
        return rangeText(*limits.first, *limits.second) + (*limits.second == 1 ? noun : noun + 's');
    };
    QString text = counted(models.size(), "model") + ", " + range(dataSetCounts, " data set");
    if (!sampleCounts.isEmpty()) {
        text += ", " + range(sampleCounts, " sample") + (sampleCounts.size() > 1 ? " each" : "");
    }
    return text;
}

/// The extent and the gravest finding.
QString summaryOf(const QVector<CheckedModel>& models)
{
    if (models.isEmpty()) {
        return {};
    }
    QVector<Finding> findings;
    for (const CheckedModel& model : models) {
        findings += model.findings;
    }
    QString text = extent(models);
    if (findings.isEmpty()) {
        return text;
    }
    const auto gravest =
        std::min_element(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
            return a.kind != b.kind ? a.kind < b.kind : a.count > b.count;
        });
    text += "; " + gravest->brief;
    return findings.size() == 1 ? text : text + "; " + counted(findings.size() - 1, "more finding");
}

} // namespace

ImportCheckUp checkUp(const RawResults& rawResults, const QVector<QStringList>& headings,
                      const QStringList& modelNames, int colNumOFV, int colNumTHETA1)
{
    return checkUp(rawResults, headingsOf(headings), modelNames, colNumOFV, colNumTHETA1);
}

ImportCheckUp checkUp(const RawResults& rawResults, const QVector<Heading>& headings,
                      const QStringList& modelNames, int colNumOFV, int colNumTHETA1,
                      const QVector<QStringList>& unread)
{
    QStringList names = modelNames.mid(0, rawResults.size());
    int dataSetCount = 0;
    for (const QVector<Table>& dataSets : rawResults) {
        dataSetCount = qMax(dataSetCount, dataSets.size());
    }
    while (names.size() < rawResults.size()) {
        names.append(QString());
    }
    CheckUpRun run(headings, names, colNumOFV, colNumTHETA1, unread);
    for (int dataSet = 0; dataSet < dataSetCount; ++dataSet) {
        run.add(dataSet, tablesOf(rawResults, dataSet));
    }
    return run.result();
}

void addGap(ImportCheckUp& found, const FileGap& gap)
{
    if (gap.filesBehind == 0 || found.models.isEmpty()) {
        return;
    }
    const QString finding = counted(gap.filesBehind, "file") + " of later data sets not read, as "
                            + gap.missing + " is missing";
    ModelCheckUp& first = found.models.first();
    first.findings.prepend(finding);
    first.text.replace("\nno findings", "\nfindings:");
    first.text += "\n- " + finding;
    found.summary += "; " + finding;
}

DataSetTables tablesOf(const RawResults& rawResults, int dataSet)
{
    DataSetTables tables;
    for (const QVector<Table>& dataSets : rawResults) {
        const bool exists = dataSet >= 0 && dataSet < dataSets.size();
        tables.append(exists ? std::make_optional(dataSets.at(dataSet)) : std::nullopt);
    }
    return tables;
}

CheckUpRun::CheckUpRun(const QVector<Heading>& headings, const QStringList& modelNames,
                       int colNumOFVSetting, int colNumTHETA1Setting,
                       const QVector<QStringList>& unread)
    : colNumOFV(colNumOFVSetting)
    , colNumTHETA1(colNumTHETA1Setting)
{
    for (int model = 0; model < modelNames.size(); ++model) {
        const QString& name = modelNames.at(model);
        definitions.append(modelOf(name.isEmpty() ? QString("model %1").arg(model) : name,
                                   headings.value(model), colNumOFV));
        definitions.last().unread = unread.value(model);
        ofvColumns.append(definitions.last().columns.ofv);
        summed.append(columnsByName(definitions.last().heading.names, colNumOFV));
    }
    counted.models.resize(definitions.size());
}

void CheckUpRun::follow(const DataSetTables& tables)
{
    previous = tables;
}

void CheckUpRun::add(int dataSet, const DataSetTables& tables)
{
    if (definitions.isEmpty()) {
        return;
    }
    const std::optional<Table> first = tables.value(0);
    const QVector<double> firstNumbers =
        first ? columnValues(*first, definitions.first().columns.number) : QVector<double>();
    QVector<Table> present;
    QVector<RowPairing> pairings;
    for (const CountedModel& model : qAsConst(counted.models)) {
        present.append(tables.value(present.size()).value_or(Table()));
        pairings.append(model.pairing);
    }
    const QVector<bool> isFaulty = pairRows(dataSet, present, ofvColumns, pairings);
    for (int index = 0; index < definitions.size(); ++index) {
        CountedModel& model = counted.models[index];
        model.pairing = pairings.at(index);
        if (!tables.value(index)) {
            continue;
        }
        const CheckedModel& definition = definitions.at(index);
        const Table& table = present.at(index);
        const std::optional<Table> before = previous.value(index);
        SampleCounts found =
            countSamples(table, definition.columns, columnValues(table, definition.columns.number),
                         firstNumbers);
        found.unevenlyPaired = first && first->size() != table.size();
        found.unpaired = isFaulty.at(index);
        found.repeatsPrevious = before && sameSamples(*before, table);
        model.dataSets.append(found);
        model.sums.add(summed.at(index) == definition.columns
                           ? found
                           : countSamples(table, summed.at(index), {}, {}));
    }
    previous = tables;
}

bool CheckUpRun::append(const CheckUpCounts& later)
{
    previous.clear();
    return counted.append(later);
}

ImportCheckUp CheckUpRun::result() const
{
    QVector<CheckedModel> models = definitions;
    for (int model = 0; model < models.size(); ++model) {
        models[model].dataSets = counted.models.at(model).dataSets;
        models[model].pairing = counted.models.at(model).pairing;
    }
    const bool zeroSeen = hasZero(models);
    ImportCheckUp result;
    for (int model = 0; model < models.size(); ++model) {
        models[model].width = commonWidth(models.at(model).dataSets);
        checkModel(models[model], {models, zeroSeen, colNumOFV, colNumTHETA1});
        result.models.append(resultOf(models.at(model)));
        result.models.last().samples = counted.models.at(model).sums;
    }
    result.summary = summaryOf(models);
    return result;
}
