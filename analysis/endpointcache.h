// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_ENDPOINTCACHE_H
#define VELMORA_ANALYSIS_ENDPOINTCACHE_H

#include "analysis/provenance.h"

#include <optional>

/// Endpoints of data sets, kept so that other levels and intervals need no evaluation.
///
/// An entry is used whenever it has one table per model. This is intended: a changed expression,
/// dose or omega does not matter. The provenance of each entry is kept with it, so that a finding
/// can report entries that no longer fit.
class EndpointCache
{
public:
    using Entries = QVector<QVector<Table>>; ///< [dataSet][model][sample][dose]

    /// Works on entries that the caller owns and that only this object changes.
    explicit EndpointCache(Entries& cachedEntries);

    /// Makes an entry for every data set; those that exist stay.
    void resize(int dataSetCount);

    /// The endpoints of a data set for averaging; none if they are not kept. Empties an entry made
    /// for another number of models.
    std::optional<QVector<Table>> averaged(int dataSet, int modelCount);

    /// The endpoints of the model selected for each sample, [sample][dose]; none if those of
    /// any sample are not kept.
    std::optional<Table> selected(int dataSet, int modelCount, const QVector<int>& models);

    /// Whether endpoints of any data set are kept.
    bool holdsAny() const;

    void keep(int dataSet, const QVector<Table>& endpoints, const Provenance& made);
    void clear();

    /// Takes over the entries of a project, which count as made from what it holds.
    void restore(const Entries& savedEntries, const Provenance& made);

    /// How many of the study's data sets have an entry that would be used although it was made from
    /// something else. Averaging takes the models that had a weight then; selection evaluates again
    /// where it lacks one.
    int misfits(const Study& study) const;

    /// The same as a sentence for the user; none without misfits.
    QStringList findings(const Study& study) const;

private:
    QVector<Table>& entry(int dataSet, int modelCount);

    Entries& entries;
    QVector<Provenance> origins; ///< [dataSet]
};

#endif
