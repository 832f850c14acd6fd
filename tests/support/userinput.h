// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_USERINPUT_H
#define VELMORA_TESTS_SUPPORT_USERINPUT_H

#include <QWidget>

class QAbstractButton;
class QComboBox;
class QTableWidget;

/// Acts on a window as a user does: with mouse and keys, on what is visible. What a user
/// could not do (press a hidden button, edit a cell that is not there) ends the program
/// with a message.
namespace user {

/// The widget of that kind and object name below the window; ends the program without one.
template <typename T>
T* widget(const QWidget& window, const char* name)
{
    T* found = window.findChild<T*>(name);
    if (!found) {
        qFatal("no %s named %s", T::staticMetaObject.className(), name);
    }
    return found;
}

/// Shows the window and gives it the keyboard.
void show(QWidget& window);

/// Turns the window's tool box to a page (0 is its first) by the page's button.
void showPage(const QWidget& window, int page);

/// Clicks a button or a check box.
void click(QAbstractButton* button);

/// Replaces the text of a line edit or spin box and presses Return; an empty text clears it.
void typeText(QWidget* editor, const QString& text);

/// Clicks a cell, scrolling to it where needed; gives the place in the viewport.
QPoint clickCell(QTableWidget* table, int row, int column);

/// Double-clicks a cell, replaces its text and presses Return.
void editCell(QTableWidget* table, int row, int column, const QString& text);

/// Opens the list of a combo box and picks an item.
void chooseItem(QComboBox* box, int index);

} // namespace user

#endif
