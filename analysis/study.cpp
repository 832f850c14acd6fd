// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/study.h"

#include <cstring>

namespace {

/// Mixes words one by one; fast rather than safe against forgery.
class Mixer
{
public:
    void add(quint64 word)
    {
        state = (state ^ word) * 0x9e3779b97f4a7c15U;
        state ^= state >> 32;
    }

    void add(const QVector<double>& numbers)
    {
        add(quint64(numbers.size()));
        for (const double number : numbers) {
            quint64 bits = 0;
            std::memcpy(&bits, &number, sizeof bits);
            add(bits);
        }
    }

    template <typename T>
    void add(const QVector<QVector<T>>& tables)
    {
        add(quint64(tables.size()));
        for (const QVector<T>& table : tables) {
            add(table);
        }
    }

    quint64 result() const { return state == 0 ? 1 : state; }

private:
    quint64 state = 0x243f6a8885a308d3U;
};

} // namespace

QStringList Study::columnNamesOf(int model) const
{
    return model >= 0 && model < headings.size() ? headings.at(model).names
                                                 : columnNames(rawResultsHeaders.value(model));
}

QStringList numberedModelNames(int count)
{
    QStringList names;
    for (int model = 0; model < count; ++model) {
        names.append(QString("model %1").arg(model));
    }
    return names;
}

void defineModels(Study& study, const QStringList& modelNames)
{
    const int definedBefore = study.endPoints.size();
    study.endPoints.resize(modelNames.size());
    for (int model = 0; model < study.endPoints.size(); ++model) {
        endPoint& definition = study.endPoints[model];
        definition.name = modelNames.at(model);
        definition.colNumOFV = study.colNumOFV;
        definition.colNumTHETA1 = study.colNumTHETA1;
        definition.colNumThird = study.colNumThird;
        if (model >= definedBefore) {
            definition.numSimulations = study.individuals;
            definition.populationSummary = study.populationSummary;
        }
    }
}

void bringUpToDate(QVector<endPoint>& endPoints, const QVector<double>& doses)
{
    for (endPoint& definition : endPoints) {
        definition.bringUpToDate(doses);
    }
}

QString doseName(const QVector<endPoint>& endPoints)
{
    if (endPoints.isEmpty()) {
        return {};
    }
    parser expression = endPoints.first().endPointParser;
    return expression.extract_variables().at(DoseSlot);
}

quint64 fingerprintOf(const RawResults& results)
{
    Mixer mixer;
    mixer.add(results);
    return mixer.result();
}
