// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_FINDINGS_BLANKCELLDELEGATE_H
#define VELMORA_APP_FINDINGS_BLANKCELLDELEGATE_H

#include <QStyledItemDelegate>

class QTableWidget;

/// Tints the cells of a table that nobody has filled yet, and shows the reason in their tooltips.
/// Such cells have no item, and get none, as that would run edit handlers. The delegate of the
/// table, which owns it.
class BlankCellDelegate : public QStyledItemDelegate
{
public:
    BlankCellDelegate(QTableWidget* watchedTable, const QString& findingOfBlanks);

    QString finding() const { return text; }

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    bool isBlank(const QModelIndex& index) const;

    QTableWidget* table;
    QString text;
};

#endif
