// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/checkup.h"

#include "analysis/checkup/modelcheckup.h"
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
    model.columns = {
        columnNamed(model.names, "model"), columnNamed(model.names, "minimization_successful"),
        columnNamed(model.names, "estimate_near_boundary"), columnNamed(model.names, "ofv")};
    if (model.columns.ofv < 0) {
        model.columns.ofv = colNumOFV - 1;
    }
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

/// Counts every data set of every model. The rows of a model are paired with those of the
/// first one.
void countAll(const RawResults& rawResults, QVector<CheckedModel>& models)
{
    int dataSetCount = 0;
    for (const QVector<Table>& dataSets : rawResults) {
        dataSetCount = qMax(dataSetCount, dataSets.size());
    }
    for (int dataSet = 0; dataSet < dataSetCount; ++dataSet) {
        QVector<double> firstNumbers;
        for (int index = 0; index < rawResults.size(); ++index) {
            const QVector<Table>& dataSets = rawResults.at(index);
            if (dataSet >= dataSets.size()) {
                continue;
            }
            CheckedModel& model = models[index];
            const Table& table = dataSets.at(dataSet);
            const QVector<double> numbers = columnValues(table, model.columns.number);
            if (index == 0) {
                firstNumbers = numbers;
            }
            SampleCounts counts = countSamples(table, model.columns, numbers, firstNumbers);
            const QVector<Table>& firstDataSets = rawResults.first();
            counts.unevenlyPaired =
                dataSet < firstDataSets.size() && firstDataSets.at(dataSet).size() != table.size();
            counts.repeatsPrevious = dataSet > 0 && sameSamples(dataSets.at(dataSet - 1), table);
            model.dataSets.append(counts);
        }
    }
}

void pairAll(const RawResults& rawResults, QVector<CheckedModel>& models)
{
    QVector<int> ofvColumns;
    for (const CheckedModel& model : qAsConst(models)) {
        ofvColumns.append(model.columns.ofv);
    }
    const QVector<RowPairing> pairings = pairRows(rawResults, ofvColumns);
    for (int index = 0; index < models.size(); ++index) {
        CheckedModel& model = models[index];
        model.pairing = pairings.at(index);
        for (const int dataSet : qAsConst(model.pairing.faultyDataSets)) {
            model.dataSets[dataSet].unpaired = true;
        }
    }
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
    lines.append(result.findings.isEmpty() ? "nothing that deserves attention"
                                           : "what deserves attention:");
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
    QVector<CheckedModel> models;
    for (int model = 0; model < rawResults.size(); ++model) {
        const QString name = modelNames.value(model);
        models.append(modelOf(name.isEmpty() ? QString("model %1").arg(model) : name,
                              headings.value(model), colNumOFV));
        models.last().unread = unread.value(model);
    }
    countAll(rawResults, models);
    pairAll(rawResults, models);
    const bool zeroSeen = hasZero(models);
    ImportCheckUp result;
    for (CheckedModel& model : models) {
        model.width = commonWidth(model.dataSets);
        checkModel(model, {models, zeroSeen, colNumOFV, colNumTHETA1});
        result.models.append(resultOf(model));
    }
    result.summary = summaryOf(models);
    return result;
}
