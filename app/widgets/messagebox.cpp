// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/widgets/messagebox.h"

#include <QMessageBox>

void showMessage(QWidget* widget, const QString& text)
{
    QMessageBox box(widget->window());
    box.setText(text);
    box.exec();
}
