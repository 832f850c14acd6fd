// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WIDGETS_MEMORY_H
#define VELMORA_APP_WIDGETS_MEMORY_H

#include <QtGlobal>

#include <functional>

class QWidget;

/// Runs something that may take much memory. If memory is not enough, it ends with std::bad_alloc
/// and a message appears.
void whileMemoryLasts(QWidget* widget, const std::function<void()>& act);

/// Throws std::bad_alloc unless this many bytes and some more are free. To be called before Qt
/// draws, as Qt does not survive a lack of memory there.
void demandMemory(qint64 bytes);

/// Throws std::bad_alloc unless something was done that only a lack of memory can prevent.
void demandDone(bool isDone);

#endif
