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

/// The context menu of a table or chart that exports its content. Owned by that widget. The name of
/// an action is action<What> and the widget's own name.
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

    /// Sets whether there is something that the entry can work on; called when the menu opens.
    void setCondition(QAction* entry, const std::function<bool()>& isPossible);

    /// The same with the reason why there is nothing, which the entry's tooltip shows; empty if
    /// there is something.
    void setObstacle(QAction* entry, const std::function<QString()>& obstacle);

protected:
    /// Opens the menu at a right click, also on a part of the widget, or the menu key. Shows why an
    /// entry of the menu is disabled.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* owner;
    QMenu* menu;
};

/// Puts text on the clipboard.
void copyText(const QString& text);

/// Asks where to save and proposes a name, whose suffix is added to a name without one. Writes what
/// content then returns, if anything. Shows a message if the file cannot be written.
void saveAs(QWidget* widget, const QString& title, const QString& offeredName,
            const std::function<std::optional<QByteArray>()>& content);

/// The same for content that is written a part at a time: write returns false if the user aborts,
/// which leaves an older file as it was.
void saveAs(QWidget* widget, const QString& title, const QString& offeredName,
            const std::function<bool(QIODevice& file)>& write);

/// The same for a file that may have one of several suffixes, the offered name's among them;
/// content receives the chosen one in small letters. With any other suffix a message appears and
/// nothing is written.
void saveAs(QWidget* widget, const QString& title, const QString& offeredName,
            const QStringList& suffixes,
            const std::function<std::optional<QByteArray>(const QString& suffix)>& content);

#endif
