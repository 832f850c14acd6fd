// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/checkupcounts.h"

#include "io/streamlists.h"

#include <algorithm>
#include <limits>

namespace {

/// Limits of counts in a data set and of sums over data sets, far enough from those of their type
/// to be added up.
constexpr qint64 mostInDataSet = std::numeric_limits<int>::max();
constexpr qint64 mostInAll = qint64(1) << 53;

template <typename Numbers>
bool areCounts(const Numbers& numbers, qint64 most)
{
    return std::all_of(numbers.begin(), numbers.end(),
                       [most](qint64 number) { return 0 <= number && number <= most; });
}

bool isSound(const SampleCounts& counts)
{
    return areCounts(QVector<qint64>{counts.samples, counts.withoutOfv, counts.notConverged,
                                     counts.unknownConvergence, counts.nearBoundary,
                                     counts.missingNumbers, counts.repeatedNumbers,
                                     counts.unnumbered, counts.mispaired},
                     mostInDataSet)
           && areCounts(counts.widths.keys(), mostInDataSet)
           && areCounts(counts.widths.values(), mostInDataSet);
}

/// Whether a fault can be reported: it has a partner.
bool isSound(const CountedModel& model, int modelCount)
{
    const PairingFault& worst = model.pairing.worst;
    const SampleSums& sums = model.sums;
    const bool isFaulty = std::any_of(model.dataSets.begin(), model.dataSets.end(),
                                      [](const SampleCounts& counts) { return counts.unpaired; });
    return (isFaulty ? 0 : -1) <= worst.partner && worst.partner < modelCount
           && areCounts(QVector<qint64>{worst.dataSet, worst.firstRow, worst.rowCount,
                                        qint64(worst.firstRow) + worst.rowCount,
                                        qAbs(qint64(worst.shift))},
                        mostInDataSet)
           && areCounts(QVector<qint64>{sums.dataSets, sums.fewest, sums.most, sums.samples,
                                        sums.withoutOfv, sums.notConverged, sums.nearBoundary},
                        mostInAll)
           && std::all_of(model.dataSets.begin(), model.dataSets.end(),
                          [](const SampleCounts& counts) { return isSound(counts); });
}

bool isSound(const CheckUpCounts& counts)
{
    return std::all_of(counts.models.begin(), counts.models.end(), [&](const CountedModel& model) {
        return isSound(model, counts.models.size());
    });
}

/// Applies the action to all members but the lists; the order is that of the stream.
template <typename Counts, typename Action>
void visitMembers(Counts& counts, const Action& action)
{
    action(counts.samples);
    action(counts.firstNumber);
    action(counts.lastNumber);
    action(counts.withoutOfv);
    action(counts.notConverged);
    action(counts.unknownConvergence);
    action(counts.nearBoundary);
    action(counts.missingNumbers);
    action(counts.repeatedNumbers);
    action(counts.unnumbered);
    action(counts.mispaired);
    action(counts.fitFailed);
    action(counts.unevenlyPaired);
    action(counts.unpaired);
    action(counts.repeatsPrevious);
}

template <typename Model, typename Action>
void visitTotals(Model& model, const Action& action)
{
    action(model.pairing.worst.partner);
    action(model.pairing.worst.dataSet);
    action(model.pairing.worst.firstRow);
    action(model.pairing.worst.rowCount);
    action(model.pairing.worst.isWhole);
    action(model.pairing.worst.correlation);
    action(model.pairing.worst.shift);
    action(model.pairing.worst.restored);
    action(model.pairing.lowest);
    action(model.pairing.highest);
    action(model.sums.dataSets);
    action(model.sums.fewest);
    action(model.sums.most);
    action(model.sums.samples);
    action(model.sums.withoutOfv);
    action(model.sums.notConverged);
    action(model.sums.nearBoundary);
}

} // namespace

// The lists of io/streamlists.h find these by their types.

static QDataStream& operator<<(QDataStream& stream, const SampleCounts& counts)
{
    visitMembers(counts, [&stream](const auto& member) { stream << member; });
    stream << qint32(counts.widths.size());
    for (auto width = counts.widths.begin(); width != counts.widths.end(); ++width) {
        stream << qint32(width.key()) << width.value();
    }
    return stream;
}

static QDataStream& operator>>(QDataStream& stream, SampleCounts& counts)
{
    visitMembers(counts, [&stream](auto& member) { stream >> member; });
    qint32 widths = 0;
    stream >> widths;
    for (; widths > 0 && stream.status() == QDataStream::Ok; --widths) {
        qint32 width = 0;
        qint64 samples = 0;
        stream >> width >> samples;
        counts.widths.insert(width, samples);
    }
    return stream;
}

static QDataStream& operator<<(QDataStream& stream, const CountedModel& model)
{
    visitTotals(model, [&stream](const auto& member) { stream << member; });
    writeList(stream, model.dataSets);
    return stream;
}

static QDataStream& operator>>(QDataStream& stream, CountedModel& model)
{
    visitTotals(model, [&stream](auto& member) { stream >> member; });
    readList(stream, model.dataSets);
    return stream;
}

bool CheckUpCounts::append(const CheckUpCounts& later)
{
    if (later.models.size() != models.size()) {
        return false;
    }
    for (int model = 0; model < models.size(); ++model) {
        const CountedModel& added = later.models.at(model);
        models[model].dataSets += added.dataSets;
        models[model].pairing.append(added.pairing);
        models[model].sums.add(added.sums);
    }
    return true;
}

QDataStream& operator<<(QDataStream& stream, const CheckUpCounts& counts)
{
    writeList(stream, counts.models);
    return stream;
}

QDataStream& operator>>(QDataStream& stream, CheckUpCounts& counts)
{
    readList(stream, counts.models);
    if (stream.status() == QDataStream::Ok && !isSound(counts)) {
        stream.setStatus(QDataStream::ReadCorruptData);
    }
    if (stream.status() != QDataStream::Ok) {
        counts = {};
    }
    return stream;
}
