// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WIDGETS_MEMORY_H
#define VELMORA_APP_WIDGETS_MEMORY_H

#include <QtGlobal>

#include <functional>

class QWidget;

/// Does what may take much memory. Where there is not enough it ends halfway, by
/// std::bad_alloc, and the user is told.
void whileMemoryLasts(QWidget* widget, const std::function<void()>& act);

/// Throws std::bad_alloc unless so many bytes are free, and some more. To be asked before Qt
/// draws, as that does not survive the lack of a small piece.
void demandMemory(qint64 bytes);

/// Throws it unless something was done that only a lack of memory can prevent.
void demandDone(bool isDone);

#endif
