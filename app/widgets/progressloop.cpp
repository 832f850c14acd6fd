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
/// Between two looks at the abort button, which is not to seem dead.
constexpr RedrawThrottle::Pause pauseOfLooks{40, 33'000'000, 300'000'000};

} // namespace

ProgressLoop::ProgressLoop(QWidget* parent, const QString& label, const QString& abortText,
                           int maximum)
    : dialog(label, abortText, 0, maximum, parent)
    , bar(dialog.findChild<QProgressBar*>())
    , window(parent->window())
    , windowWasVisible(window->isVisible())
    , looks(pauseOfLooks)
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
        lookIfDue();
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
    lookIfDue();
    givenUp = dialog.wasCanceled();
    return !givenUp;
}

void ProgressLoop::lookIfDue()
{
    if (looks.isDue()) {
        looks.run([this] { look(); });
    }
}

/// Lets the window repaint and the abort button work.
void ProgressLoop::look()
{
    tellRemainingTime();
    // Between two looks the bar would paint itself at every step.
    bar->setUpdatesEnabled(true);
    QCoreApplication::processEvents();
    bar->setUpdatesEnabled(false);
    if (windowWasVisible && !window->isVisible()) {
        dialog.cancel(); // closed, as at the end of the desktop's session
    }
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
