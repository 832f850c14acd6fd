// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/widgets/droptarget.h"

#include "io/projectfile.h"

#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace {

/// Bytes read of each file; a heading is longer only in files of thousands of columns.
constexpr int judgedSize = 1 << 16;

bool startsAsTable(const QByteArray& start)
{
    const QByteArray heading = start.mid(0, start.indexOf('\n')); // all without a line break
    return heading.contains(',')
           && std::none_of(heading.begin(), heading.end(), [](char character) {
                  return uchar(character) < ' ' && character != '\t' && character != '\r';
              });
}

DroppedKind fileKind(const QString& path)
{
    QFile file(path);
    // Opening a pipe would wait for its other end.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        return DroppedKind::Unknown;
    }
    const QByteArray start = file.read(judgedSize);
    if (startsAsProject(start, file.size())) {
        return DroppedKind::Project;
    }
    return startsAsTable(start) ? DroppedKind::ResultFiles : DroppedKind::Unknown;
}

/// Empty if any of the URLs is not a file of this computer.
QStringList localPaths(const QList<QUrl>& urls)
{
    QStringList paths;
    for (const QUrl& url : urls) {
        if (!url.isLocalFile()) {
            return {};
        }
        paths.append(QDir::cleanPath(url.toLocalFile()));
    }
    return paths;
}

bool isBusy()
{
    return QApplication::activeModalWidget() != nullptr;
}

} // namespace

DroppedKind droppedKind(const QStringList& paths)
{
    if (paths.size() == 1) {
        return QFileInfo(paths.first()).isDir() ? DroppedKind::Folder : fileKind(paths.first());
    }
    const bool areResults = std::all_of(paths.begin(), paths.end(), [](const QString& path) {
        return fileKind(path) == DroppedKind::ResultFiles;
    });
    return areResults && !paths.isEmpty() ? DroppedKind::ResultFiles : DroppedKind::Unknown;
}

DropTarget::DropTarget(QWidget* widget, Take takeFiles)
    : QObject(widget)
    , take(std::move(takeFiles))
{
    afterDrop.setSingleShot(true);
    connect(&afterDrop, &QTimer::timeout, this, &DropTarget::takeDropped);
    widget->setAcceptDrops(true);
    widget->installEventFilter(this);
    for (QWidget* part : widget->findChildren<QWidget*>()) {
        if (part->acceptDrops()) {
            part->installEventFilter(this); // an editor would take a file's path as text
        }
    }
}

bool DropTarget::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return judge(static_cast<QDropEvent*>(event));
    default:
        return QObject::eventFilter(watched, event);
    }
}

/// Accepts the files or refuses them; false for what is not about files.
bool DropTarget::judge(QDropEvent* event)
{
    if (!event->mimeData()->hasUrls()) {
        return false;
    }
    const QStringList paths = localPaths(event->mimeData()->urls());
    if (event->type() != QEvent::DragMove) {
        offered = droppedKind(paths); // once, not at every move
    }
    if (offered == DroppedKind::Unknown || isBusy()) {
        event->ignore();
        return true;
    }
    // Never a move, after which the source would delete the files.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (event->type() == QEvent::Drop) {
        dropped = paths;
        afterDrop.start(0);
    }
    return true;
}

void DropTarget::takeDropped()
{
    if (!isBusy()) {
        take(droppedKind(dropped), dropped);
    }
}
