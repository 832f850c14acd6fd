// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_PROJECTBYTES_H
#define VELMORA_TESTS_SUPPORT_PROJECTBYTES_H

#include "io/projectfile.h"

#include <QDataStream>
#include <QIODevice>

#include <vector>

/// The bytes of a project file, as Qt itself encodes its items.
struct ProjectBytes
{
    explicit ProjectBytes(const ProjectItems& i)
    {
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream.setVersion(15);
        const auto put = [&](const auto&... x) { ((stream << x, ends.append(bytes.size())), ...); };
        put(i.rawResults, i.rawResultsHeaders, i.possibleDoses, i.endPointExpressions, i.omegas,
            i.omegaColumns, i.populationSummary, i.weightExpressions, i.logScale);
        put(i.averageOrSelection, i.oneOrIndividualOfv, i.lowerBound, i.upperBound, i.doseChoice,
            i.doseChoiceLabels, i.doseChoiceVector, i.doseChoiceCash);
    }

    QByteArray bytes;
    QVector<int> ends = {0}; ///< offset after each item, [item]; 0 for item 0
};

/// Reads a project file of these bytes. Returns the number of items found; -1 unless they equal
/// those of the file and the others are default.
inline int readItemCount(QByteArray file, ProjectItems& items)
{
    static const QByteArray none = ProjectBytes({}).bytes;
    const std::vector<uchar> exact(file.begin(), file.end()); // without a spare byte at the end
    const DecodedProject decoded = readProject(exact.data(), file.size());
    items = decoded.items;
    const int complete = decoded.completeItems;
    const auto [bytes, ends] = ProjectBytes(items);
    if (complete > 8 && file.at(ends.at(8)) != 0) {
        file[ends.at(8)] = 1; // a flag that is set may be any other byte
    }
    const int end = ends.at(complete);
    const bool isRight = bytes == file.left(end) + none.right(bytes.size() - end);
    const bool isCut = complete < 17 && end < file.size();
    return isRight && decoded.endsInsideItem == isCut ? complete : -1;
}

#endif
