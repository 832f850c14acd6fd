// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WIDGETS_EXPORTMENU_H
#define VELMORA_APP_WIDGETS_EXPORTMENU_H

#include "io/csvexport.h"

#include <QKeySequence>
#include <QList>
#include <QObject>

#include <functional>
#include <optional>

class QAction;
class QIODevice;
class QMenu;
class QWidget;

/// The context menu of a table or chart, by which its content leaves the program. Owned by
/// that widget. An action is called action<What> with the widget's own name behind.
class ExportMenu : public QObject
{
public:
    explicit ExportMenu(QWidget* widget);

    /// Adds an entry. Pressing one of the keys while the widget has the keyboard does the same.
    QAction* addEntry(const QString& name, const QString& text, const std::function<void()>& act,
                      const QList<QKeySequence>& keys = {});

    /// Adds an entry that other menus share.
    void addEntry(QAction* shared);

    void addSeparator();

    /// Whether there is something that the entry can work on; asked when the menu opens.
    void setCondition(QAction* entry, const std::function<bool()>& isPossible);

    /// The same with why there is nothing, which the entry's tooltip tells; empty if there is
    /// something.
    void setObstacle(QAction* entry, const std::function<QString()>& obstacle);

protected:
    /// Opens the menu at a right click, also on a part of the widget, or the menu key. Tells why
    /// an entry of the menu is disabled.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* owner;
    QMenu* menu;
};

/// Puts text on the clipboard.
void copyText(const QString& text);

/// Asks where to save, offering a name whose suffix is also given to a name without one, and
/// writes what content gives then, if anything. Tells the user if the file cannot be written.
void saveAs(QWidget* widget, const QString& title, const QString& offeredName,
            const std::function<std::optional<QByteArray>()>& content);

/// The same for content that is written a part at a time: write gives false where the user gives
/// it up, which leaves an older file as it was.
void saveAs(QWidget* widget, const QString& title, const QString& offeredName,
            const std::function<bool(QIODevice& file)>& write);

/// The same for a file that may have one of several suffixes, the offered name's among them;
/// content is told in small letters which. Another one the user is told, and nothing is written.
void saveAs(QWidget* widget, const QString& title, const QString& offeredName,
            const QStringList& suffixes,
            const std::function<std::optional<QByteArray>(const QString& suffix)>& content);

#endif
