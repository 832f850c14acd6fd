// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/provenance.h"

#include "analysis/settingtexts.h"

#include <cmath>
#include <limits>

namespace {

bool same(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

template <typename T>
bool same(const QVector<T>& a, const QVector<T>& b)
{
    // Shared numbers need no look.
    return (a.constData() == b.constData() && a.size() == b.size())
           || std::equal(a.begin(), a.end(), b.begin(), b.end(),
                         [](const T& first, const T& second) { return same(first, second); });
}

/// An element of omega as it is used: its column or, without one, its number. Elements that
/// are not there are 0.
struct OmegaElement
{
    int column;
    double number;
};

OmegaElement omegaElement(const endPoint& definition, int row, int column)
{
    const int reference = definition.omegaColumns.value(row).value(column, -1);
    return reference >= 0 ? OmegaElement{reference, 0.0}
                          : OmegaElement{-1, definition.omega.value(row).value(column)};
}

bool sameOmega(const endPoint& a, const endPoint& b)
{
    if (a.omega.constData() == b.omega.constData()
        && a.omegaColumns.constData() == b.omegaColumns.constData()) {
        return true;
    }
    const int size = qMax(a.omega.size(), b.omega.size());
    for (int row = 0; row < size; ++row) {
        for (int column = 0; column < size; ++column) {
            const OmegaElement first = omegaElement(a, row, column);
            const OmegaElement second = omegaElement(b, row, column);
            if (first.column != second.column || !same(first.number, second.number)) {
                return false;
            }
        }
    }
    return true;
}

bool sameEndpoint(const endPoint& a, const endPoint& b)
{
    return a.endPointParser.expression == b.endPointParser.expression
           && a.colNumTHETA1 == b.colNumTHETA1
           && (a.highestEta == 0
               || (sameOmega(a, b) && a.populationSummary == b.populationSummary));
}

/// Without the blanks that a blank expression may be made of.
QString weightOf(const endPoint& definition)
{
    const QString& text = definition.weightParser.expression;
    return text.trimmed().isEmpty() ? QString() : text;
}

bool sameWeight(const endPoint& a, const endPoint& b)
{
    return weightOf(a) == weightOf(b) && a.colNumOFV == b.colNumOFV;
}

/// Whether the definitions that both results depend on agree in something.
template <typename Agree>
bool sameDefinitions(const Provenance& a, const Provenance& b, Agree agree)
{
    const QVector<endPoint>& first = a.inputs.endPoints;
    const QVector<endPoint>& second = b.inputs.endPoints;
    if (first.constData() == second.constData()) {
        return a.model == b.model; // shared definitions need no look
    }
    if (a.model < 0) {
        return std::equal(first.begin(), first.end(), second.begin(), second.end(), agree);
    }
    return a.model == b.model && a.model < first.size() && a.model < second.size()
           && agree(first.at(a.model), second.at(a.model));
}

/// Whether the models that both have and simulate agree.
bool sameIndividuals(const Provenance& a, const Provenance& b)
{
    const int count = qMin(a.inputs.endPoints.size(), b.inputs.endPoints.size());
    for (int model = 0; model < count; ++model) {
        const endPoint& first = a.inputs.endPoints.at(model);
        const endPoint& second = b.inputs.endPoints.at(model);
        const bool concerned =
            (a.model < 0 || a.model == model) && first.highestEta > 0 && second.highestEta > 0;
        if (concerned && first.numSimulations != second.numSimulations) {
            return false;
        }
    }
    return true;
}

bool dependsOn(const Provenance& made, InputKind kind)
{
    return made.kinds.contains(kind);
}

/// Whether the model shown on page "0" lets both find weights for the same data sets.
bool weighsTheSame(const Provenance& a, const Provenance& b)
{
    return a.dataSet < 0 ? a.weighedDataSets == b.weighedDataSets
                         : (a.dataSet < a.weighedDataSets) == (a.dataSet < b.weighedDataSets);
}

bool sameWeights(const Provenance& a, const Provenance& b)
{
    // Results by selection depend neither on the scale nor on the model shown on page "0".
    const bool bothSelect =
        dependsOn(a, InputKind::Choices) && a.inputs.selecting && b.inputs.selecting;
    const bool sameResults = a.inputs.fingerprint == b.inputs.fingerprint;
    return sameDefinitions(a, b, sameWeight)
           && (bothSelect
               || (a.inputs.logScale == b.inputs.logScale
                   && (!sameResults || weighsTheSame(a, b))));
}

bool sameKind(InputKind kind, const Provenance& a, const Provenance& b)
{
    const Study& first = a.inputs;
    const Study& second = b.inputs;
    switch (kind) {
    case InputKind::Results:
        return first.fingerprint == second.fingerprint;
    case InputKind::DataSet:
        return a.dataSet == b.dataSet;
    case InputKind::Doses:
        return same(first.doses, second.doses);
    case InputKind::Endpoints:
        return sameDefinitions(a, b, sameEndpoint);
    case InputKind::Individuals:
        return sameIndividuals(a, b);
    case InputKind::Weights:
        return sameWeights(a, b);
    case InputKind::Interval:
        return same(first.target.lower, second.target.lower)
               && same(first.target.upper, second.target.upper);
    case InputKind::Choices:
        return first.selecting == second.selecting && first.individualOfv == second.individualOfv;
    case InputKind::Levels:
        return same(first.levels, second.levels);
    case InputKind::TrueModels:
        return same(a.trueRows, b.trueRows) && a.trueModels == b.trueModels;
    case InputKind::ChosenDoses:
        return same(a.chosenDoses, b.chosenDoses);
    }
    return false;
}

const char* kindName(InputKind kind)
{
    switch (kind) {
    case InputKind::Results:
        return "results";
    case InputKind::DataSet:
        return "data set";
    case InputKind::Doses:
        return "doses";
    case InputKind::Endpoints:
        return "endpoints";
    case InputKind::Individuals:
        return "individuals";
    case InputKind::Weights:
        return "weights";
    case InputKind::Interval:
        return "interval";
    case InputKind::Choices:
        return "choices";
    case InputKind::Levels:
        return "levels";
    case InputKind::TrueModels:
        return "true models";
    case InputKind::ChosenDoses:
        return "chosen doses";
    }
    return "";
}

Provenance provenance(const Study& study, const QVector<InputKind>& kinds)
{
    Provenance made;
    made.kinds = kinds;
    made.inputs = study;
    made.dataSetCount = study.dataSetCount();
    made.weighedDataSets = qMin(made.dataSetCount, study.rawResults.value(study.shownModel).size());
    if (study.fingerprint == 0) {
        made.inputs.fingerprint = fingerprintOf(study.rawResults);
    }
    made.inputs.rawResults.clear();
    made.inputs.rawResultsHeaders.clear();
    made.inputs.headings.clear();
    return made;
}

} // namespace

Provenance typicalCurveProvenance(const Study& study, int model)
{
    Provenance made = provenance(study, {InputKind::Results, InputKind::Doses, InputKind::Endpoints,
                                         InputKind::Individuals});
    made.model = model;
    return made;
}

Provenance weightsProvenance(const Study& study, int dataSet)
{
    Provenance made =
        provenance(study, {InputKind::Results, InputKind::DataSet, InputKind::Weights});
    made.dataSet = dataSet;
    return made;
}

Provenance probabilityProvenance(const Study& study, int dataSet)
{
    Provenance made =
        provenance(study, {InputKind::Results, InputKind::DataSet, InputKind::Doses,
                           InputKind::Endpoints, InputKind::Individuals, InputKind::Weights,
                           InputKind::Interval, InputKind::Choices});
    made.dataSet = dataSet;
    return made;
}

Provenance doseProvenance(const Study& study)
{
    return provenance(study, {InputKind::Results, InputKind::Doses, InputKind::Endpoints,
                              InputKind::Individuals, InputKind::Weights, InputKind::Interval,
                              InputKind::Choices, InputKind::Levels});
}

Provenance endpointProvenance(const Study& study)
{
    return provenance(study, {InputKind::Results, InputKind::Doses, InputKind::Endpoints,
                              InputKind::Individuals, InputKind::Weights, InputKind::Choices});
}

Provenance truthProvenance(const Study& study, const Table& trueRows, const QStringList& trueModels,
                           const Table& chosenDoses)
{
    const QVector<InputKind> ofFile{InputKind::Doses, InputKind::ChosenDoses};
    const QVector<InputKind> ofModels{InputKind::Doses,       InputKind::Endpoints,
                                      InputKind::Individuals, InputKind::Interval,
                                      InputKind::TrueModels,  InputKind::ChosenDoses};
    Provenance made = provenance(study, trueRows.isEmpty() ? ofFile : ofModels);
    made.trueRows = trueRows;
    made.trueModels = trueModels;
    made.chosenDoses = chosenDoses;
    return made;
}

QVector<InputKind> changedKinds(const Provenance& made, const Provenance& now)
{
    QVector<InputKind> changed;
    for (const InputKind kind : made.kinds) {
        if (!sameKind(kind, made, now)) {
            changed.append(kind);
        }
    }
    return changed;
}

QString kindNames(const QVector<InputKind>& kinds)
{
    QStringList names;
    for (const InputKind kind : kinds) {
        names.append(kindName(kind));
    }
    return names.join(", ");
}

QString madeFor(const Provenance& made)
{
    QStringList parts;
    if (dependsOn(made, InputKind::DataSet) && made.dataSetCount > 1) {
        parts.append(QString("data set %1").arg(made.dataSet));
    }
    if (dependsOn(made, InputKind::Interval)) {
        parts.append(intervalText(made.inputs));
    }
    if (dependsOn(made, InputKind::Choices)) {
        parts.append(made.inputs.selecting ? "model selection" : "model average");
        if (!made.inputs.individualOfv) {
            parts.append("one ofv per model");
        }
    }
    return parts.join(", ");
}

QString staleText(const QString& what, const Provenance& made, const QVector<InputKind>& changed)
{
    if (changed.isEmpty()) {
        return {};
    }
    const QString purpose = madeFor(made);
    return what + (purpose.isEmpty() ? QString() : " for " + purpose)
           + "; since changed: " + kindNames(changed);
}
