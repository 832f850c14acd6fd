// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_TABLES_DATASETTIPS_H
#define VELMORA_APP_TABLES_DATASETTIPS_H

#include <QObject>

class QHeaderView;
class QTableWidget;

/// Tells in tooltips to which data set a row of a table by data set belongs, as the rows are
/// numbered from 1 and data sets are chosen from 0. Items of the header would tell it, too, but
/// tables are copied and saved with these. Owned by the table.
class DataSetTips : public QObject
{
public:
    explicit DataSetTips(QTableWidget* table);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QHeaderView* rowHeadings;
};

#endif
