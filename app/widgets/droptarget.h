// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WIDGETS_DROPTARGET_H
#define VELMORA_APP_WIDGETS_DROPTARGET_H

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <functional>

class QDropEvent;
class QWidget;

enum class DroppedKind {
    Unknown,
    ResultFiles, ///< one or more text files whose first line has a comma
    Folder,      ///< a single one
    Project      ///< a single file
};

/// The kind of the paths together, judged by the start of the files.
DroppedKind droppedKind(const QStringList& paths);

/// Lets a widget and the editors on it accept dropped files; refuses files of unknown kinds, and
/// everything while a dialog is open. Owned by the widget.
class DropTarget : public QObject
{
public:
    using Take = std::function<void(DroppedKind kind, const QStringList& paths)>;

    /// take is called after the drop is over, so that the source need not wait.
    DropTarget(QWidget* widget, Take takeFiles);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool judge(QDropEvent* event);
    void takeDropped();

    Take take;
    DroppedKind offered = DroppedKind::Unknown; ///< of the files that are being dragged
    QStringList dropped;
    QTimer afterDrop;
};

#endif
