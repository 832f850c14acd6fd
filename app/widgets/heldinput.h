// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WIDGETS_HELDINPUT_H
#define VELMORA_APP_WIDGETS_HELDINPUT_H

#include <QObject>
#include <QPointer>

#include <deque>
#include <memory>

class QEvent;
class QWidget;

/// Holds what a user does to a window while the handler of an earlier input calculates.
///
/// Such a calculation processes events, so that its progress dialog works. Keys, wheel steps and
/// clicks must not reach the window then, where their handlers would run within the first one. They
/// are delivered in their order once it has returned; keys and wheel steps that reached the dialog
/// go to the widget that has the keyboard in the window.
class HeldInput : public QObject
{
public:
    explicit HeldInput(QWidget* watchedWindow);
    ~HeldInput() override;

    /// Holds input from now until it is released.
    void hold();
    void release();

    /// Whether input is held with which the user goes on. The release of a key or button does not
    /// count, nor does a modifier key.
    bool isWaiting() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    struct Held
    {
        QPointer<QObject> receiver; ///< none for the widget that has the keyboard
        std::unique_ptr<QEvent> event;
    };
    bool isOfWindow(const QObject* object) const;
    void deliver();

    QWidget* window;
    std::deque<Held> queue;
    bool isHolding = false;
    bool isDelivering = false;
};

#endif
