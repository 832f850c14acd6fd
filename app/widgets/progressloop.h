// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WIDGETS_PROGRESSLOOP_H
#define VELMORA_APP_WIDGETS_PROGRESSLOOP_H

#include "app/widgets/redrawthrottle.h"
#include "app/widgets/remainingtime.h"

#include <QElapsedTimer>
#include <QProgressDialog>

#include <optional>

class HeldInput;
class QProgressBar;
class QStatusBar;

/// The progress dialog of a long loop in a slot, modal to its window. It appears when the loop
/// takes, or is about to take, more than half a second. While it is hidden no events are processed,
/// so that no other slot can run inside the loop. While it is shown the window's status bar shows
/// about how long the rest takes.
class ProgressLoop
{
public:
    /// When the dialog is constructed, which is before it is shown.
    enum class Construction {
        AtOnce,
        WhenNeeded ///< after half a second, so that short loops never have one
    };

    ProgressLoop(QWidget* parentWidget, const QString& labelText, const QString& abortButtonText,
                 int maximumValue, Construction construction = Construction::AtOnce);

    /// For a calculation that is not worth waiting for: any input to the window aborts it. The
    /// input is held, and delivered after the loop. The dialog is not modal, as the window would
    /// get no input then, and leaves the keyboard to the window.
    ProgressLoop(QWidget* parentWidget, const QString& labelText, const QString& abortButtonText,
                 int maximumValue, HeldInput* inputOfWindow);
    ~ProgressLoop();
    Q_DISABLE_COPY(ProgressLoop)

    void setLabel(const QString& text);

    /// Shows the value and looks for a press of the abort button.
    /// False once the user has aborted.
    bool advance(int value);

    /// Looks for a press of the abort button within a step. False if the user has pressed it, so
    /// that the step is to be aborted.
    bool poll();

    /// Whether poll() has aborted a step.
    bool isGivenUp() const { return givenUp; }

private:
    void lookIfDue();
    void constructDialog();
    void showWhenDue();
    bool isVisible() const { return dialog && dialog->isVisible(); }
    bool wasCanceled() const { return isOvertaken || (dialog && dialog->wasCanceled()); }
    void look();
    void processEvents();
    void tellRemainingTime();

    QWidget* parent;
    QString label;
    QString abortText;
    int maximum;
    HeldInput* input = nullptr; ///< that aborts the calculation, if any
    std::optional<QProgressDialog> dialog;
    QProgressBar* bar = nullptr; ///< the dialog's own
    QWidget* window;
    bool windowWasVisible;
    QElapsedTimer elapsed;
    RedrawThrottle looks;
    bool givenUp = false;
    bool isOvertaken = false; ///< by input
    int stepsDone = 0;
    RemainingTime remainingTime;
    QStatusBar* statusBar = nullptr;     ///< of the window, if it has one
    std::optional<QString> statusBefore; ///< text of the status bar before the loop's
};

#endif
