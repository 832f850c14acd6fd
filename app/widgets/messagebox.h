// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WIDGETS_MESSAGEBOX_H
#define VELMORA_APP_WIDGETS_MESSAGEBOX_H

#include <QString>

class QWidget;

/// Shows the text in a box that is modal to the widget's window; returns when it is closed.
void showMessage(QWidget* widget, const QString& text);

#endif
