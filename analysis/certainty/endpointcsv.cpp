// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/certainty/endpointcsv.h"

#include <QIODevice>

#include <cmath>

namespace {

constexpr int exactDigits = 17;
constexpr int bytesAtATime = 1 << 20;

/// What all lines of a result share.
struct EndpointLines
{
    explicit EndpointLines(const JudgedResult& judged)
        : result(judged)
        , weights(relativeWeights(judged.evaluation.weights.values, judged.evaluation.sampleCount,
                                  judged.made.logScale))
        , selected(selectedModels(judged.evaluation.weights.values, judged.evaluation.sampleCount))
    {
        for (int model = 0; model < judged.evaluation.endpoints.size(); ++model) {
            const QString name = judged.made.endPoints.value(model).name;
            QByteArray field = commaSeparated({{name}});
            field.chop(2); // the end of the line
            names.append(field);
        }
        for (const double dose : judged.made.doses) {
            doses.append(csvNumber(dose));
        }
    }

    void append(QByteArray& text, int sample) const
    {
        const int row = result.made.individualOfv ? sample : 0;
        for (int model = 0; model < names.size(); ++model) {
            const double* endpoints = result.evaluation.endpoints.at(model).of(sample);
            if (endpoints == nullptr) {
                continue;
            }
            const QByteArray start = QByteArray::number(result.dataSet) + ',' + names.at(model)
                                     + ',' + QByteArray::number(sample) + ',';
            const QByteArray middle = ',' + csvNumber(weights.at(row).value(model)) + ','
                                      + (selected.at(row) == model ? "1," : "0,");
            for (int dose = 0; dose < doses.size(); ++dose) {
                text += start + doses.at(dose) + ',' + csvNumber(endpoints[dose]) + middle
                        + (result.made.target.contains(endpoints[dose]) ? "1\r\n" : "0\r\n");
            }
        }
    }

    const JudgedResult& result;
    Table weights;
    QVector<int> selected;
    QByteArrayList names;
    QByteArrayList doses;
};

} // namespace

QByteArray csvNumber(double number)
{
    if (std::isnan(number)) {
        return "NA";
    }
    if (std::isinf(number)) {
        return number > 0 ? "Inf" : "-Inf";
    }
    return QByteArray::number(number, 'g', exactDigits);
}

void writeEndpointHeading(QIODevice& device)
{
    device.write("data_set,model,sample,dose,endpoint,weight,selected,in_target\r\n");
}

bool writeEndpoints(QIODevice& device, const JudgedResult& result,
                    const std::function<bool()>& goesOn)
{
    QByteArray text;
    const EndpointLines lines(result);
    for (int sample = 0; sample < result.evaluation.sampleCount; ++sample) {
        lines.append(text, sample);
        if (text.size() >= bytesAtATime) {
            if (device.write(text) != text.size()) {
                return true;
            }
            text.clear();
            if (!goesOn()) {
                return false;
            }
        }
    }
    device.write(text);
    return true;
}

bool writeEndpoints(QIODevice& device, int resultCount,
                    const std::function<JudgedResult(int result)>& resultAt,
                    const std::function<bool(int done)>& goesOn)
{
    writeEndpointHeading(device);
    for (int index = 0; index < resultCount; ++index) {
        const JudgedResult result = resultAt(index);
        if (!writeEndpoints(device, result, [&] { return goesOn(index); }) || !goesOn(index + 1)) {
            return false;
        }
    }
    return true;
}
