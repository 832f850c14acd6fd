// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tables/columnwidths.h"

#include <QHeaderView>
#include <QStyle>
#include <QTableWidget>

#include <array>

namespace {

/// Columns that are measured by their layout, which takes a hundred times as long.
constexpr int mostLaidOut = 1'000;
/// Pixels of the others. Those of 200,000 columns are to stay below 2 to the power of 31.
constexpr int widestAdded = 10'000;

/// Adds up the widths of letters.
class LetterWidths
{
public:
    explicit LetterWidths(const QFont& font)
        : metrics(font)
    {
        for (int letter = 0; letter < int(ascii.size()); ++letter) {
            ascii[std::size_t(letter)] = metrics.horizontalAdvance(QChar(letter));
        }
    }

    int of(const QString& text) const
    {
        int width = 0;
        for (const QChar letter : text) {
            width += letter.unicode() < ascii.size() ? ascii[letter.unicode()]
                                                     : metrics.horizontalAdvance(letter);
        }
        return width;
    }

private:
    QFontMetrics metrics;
    std::array<int, 128> ascii{};
};

/// Lets the columns of a heading take widths without a look at the places of all columns for
/// each.
class WidthsAtOnce
{
public:
    explicit WidthsAtOnce(QHeaderView* changedHeader)
        : header(changedHeader)
    {
        header->setUpdatesEnabled(false);
    }
    ~WidthsAtOnce() { header->setUpdatesEnabled(true); }
    Q_DISABLE_COPY_MOVE(WidthsAtOnce)

private:
    QHeaderView* header;
};

/// More than styles leave next to texts in cells and headings.
int amplyBeside(const QTableWidget* table)
{
    const QStyle* style = table->style();
    return 4
           * (style->pixelMetric(QStyle::PM_FocusFrameHMargin)
              + style->pixelMetric(QStyle::PM_HeaderMargin) + 2);
}

} // namespace

void fitColumns(QTableWidget* table, const QString& widestNumber)
{
    QHeaderView* header = table->horizontalHeader();
    const int margins = 4 * table->style()->pixelMetric(QStyle::PM_FocusFrameHMargin);
    const int widest = table->fontMetrics().horizontalAdvance(widestNumber) + margins;
    QFont headingFont = header->font();
    headingFont.setBold(true); // as that of a selected column
    const LetterWidths letters(headingFont);
    const int amply = amplyBeside(table);
    const WidthsAtOnce atOnce(header);
    for (int column = 0; column < table->columnCount(); ++column) {
        const QTableWidgetItem* heading = table->horizontalHeaderItem(column);
        const QString text = heading == nullptr ? QString::number(column + 1) : heading->text();
        const int ofLetters = qMin(letters.of(text) + amply, widestAdded);
        const bool isLaidOut = column < mostLaidOut && ofLetters > widest;
        const int width = qMax(widest, isLaidOut ? header->sectionSizeHint(column) : ofLetters);
        if (width > header->sectionSize(column)) {
            header->resizeSection(column, width);
        }
    }
}

void fitColumnsToTexts(QTableWidget* table)
{
    QHeaderView* header = table->horizontalHeader();
    const int count = table->columnCount();
    const WidthsAtOnce atOnce(header);
    for (int column = 0; column < qMin(count, mostLaidOut); ++column) {
        table->resizeColumnToContents(column);
    }
    const LetterWidths letters(table->font());
    const int amply = amplyBeside(table);
    const int ofNumber = header->sectionSizeHint(count - 1);
    for (int column = mostLaidOut; column < count; ++column) {
        const QTableWidgetItem* item = table->item(0, column);
        const int ofText = item == nullptr ? 0 : letters.of(item->text()) + amply;
        header->resizeSection(column, qBound(ofNumber, ofText, widestAdded));
    }
}
