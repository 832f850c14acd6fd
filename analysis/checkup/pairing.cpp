// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/pairing.h"

#include "analysis/checkup/samplecounts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <iterator>
#include <numeric>
#include <utility>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr int fewestRows = 20;
constexpr double lowestCorrelation = 0.5;
constexpr int furthestShift = 20;
constexpr int mostModelsWithAll = 20;
/// All rows, then each fifth of them.
constexpr int partCount = 6;

/// Finite values, ascending, with their rows.
using Ordered = QVector<std::pair<double, int>>;

/// Ranks less their mean; 0 for what has none, so that it adds nothing to sums.
struct Ranks
{
    QVector<double> deviations;
    int count = 0;
    double squares = 0.0; ///< of the deviations
};

/// The OFV of a model in a data set.
struct RankedOfv
{
    QVector<double> values; ///< [row]
    Ordered order;
    std::array<Ranks, partCount> ranks; ///< if complete

    bool isComplete() const { return order.size() == values.size(); }
};

/// Two models and their rank correlation in each part.
struct Pair
{
    int first;
    int second;
    std::array<double, partCount> correlations;
    int faultyPart; ///< -1 for none

    bool has(int model) const { return model == first || model == second; }
    int partnerOf(int model) const { return model == first ? second : first; }
};

int firstRowOf(int part, int rowCount)
{
    return part == 0 ? 0 : int(qint64(rowCount) * (part - 1) / (partCount - 1));
}

int endRowOf(int part, int rowCount)
{
    return part == 0 ? rowCount : firstRowOf(part + 1, rowCount);
}

/// A number that is the greater, the greater the value.
quint64 orderOf(double value)
{
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    constexpr quint64 sign = quint64(1) << 63;
    return (bits & sign) != 0 ? ~bits : bits | sign;
}

/// Sorts by bytes from the last to the first (Knuth, The Art of Computer Programming 3, 5.2.5),
/// several times as fast as by comparisons.
void sortByBytes(Ordered& values)
{
    constexpr int bytes = sizeof(quint64);
    constexpr int byteValues = 256;
    std::array<std::array<int, byteValues>, bytes> counts{};
    const auto byteOf = [](const std::pair<double, int>& entry, int byte) {
        return (orderOf(entry.first) >> (8 * byte)) & (byteValues - 1);
    };
    for (const auto& entry : qAsConst(values)) {
        for (int byte = 0; byte < bytes; ++byte) {
            ++counts[byte][byteOf(entry, byte)];
        }
    }
    Ordered sorted(values.size());
    for (int byte = 0; byte < bytes; ++byte) {
        std::array<int, byteValues>& places = counts[byte];
        if (values.isEmpty() || places[byteOf(values.first(), byte)] == values.size()) {
            continue; // all have the same
        }
        std::exclusive_scan(places.begin(), places.end(), places.begin(), 0);
        auto* target = sorted.data();
        for (const auto& entry : qAsConst(values)) {
            target[places[byteOf(entry, byte)]++] = entry;
        }
        values.swap(sorted);
    }
}

Ordered ordered(const double* values, int count)
{
    Ordered finite;
    finite.reserve(count);
    for (int row = 0; row < count; ++row) {
        if (std::isfinite(values[row])) {
            finite.append({values[row], row});
        }
    }
    sortByBytes(finite);
    return finite;
}

/// The ranks of the values in the rows from first to before end.
Ranks rankedWithin(const Ordered& values, int first, int end)
{
    Ranks ranks{QVector<double>(end - first, 0.0), int(values.size()), 0.0};
    double* deviations = ranks.deviations.data();
    const double mean = (ranks.count - 1) / 2.0;
    for (int tied = 0, behind = 0; tied < ranks.count; tied = behind) {
        while (behind < ranks.count && values.at(behind).first == values.at(tied).first) {
            ++behind;
        }
        const double deviation = (tied + behind - 1) / 2.0 - mean;
        ranks.squares += deviation * deviation * (behind - tied);
        for (int i = tied; i < behind; ++i) {
            deviations[values.at(i).second - first] = deviation;
        }
    }
    return ranks;
}

/// The ranks within the rows from first to before end whose partner is finite, too.
Ranks ranksOf(const Ordered& values, int first, int end, const double* partners)
{
    Ordered chosen;
    chosen.reserve(values.size());
    std::copy_if(values.begin(), values.end(), std::back_inserter(chosen), [=](const auto& entry) {
        return first <= entry.second && entry.second < end && std::isfinite(partners[entry.second]);
    });
    return rankedWithin(chosen, first, end);
}

double correlation(const Ranks& first, const Ranks& second)
{
    if (first.count < fewestRows) {
        return notANumber;
    }
    return std::inner_product(first.deviations.begin(), first.deviations.end(),
                              second.deviations.begin(), 0.0)
           / std::sqrt(first.squares * second.squares); // 0 / 0 where all ranks are tied
}

RankedOfv rankedOfv(const Table& table, int column)
{
    RankedOfv ofv;
    ofv.values = columnValues(table, column);
    const int rowCount = ofv.values.size();
    ofv.order = ordered(ofv.values.constData(), rowCount);
    if (!ofv.isComplete()) {
        return ofv;
    }
    QVector<int> partOfRow(rowCount);
    std::array<Ordered, partCount> parts;
    for (int part = 1; part < partCount; ++part) {
        const int first = firstRowOf(part, rowCount);
        const int end = endRowOf(part, rowCount);
        std::fill(partOfRow.begin() + first, partOfRow.begin() + end, part);
        parts[part].reserve(end - first);
    }
    for (const auto& entry : qAsConst(ofv.order)) {
        parts[partOfRow.at(entry.second)].append(entry);
    }
    ofv.ranks[0] = rankedWithin(ofv.order, 0, rowCount);
    for (int part = 1; part < partCount; ++part) {
        ofv.ranks[part] =
            rankedWithin(parts[part], firstRowOf(part, rowCount), endRowOf(part, rowCount));
    }
    return ofv;
}

/// Whether the rows fit, and not by chance: of unrelated rows, not one in 3,000 pairs reaches
/// this. A few rows have to correlate better for it.
bool fitClearly(double correlation, int rowCount)
{
    return correlation >= qMax(lowestCorrelation, 3.3 / std::sqrt(rowCount));
}

/// The part that is reported where a pair does not fit: all rows, or, where some fifth of them
/// fits, the fifth that fits least. -1 where the pair fits.
int faultyPart(const std::array<double, partCount>& correlations, int rowCount)
{
    int worst = 0;
    bool somePartFits = false;
    for (int part = 1; part < partCount; ++part) {
        const double here = correlations[part];
        somePartFits = somePartFits || fitClearly(here, rowCount / (partCount - 1));
        if (here < lowestCorrelation && (worst == 0 || here < correlations[worst])) {
            worst = part;
        }
    }
    const bool wholeFails = correlations[0] < lowestCorrelation;
    if (worst > 0 && (somePartFits || !wholeFails)) {
        return worst;
    }
    return wholeFails ? 0 : -1;
}

Pair pairOf(const QVector<RankedOfv>& ofvs, int first, int second)
{
    Pair pair{first, second, {}, -1};
    const RankedOfv& one = ofvs.at(first);
    const RankedOfv& other = ofvs.at(second);
    const int rowCount = qMin(one.values.size(), other.values.size());
    const bool areRanked =
        one.isComplete() && other.isComplete() && one.values.size() == other.values.size();
    for (int part = 0; part < partCount; ++part) {
        const auto ranks = [=](const RankedOfv& ofv, const RankedOfv& partner) {
            return areRanked ? ofv.ranks[part]
                             : ranksOf(ofv.order, firstRowOf(part, rowCount),
                                       endRowOf(part, rowCount), partner.values.constData());
        };
        pair.correlations[part] = correlation(ranks(one, other), ranks(other, one));
    }
    pair.faultyPart = faultyPart(pair.correlations, rowCount);
    return pair;
}

QVector<Pair> pairsOf(const QVector<RankedOfv>& ofvs)
{
    QVector<Pair> pairs;
    const int firsts = ofvs.size() > mostModelsWithAll ? 1 : ofvs.size();
    for (int first = 0; first < firsts; ++first) {
        for (int second = first + 1; second < ofvs.size(); ++second) {
            pairs.append(pairOf(ofvs, first, second));
        }
    }
    return pairs;
}

/// Blames the model with most faulty pairs until none is left. Gives [model].
QVector<bool> blamedModels(const QVector<Pair>& pairs, int modelCount)
{
    QVector<bool> blamed(modelCount, false);
    for (;;) {
        QVector<int> faults(modelCount, 0);
        for (const Pair& pair : pairs) {
            if (pair.faultyPart >= 0 && !blamed.at(pair.first) && !blamed.at(pair.second)) {
                ++faults[pair.first];
                ++faults[pair.second];
            }
        }
        int most = 0;
        for (int model = 0; model < modelCount; ++model) {
            most = faults.at(model) >= faults.at(most) ? model : most;
        }
        if (modelCount == 0 || faults.at(most) == 0) {
            return blamed;
        }
        blamed[most] = true;
    }
}

/// The fault of a blamed model, with the first of the models that are not blamed.
PairingFault faultOf(int model, const QVector<Pair>& pairs, const QVector<bool>& blamed,
                     const QVector<RankedOfv>& ofvs)
{
    PairingFault fault;
    for (const Pair& pair : pairs) {
        const int partner = pair.partnerOf(model);
        if (!pair.has(model) || pair.faultyPart < 0
            || (fault.partner >= 0 && (blamed.at(partner) || !blamed.at(fault.partner)))) {
            continue;
        }
        const int rowCount = qMin(ofvs.at(model).values.size(), ofvs.at(partner).values.size());
        fault.partner = partner;
        fault.isWhole = pair.faultyPart == 0;
        fault.firstRow = firstRowOf(pair.faultyPart, rowCount);
        fault.rowCount = endRowOf(pair.faultyPart, rowCount) - fault.firstRow;
        fault.correlation = pair.correlations[pair.faultyPart];
    }
    return fault;
}

/// The correlations of models that are not blamed.
void addCorrelations(const QVector<Pair>& pairs, const QVector<bool>& blamed,
                     QVector<RowPairing>& pairings)
{
    for (const Pair& pair : pairs) {
        const double ofAllRows = pair.correlations[0];
        if (!std::isnan(ofAllRows) && !blamed.at(pair.first) && !blamed.at(pair.second)) {
            for (const int model : {pair.first, pair.second}) {
                pairings[model].append({{}, ofAllRows, ofAllRows});
            }
        }
    }
}

/// Whether a fault, if it is one, is to be reported rather than the worst before.
bool isWorse(const PairingFault& fault, const PairingFault& worst)
{
    if (fault.partner < 0 || worst.partner < 0) {
        return worst.partner < 0;
    }
    return fault.isWhole == worst.isWhole ? fault.correlation < worst.correlation : fault.isWhole;
}

/// Looks for the shift that restores the correlation best, the shortest of equal ones.
void findShift(PairingFault& fault, const QVector<double>& values, const QVector<double>& partners)
{
    for (int distance = 1; distance <= furthestShift; ++distance) {
        for (const int shift : {distance, -distance}) {
            const int first = qMax(fault.firstRow, shift);
            const int end = qMin(fault.firstRow + fault.rowCount, values.size() + shift);
            const double restored = rankCorrelation(values.constData() + first - shift,
                                                    partners.constData() + first, end - first);
            if (fitClearly(restored, end - first) && restored > fault.restored) {
                fault.shift = shift;
                fault.restored = restored;
            }
        }
    }
}

} // namespace

double rankCorrelation(const double* first, const double* second, int count)
{
    return count < fewestRows ? notANumber
                              : correlation(ranksOf(ordered(first, count), 0, count, second),
                                            ranksOf(ordered(second, count), 0, count, first));
}

void RowPairing::append(const RowPairing& later)
{
    worst = isWorse(later.worst, worst) ? later.worst : worst;
    lowest = std::fmin(lowest, later.lowest);
    highest = std::fmax(highest, later.highest);
}

QVector<bool> pairRows(int dataSet, const QVector<Table>& tables, const QVector<int>& ofvColumns,
                       QVector<RowPairing>& pairings)
{
    if (tables.size() < 2) {
        return QVector<bool>(tables.size(), false);
    }
    QVector<RankedOfv> ofvs;
    for (int model = 0; model < tables.size(); ++model) {
        ofvs.append(rankedOfv(tables.at(model), ofvColumns.value(model, -1)));
    }
    const QVector<Pair> pairs = pairsOf(ofvs);
    QVector<bool> blamed = blamedModels(pairs, ofvs.size());
    addCorrelations(pairs, blamed, pairings);
    for (int model = 0; model < ofvs.size(); ++model) {
        if (!blamed.at(model)) {
            continue;
        }
        PairingFault fault = faultOf(model, pairs, blamed, ofvs);
        fault.dataSet = dataSet;
        if (isWorse(fault, pairings.at(model).worst)) {
            findShift(fault, ofvs.at(model).values, ofvs.at(fault.partner).values);
            pairings[model].worst = fault;
        }
    }
    return blamed;
}
