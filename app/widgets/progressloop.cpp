// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/widgets/progressloop.h"

#include "app/widgets/heldinput.h"

#include <QCoreApplication>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>

#include <limits>

namespace {

constexpr int appearsAfterMs = 500;
/// Where input waits already, a calculation that takes longer is aborted.
constexpr int notWorthMs = 50;
/// Between two looks at the abort button, which is not to seem dead.
constexpr RedrawThrottle::Pause pauseOfLooks{40, 33'000'000, 300'000'000};

} // namespace

ProgressLoop::ProgressLoop(QWidget* parentWidget, const QString& labelText,
                           const QString& abortButtonText, int maximumValue,
                           Construction construction)
    : parent(parentWidget)
    , label(labelText)
    , abortText(abortButtonText)
    , maximum(maximumValue)
    , window(parent->window())
    , windowWasVisible(window->isVisible())
    , looks(pauseOfLooks)
{
    if (construction == Construction::AtOnce) {
        constructDialog();
    }
    elapsed.start();
    if (const auto* mainWindow = qobject_cast<QMainWindow*>(window)) {
        statusBar = mainWindow->findChild<QStatusBar*>(QString(), Qt::FindDirectChildrenOnly);
    }
}

ProgressLoop::ProgressLoop(QWidget* parentWidget, const QString& labelText,
                           const QString& abortButtonText, int maximumValue,
                           HeldInput* inputOfWindow)
    : ProgressLoop(parentWidget, labelText, abortButtonText, maximumValue, Construction::WhenNeeded)
{
    input = inputOfWindow;
    input->hold();
}

ProgressLoop::~ProgressLoop()
{
    if (input != nullptr) {
        input->release();
    }
    if (statusBefore) {
        statusBar->showMessage(*statusBefore);
    }
}

void ProgressLoop::constructDialog()
{
    dialog.emplace(label, abortText, 0, maximum, parent);
    bar = dialog->findChild<QProgressBar*>();
    if (input == nullptr) {
        dialog->setWindowModality(Qt::WindowModal);
    } else {
        dialog->setAttribute(Qt::WA_ShowWithoutActivating);
        dialog->findChild<QPushButton*>()->setFocusPolicy(Qt::NoFocus);
    }
    dialog->setMinimumDuration(appearsAfterMs);
    // The dialog goes with its owner; resetting would forget that it was aborted.
    dialog->setAutoReset(false);
    dialog->setAutoClose(false);
    dialog->setValue(0);
}

void ProgressLoop::setLabel(const QString& text)
{
    label = text;
    if (dialog) {
        dialog->setLabelText(label);
    }
}

bool ProgressLoop::advance(int value)
{
    stepsDone = value;
    if (!dialog && value != maximum) {
        showWhenDue();
    }
    if (isVisible()) {
        // Not the dialog's own setValue(), which would process events at every step.
        bar->setValue(value);
        lookIfDue();
    } else if (dialog) {
        if (value == maximum) {
            // Not for the blink of an eye at the end.
            dialog->setMinimumDuration(std::numeric_limits<int>::max());
        }
        dialog->setValue(value); // shows the dialog when it is time
    }
    return !wasCanceled();
}

bool ProgressLoop::poll()
{
    showWhenDue();
    if (!isVisible()) {
        return true;
    }
    lookIfDue();
    givenUp = wasCanceled();
    return !givenUp;
}

void ProgressLoop::showWhenDue()
{
    if (isVisible() || wasCanceled()) {
        return;
    }
    const qint64 now = elapsed.elapsed();
    isOvertaken = input != nullptr && now >= notWorthMs && input->isWaiting();
    if (isOvertaken || now < appearsAfterMs) {
        return;
    }
    if (input != nullptr) {
        processEvents(); // what came in the meantime may spare the dialog
        if (isOvertaken) {
            return;
        }
    }
    if (!dialog) {
        constructDialog();
    }
    dialog->show();
    bar->setValue(stepsDone);
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
    processEvents();
    bar->setUpdatesEnabled(false);
    if (windowWasVisible && !window->isVisible()) {
        dialog->cancel(); // closed, as at the end of the desktop's session
    }
}

void ProgressLoop::processEvents()
{
    QCoreApplication::processEvents();
    isOvertaken = input != nullptr && input->isWaiting();
}

void ProgressLoop::tellRemainingTime()
{
    const qint64 now = elapsed.elapsed();
    remainingTime.update(stepsDone, now);
    const std::optional<qint64> remaining = remainingTime.at(now, maximum);
    if (statusBar == nullptr || !remaining) {
        return;
    }
    if (!statusBefore) {
        statusBefore = statusBar->currentMessage();
    }
    statusBar->showMessage(remainingTimeText(*remaining));
}
