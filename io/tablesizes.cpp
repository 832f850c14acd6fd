// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/tablesizes.h"

#include <algorithm>

namespace {

constexpr qint64 mostItems = 1'000'000;
/// The limits of a widget, which counts the positions of rows and columns in pixels.
constexpr int mostColumns = 200'000;
constexpr int mostRows = 20'000'000;
constexpr qint64 mostCells = 1 << 27;

bool canHaveItems(const QSize& shown)
{
    return qint64(shown.width()) * shown.height() <= mostItems;
}

} // namespace

TableSizes tableSizes(const TableExtent& extent, LargeTableUse use)
{
    const bool isInPart = use == LargeTableUse::InPart;
    const qint64 wantedCells = isInPart ? mostItems : 2 * extent.numbers;
    const qint64 cells = std::clamp(wantedCells, mostItems, mostCells);
    const int most = std::min(extent.columns, mostColumns);
    const qint64 meanLength = extent.rows == 0 ? 0 : (extent.numbers - 1) / extent.rows + 1;
    const qint64 least =
        std::min<qint64>(std::max<qint64>({1, extent.namedColumns, meanLength}), most);
    const qint64 columns = std::clamp<qint64>(cells / std::max(1, extent.rows), least, most);
    const qint64 rows =
        std::min({qint64(extent.rows), qint64(mostRows), cells / std::max<qint64>(1, columns)});
    const QSize shown{int(columns), int(rows)};
    const QSize full(extent.columns, extent.rows);
    const bool isWhole = shown == full;
    return {shown, isWhole ? QSize() : full, isInPart || (isWhole && canHaveItems(shown))};
}

TableSizes withRowBelow(const QSize& shown, const QSize& full, int length)
{
    const QSize after(std::min(std::max(shown.width(), length), mostColumns), shown.height() + 1);
    const bool isWhole = !full.isValid() && after.width() >= length;
    const QSize fullAfter(std::max(full.width(), length),
                          std::max(full.height(), shown.height()) + 1);
    return {after, isWhole ? QSize() : fullAfter, canHaveItems(after)};
}
