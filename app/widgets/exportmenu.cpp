// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/widgets/exportmenu.h"

#include "app/widgets/memory.h"
#include "app/widgets/messagebox.h"
#include "io/safefile.h"

#include <QAbstractScrollArea>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHelpEvent>
#include <QMenu>
#include <QToolTip>

namespace {

const char writeFailedText[] = "The file could not be written.";

const char suffixText[] = "The name of the file has to end with %1.";

/// Empty if the user wants none.
QString chosenFile(QWidget* widget, const QString& title, const QString& offeredName,
                   const QStringList& suffixes)
{
    QFileDialog dialog(widget->window(), title, QString(), "*." + suffixes.join(" *."));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QFileInfo(offeredName).suffix());
    dialog.selectFile(offeredName);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace

ExportMenu::ExportMenu(QWidget* widget)
    : QObject(widget)
    , owner(widget)
    , menu(new QMenu(widget))
{
    owner->installEventFilter(this);
    menu->installEventFilter(this);
    if (const auto* area = qobject_cast<QAbstractScrollArea*>(owner)) {
        area->viewport()->installEventFilter(this);
    }
}

QAction* ExportMenu::addEntry(const QString& name, const QString& text,
                              const std::function<void()>& act, const QList<QKeySequence>& keys)
{
    auto* action = new QAction(text, owner);
    action->setObjectName("action" + name + owner->objectName());
    action->setShortcuts(keys);
    // An editor in a cell keeps the keys for itself.
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, [this, act] { whileMemoryLasts(owner, act); });
    owner->addAction(action);
    menu->addAction(action);
    return action;
}

void ExportMenu::addEntry(QAction* shared)
{
    menu->addAction(shared);
}

void ExportMenu::addSeparator()
{
    menu->addSeparator();
}

void ExportMenu::setCondition(QAction* entry, const std::function<bool()>& isPossible)
{
    connect(menu, &QMenu::aboutToShow, entry,
            [entry, isPossible] { entry->setEnabled(isPossible()); });
}

void ExportMenu::setObstacle(QAction* entry, const std::function<QString()>& obstacle)
{
    connect(menu, &QMenu::aboutToShow, entry, [entry, obstacle] {
        const QString found = obstacle();
        entry->setEnabled(found.isEmpty());
        entry->setToolTip(found);
    });
}

bool ExportMenu::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == menu && event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QAction* entry = menu->actionAt(help->pos());
        if (entry != nullptr && !entry->isEnabled() && !entry->isSeparator()) {
            // Without a text of its own an entry's tooltip is its name.
            QToolTip::showText(help->globalPos(),
                               entry->toolTip() == entry->text() ? QString() : entry->toolTip(),
                               menu);
        }
        return true;
    }
    if (event->type() != QEvent::ContextMenu) {
        return QObject::eventFilter(watched, event);
    }
    menu->popup(static_cast<QContextMenuEvent*>(event)->globalPos());
    event->accept();
    return true;
}

void copyText(const QString& text)
{
    QApplication::clipboard()->setText(text);
}

void saveAs(QWidget* widget, const QString& title, const QString& offeredName,
            const std::function<std::optional<QByteArray>()>& content)
{
    saveAs(widget, title, offeredName, {}, [&content](const QString&) { return content(); });
}

void saveAs(QWidget* widget, const QString& title, const QString& offeredName,
            const QStringList& suffixes,
            const std::function<std::optional<QByteArray>(const QString& suffix)>& content)
{
    // The dialog is gone before the content takes its memory.
    const QString path =
        chosenFile(widget, title, offeredName,
                   suffixes.isEmpty() ? QStringList(QFileInfo(offeredName).suffix()) : suffixes);
    if (path.isEmpty()) {
        return;
    }
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (!suffixes.isEmpty() && !suffixes.contains(suffix)) {
        showMessage(widget, QString(suffixText).arg('.' + suffixes.join(" or .")));
        return;
    }
    const std::optional<QByteArray> bytes = content(suffix);
    if (bytes && !writeFile(path, *bytes)) {
        showMessage(widget, writeFailedText);
    }
}

void saveAs(QWidget* widget, const QString& title, const QString& offeredName,
            const std::function<bool(QIODevice& file)>& write)
{
    const QString path = chosenFile(widget, title, offeredName, {QFileInfo(offeredName).suffix()});
    if (path.isEmpty()) {
        return;
    }
    SafeFile file(path);
    const bool isOpen = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    if (isOpen && !write(file)) {
        return;
    }
    if (!isOpen || !file.commit()) {
        showMessage(widget, writeFailedText);
    }
}
