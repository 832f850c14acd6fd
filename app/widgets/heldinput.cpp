// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/widgets/heldinput.h"

#include "compat/qtversions.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QShortcutEvent>
#include <QTimerEvent>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace {

/// nullptr for anything that is not input.
std::unique_ptr<QEvent> copyOfInput(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return copyAs<QKeyEvent>(event);
    case QEvent::InputMethod:
        return copyAs<QInputMethodEvent>(event);
    case QEvent::Shortcut:
        return copyAs<QShortcutEvent>(event);
    case QEvent::Wheel:
        return copyAs<QWheelEvent>(event);
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        return copyAs<QMouseEvent>(event);
    default:
        return nullptr;
    }
}

bool isModifier(int key)
{
    return key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock;
}

/// Whether it is input with which the user goes on.
bool isAct(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::KeyPress:
        return !isModifier(static_cast<const QKeyEvent&>(event).key());
    case QEvent::InputMethod:
        return !static_cast<const QInputMethodEvent&>(event).commitString().isEmpty();
    case QEvent::KeyRelease:
    case QEvent::MouseButtonRelease:
        return false;
    default:
        return true;
    }
}

bool isKey(const QEvent& event)
{
    return event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease
           || event.type() == QEvent::InputMethod;
}

bool isMouseButton(QEvent::Type type)
{
    return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease
           || type == QEvent::MouseButtonDblClick;
}

/// Input that would act on the window, but need not be repeated later.
bool isRefused(QEvent::Type type)
{
    return type == QEvent::ContextMenu || type == QEvent::DragEnter || type == QEvent::DragMove
           || type == QEvent::Drop;
}

/// Qt itself does so for clicks that come from outside.
void giveFocus(QWidget* clicked)
{
    for (QWidget* widget = clicked; widget != nullptr; widget = widget->parentWidget()) {
        if (widget->isEnabled() && (widget->focusPolicy() & Qt::ClickFocus) != 0) {
            widget->setFocus(Qt::MouseFocusReason);
            return;
        }
    }
}

} // namespace

HeldInput::HeldInput(QWidget* watchedWindow)
    : QObject(watchedWindow)
    , window(watchedWindow)
{
}

HeldInput::~HeldInput() = default;

void HeldInput::hold()
{
    isHolding = true;
    qApp->installEventFilter(this);
}

void HeldInput::release()
{
    isHolding = false;
    if (queue.empty()) {
        qApp->removeEventFilter(this);
    } else if (!isDelivering) {
        // Until then the filter stays, so that nothing overtakes what is held.
        startTimer(0);
    }
}

bool HeldInput::isWaiting() const
{
    return std::any_of(queue.begin(), queue.end(),
                       [](const Held& held) { return isAct(*held.event); });
}

bool HeldInput::eventFilter(QObject* watched, QEvent* event)
{
    const bool passes = isDelivering && !isHolding;
    // A window of the platform passes its events on to a widget.
    if (passes || watched->isWindowType()) {
        return false;
    }
    const bool inWindow = isOfWindow(watched);
    if (event->type() == QEvent::Timer) {
        // A spin box whose button is held down steps by its timer.
        return inWindow && qobject_cast<QAbstractSpinBox*>(watched) != nullptr;
    }
    if (isRefused(event->type()) && inWindow) {
        event->ignore();
        return true;
    }
    std::unique_ptr<QEvent> copy = copyOfInput(*event);
    const bool isForDialog =
        !inWindow && (isMouseButton(event->type()) || event->type() == QEvent::Shortcut);
    if (copy == nullptr || isForDialog) {
        return false;
    }
    // A click that is held may move the keyboard before a key is delivered.
    const bool followsKeyboard = !inWindow || (isKey(*copy) && watched == window->focusWidget());
    queue.push_back({followsKeyboard ? nullptr : watched, std::move(copy)});
    event->accept();
    return true;
}

/// Whether it is a part of the window, or an action of one.
bool HeldInput::isOfWindow(const QObject* object) const
{
    while (object != nullptr && !object->isWidgetType()) {
        object = object->parent();
    }
    return object != nullptr && static_cast<const QWidget*>(object)->window() == window;
}

void HeldInput::timerEvent(QTimerEvent* event)
{
    killTimer(event->timerId());
    deliver();
}

void HeldInput::deliver()
{
    if (isHolding || isDelivering) {
        return;
    }
    isDelivering = true;
    while (!queue.empty()) {
        const Held held = std::move(queue.front());
        queue.pop_front();
        QObject* receiver = held.receiver;
        if (receiver == nullptr) {
            receiver = window->focusWidget() != nullptr ? window->focusWidget() : window;
        }
        if (held.event->type() == QEvent::MouseButtonPress && receiver->isWidgetType()) {
            giveFocus(static_cast<QWidget*>(receiver));
        }
        QCoreApplication::sendEvent(receiver, held.event.get());
    }
    isDelivering = false;
    qApp->removeEventFilter(this);
}
