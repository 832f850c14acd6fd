// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_TABLES_TABLETIPS_H
#define VELMORA_APP_TABLES_TABLETIPS_H

#include <QObject>

#include <functional>

class QHelpEvent;
class QTableWidget;

/// Tooltips for cells and headings of a table. Items could hold them, too, but there may be
/// millions of them, and tables are copied and saved with the items of their headings. Owned by the
/// table.
class TableTips : public QObject
{
public:
    /// The texts for the place under the mouse; with an empty text the table shows its own tooltip.
    /// Functions may be missing.
    struct Texts
    {
        std::function<QString(int row)> rowHeading;
        std::function<QString(int column)> columnHeading;
        std::function<QString(int row, int column)> cell;
    };

    TableTips(QTableWidget* describedTable, const Texts& itsTexts);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool showTip(QWidget* place, const QHelpEvent& help) const;

    QTableWidget* table;
    Texts texts;
};

#endif
