// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/endpointcache.h"

#include "analysis/probability.h"
#include "analysis/weights.h"

#include <algorithm>

namespace {

/// Whether the endpoints of a data set, [model][sample][dose], hold every model's.
bool isComplete(const QVector<Table>& endpoints)
{
    return std::none_of(endpoints.begin(), endpoints.end(),
                        [](const Table& samples) { return samples.contains(QVector<double>()); });
}

/// Whether endpoints made from the one serve for the other.
bool serves(const Provenance& made, const Provenance& now, bool isWhole)
{
    const QVector<InputKind> changed = changedKinds(made, now);
    const bool sameEndpoints =
        made.exists() && std::none_of(changed.begin(), changed.end(), [](InputKind kind) {
            return kind != InputKind::Weights && kind != InputKind::Choices;
        });
    const bool sameModels = !changed.contains(InputKind::Weights)
                            && made.inputs.individualOfv == now.inputs.individualOfv;
    return sameEndpoints && (isWhole || now.inputs.selecting || sameModels);
}

} // namespace

EndpointCache::EndpointCache(Entries& cachedEntries)
    : entries(cachedEntries)
{
}

void EndpointCache::resize(int dataSetCount)
{
    entries.resize(qMax(entries.size(), dataSetCount));
}

std::optional<QVector<Table>> EndpointCache::averaged(int dataSet, int modelCount)
{
    const QVector<Table>& kept = entry(dataSet, modelCount);
    return kept.isEmpty() ? std::nullopt : std::optional<QVector<Table>>(kept);
}

std::optional<Table> EndpointCache::selected(int dataSet, int modelCount,
                                             const QVector<int>& models)
{
    const QVector<Table>& kept = entry(dataSet, modelCount);
    return !kept.isEmpty() && holdsSelected(kept, models)
               ? std::optional<Table>(pickSelected(kept, models))
               : std::nullopt;
}

bool EndpointCache::holdsAny() const
{
    return std::any_of(entries.begin(), entries.end(),
                       [](const QVector<Table>& kept) { return !kept.isEmpty(); });
}

void EndpointCache::keep(int dataSet, const QVector<Table>& endpoints, const Provenance& made)
{
    resize(dataSet + 1);
    entries[dataSet] = endpoints;
    origins.resize(qMax(origins.size(), dataSet + 1));
    origins[dataSet] = made;
}

void EndpointCache::clear()
{
    entries.clear();
    origins.clear();
}

void EndpointCache::restore(const Entries& savedEntries, const Provenance& made)
{
    entries = savedEntries;
    origins.fill(made, entries.size());
}

int EndpointCache::misfits(const Study& study) const
{
    Provenance now = endpointProvenance(study);
    const int dataSetCount = qMin(entries.size(), study.dataSetCount());
    int count = 0;
    for (int dataSet = 0; dataSet < dataSetCount; ++dataSet) {
        const QVector<Table>& kept = entries.at(dataSet);
        const bool isWhole = isComplete(kept);
        const Provenance& made = origins.value(dataSet);
        // Where the model shown on page "0" lacks the data set, the cache is not asked.
        now.weighedDataSets = made.weighedDataSets;
        if (kept.isEmpty() || kept.size() != study.endPoints.size() || serves(made, now, isWhole)) {
            continue;
        }
        const bool isUsed =
            isWhole || !study.selecting || holdsSelected(kept, judgingModels(study, dataSet));
        count += isUsed ? 1 : 0;
    }
    return count;
}

QStringList EndpointCache::findings(const Study& study) const
{
    const int count = misfits(study);
    return count == 0
               ? QStringList()
               : QStringList(
                   QString("The cache of %1 of %2 data sets was made with other data, doses, "
                           "endpoints or weights and will still be used: press \"Clear Cash\".")
                       .arg(count)
                       .arg(qMin(entries.size(), study.dataSetCount())));
}

QVector<Table>& EndpointCache::entry(int dataSet, int modelCount)
{
    resize(dataSet + 1);
    QVector<Table>& kept = entries[dataSet];
    if (kept.size() != modelCount) {
        kept.clear();
    }
    return kept;
}
