// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/progressloop.h"

#include <QCoreApplication>

#include <limits>

namespace {

constexpr int appearsAfterMs = 500;

} // namespace

ProgressLoop::ProgressLoop(QWidget* parent, const QString& label, const QString& abortText,
                           int maximum)
    : dialog(label, abortText, 0, maximum, parent)
{
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setMinimumDuration(appearsAfterMs);
    // The dialog goes with its owner; resetting would forget that it was aborted.
    dialog.setAutoReset(false);
    dialog.setAutoClose(false);
    dialog.setValue(0);
    elapsed.start();
}

void ProgressLoop::setLabel(const QString& label)
{
    dialog.setLabelText(label);
}

bool ProgressLoop::advance(int value)
{
    if (value == dialog.maximum()) {
        // Not for the blink of an eye at the end.
        dialog.setMinimumDuration(std::numeric_limits<int>::max());
    }
    // Processes events itself, once the dialog is shown.
    dialog.setValue(value);
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
    QCoreApplication::processEvents();
    return !dialog.wasCanceled();
}
