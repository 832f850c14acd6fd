// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/progressloop.h"

#include <QCoreApplication>

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
    dialog.setValue(value);
    return poll();
}

bool ProgressLoop::poll()
{
    if (dialog.wasCanceled()) {
        return false;
    }
    if (!dialog.isVisible() && elapsed.elapsed() >= appearsAfterMs) {
        dialog.show();
    }
    if (dialog.isVisible()) {
        QCoreApplication::processEvents();
    }
    return !dialog.wasCanceled();
}
