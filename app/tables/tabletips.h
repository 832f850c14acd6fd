// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_TABLES_TABLETIPS_H
#define VELMORA_APP_TABLES_TABLETIPS_H

#include <QObject>

#include <functional>

class QHelpEvent;
class QTableWidget;

/// Tells in tooltips what a table does not show. Items would tell it, too, but there may be
/// millions of them, and tables are copied and saved with the items of their headings. Owned by
/// the table.
class TableTips : public QObject
{
public:
    /// Of what is under the mouse; an empty text leaves the tooltip to the table. Functions may
    /// be missing.
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
