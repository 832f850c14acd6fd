// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WIDGETS_PROGRESSLOOP_H
#define VELMORA_APP_WIDGETS_PROGRESSLOOP_H

#include "app/widgets/redrawthrottle.h"
#include "app/widgets/remainingtime.h"

#include <QElapsedTimer>
#include <QProgressDialog>

#include <optional>

class QProgressBar;
class QStatusBar;

/// The progress dialog of a long loop in a slot, modal to its window.
/// It appears when the loop takes, or is about to take, more than half a second. While it
/// is hidden no events are processed, so that no other slot can run inside the loop. While
/// it is shown the window's status bar tells about how long the rest takes.
class ProgressLoop
{
public:
    ProgressLoop(QWidget* parent, const QString& label, const QString& abortText, int maximum);
    ~ProgressLoop();
    Q_DISABLE_COPY(ProgressLoop)

    void setLabel(const QString& label);

    /// Shows the value and looks for a press of the abort button.
    /// False once the user has aborted.
    bool advance(int value);

    /// Looks for a press of the abort button within a step. False if the user has pressed
    /// it, so that the step is to be given up.
    bool poll();

    /// Whether poll() has told to give a step up.
    bool isGivenUp() const { return givenUp; }

private:
    void lookIfDue();
    void look();
    void tellRemainingTime();

    QProgressDialog dialog;
    QProgressBar* bar; ///< the dialog's own
    QWidget* window;
    bool windowWasVisible;
    QElapsedTimer elapsed;
    RedrawThrottle looks;
    bool givenUp = false;
    int stepsDone = 0;
    RemainingTime remainingTime;
    QStatusBar* statusBar = nullptr;     ///< of the window, if it has one
    std::optional<QString> statusBefore; ///< what the status bar said until the loop spoke
};

#endif
