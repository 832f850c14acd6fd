// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/widgets/memory.h"

#include "app/widgets/messagebox.h"

#include <new>

namespace {

const char notEnoughMemoryText[] = "There is not enough memory.";

/// For dialogs and letters, in bytes.
constexpr qint64 smallThings = 8 << 20;

} // namespace

void whileMemoryLasts(QWidget* widget, const std::function<void()>& act)
{
    try {
        demandMemory(0);
        act();
        return;
    } catch (const std::bad_alloc&) {
        // What it held is free by now, so that there is room for the message.
    }
    showMessage(widget, notEnoughMemoryText);
}

void demandMemory(qint64 bytes)
{
    ::operator delete(::operator new(std::size_t(bytes + smallThings)));
}

void demandDone(bool isDone)
{
    if (!isDone) {
        qBadAlloc();
    }
}
