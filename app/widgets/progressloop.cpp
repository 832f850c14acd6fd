// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/widgets/progressloop.h"

#include <QCoreApplication>
#include <QMainWindow>
#include <QProgressBar>
#include <QStatusBar>

#include <limits>

namespace {

constexpr int appearsAfterMs = 500;
constexpr qint64 shortestPauseNs = 33'000'000;
constexpr qint64 longestPauseNs = 300'000'000;

} // namespace

ProgressLoop::ProgressLoop(QWidget* parent, const QString& label, const QString& abortText,
                           int maximum)
    : dialog(label, abortText, 0, maximum, parent)
    , bar(dialog.findChild<QProgressBar*>())
    , window(parent->window())
    , windowWasVisible(window->isVisible())
{
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setMinimumDuration(appearsAfterMs);
    // The dialog goes with its owner; resetting would forget that it was aborted.
    dialog.setAutoReset(false);
    dialog.setAutoClose(false);
    dialog.setValue(0);
    elapsed.start();
    if (const auto* mainWindow = qobject_cast<QMainWindow*>(window)) {
        statusBar = mainWindow->findChild<QStatusBar*>(QString(), Qt::FindDirectChildrenOnly);
    }
}

ProgressLoop::~ProgressLoop()
{
    if (statusBefore) {
        statusBar->showMessage(*statusBefore);
    }
}

void ProgressLoop::setLabel(const QString& label)
{
    dialog.setLabelText(label);
}

bool ProgressLoop::advance(int value)
{
    stepsDone = value;
    if (dialog.isVisible()) {
        // Not the dialog's own setValue(), which would process events at every step.
        bar->setValue(value);
        look();
    } else {
        if (value == dialog.maximum()) {
            // Not for the blink of an eye at the end.
            dialog.setMinimumDuration(std::numeric_limits<int>::max());
        }
        dialog.setValue(value); // shows the dialog when it is time
    }
    return !dialog.wasCanceled();
}

bool ProgressLoop::poll()
{
    if (!dialog.isVisible() && !dialog.wasCanceled() && elapsed.elapsed() >= appearsAfterMs) {
        dialog.show();
    }
    if (!dialog.isVisible()) {
        return true;
    }
    look();
    givenUp = dialog.wasCanceled();
    return !givenUp;
}

/// Lets the window repaint and the abort button work, as often as eye and hand notice, and
/// so rarely that it takes a small part of the time however long painting takes.
void ProgressLoop::look()
{
    if (sinceLook.isValid() && sinceLook.nsecsElapsed() < pauseNs) {
        return;
    }
    QElapsedTimer duration;
    duration.start();
    tellRemainingTime();
    // Between two looks the bar would paint itself at every step.
    bar->setUpdatesEnabled(true);
    QCoreApplication::processEvents();
    bar->setUpdatesEnabled(false);
    if (windowWasVisible && !window->isVisible()) {
        dialog.cancel(); // closed, as at the end of the desktop's session
    }
    pauseNs = qBound(shortestPauseNs, 40 * duration.nsecsElapsed(), longestPauseNs);
    sinceLook.start();
}

void ProgressLoop::tellRemainingTime()
{
    const qint64 now = elapsed.elapsed();
    remainingTime.update(stepsDone, now);
    const std::optional<qint64> remaining = remainingTime.at(now, dialog.maximum());
    if (statusBar == nullptr || !remaining) {
        return;
    }
    if (!statusBefore) {
        statusBefore = statusBar->currentMessage();
    }
    statusBar->showMessage(remainingTimeText(*remaining));
}
