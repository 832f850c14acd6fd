// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_USERINPUT_H
#define VELMORA_TESTS_SUPPORT_USERINPUT_H

#include <QTest>
#include <QtWidgets>

/// Acts on a window as a user does: with mouse and keys, on what is visible. What a user
/// could not do (press a hidden button, edit a cell that is not there) ends the program
/// with a message.
namespace user {

inline void require(bool condition, const QWidget* widget, const char* problem)
{
    if (!condition) {
        qFatal("%s %s", qPrintable(widget->objectName()), problem);
    }
}

/// The widget of that kind and object name in the window. Ends the program if there is none.
template <typename T>
T* widget(const QWidget& window, const char* name)
{
    T* found = window.findChild<T*>(name);
    require(found, &window, name);
    return found;
}

/// Gives the keyboard back after a dialog; without a window manager nothing else does.
inline void reach(const QWidget* widget)
{
    require(widget->isVisible() && widget->isEnabled(), widget, "is hidden or disabled");
    QApplication::setActiveWindow(widget->window());
}

/// Types over the selected text and presses Return. Checks that run during typing never see an
/// empty text.
inline void replaceText(QWidget* editor, const QString& text)
{
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty()) {
        QTest::keyClick(editor, Qt::Key_Delete);
    }
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
}

/// Shows the window and gives it the keyboard.
inline void show(QWidget& window)
{
    window.show();
    reach(&window);
    require(QTest::qWaitForWindowExposed(&window), &window, "does not appear");
}

/// Clicks a button or a check box.
inline void click(QAbstractButton* button)
{
    reach(button);
    // A check box reacts only at its mark and text, not in the empty room to the right.
    const int x = qobject_cast<QCheckBox*>(button) ? 8 : button->width() / 2;
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(x, button->height() / 2));
}

/// Turns the window's tool box to a page (0 is the first) with the page's button.
inline void showPage(const QWidget& window, int page)
{
    const auto* toolBox = widget<QToolBox>(window, "__mainToolBox");
    const auto buttons = toolBox->findChildren<QAbstractButton*>("qt_toolbox_toolboxbutton",
                                                                 Qt::FindDirectChildrenOnly);
    click(buttons.value(page));
    require(toolBox->currentIndex() == page, toolBox, "does not open the page");
}

/// Turns a tab widget to a page of it.
inline void showTab(const QTabWidget* tabs, int page)
{
    QTabBar* bar = tabs->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(page).center());
    require(tabs->currentIndex() == page, tabs, "does not open the tab");
}

/// Replaces the text of a line edit or spin box and presses Return; an empty text clears it.
inline void typeText(QWidget* editor, const QString& text)
{
    reach(editor);
    editor->setFocus(Qt::MouseFocusReason);
    replaceText(editor, text);
}

/// Clicks a cell, after scrolling to it if necessary. Returns the place in the viewport.
inline QPoint clickCell(QTableWidget* table, int row, int column)
{
    reach(table);
    const QModelIndex cell = table->model()->index(row, column);
    require(cell.isValid(), table, "has no such cell");
    table->scrollTo(cell);
    const QPoint place = table->visualRect(cell).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place);
    return place;
}

/// Double-clicks a cell, replaces its text and presses Return.
inline void editCell(QTableWidget* table, int row, int column, const QString& text)
{
    const QPoint place = clickCell(table, row, column);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
    const QPointer<QLineEdit> editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    require(table->isAncestorOf(editor), table, "does not let the cell be edited");
    replaceText(editor, text);
    require(QTest::qWaitFor([&editor] { return !editor; }), table, "keeps the editor open");
}

/// Opens the list of a combo box and picks an item.
inline void chooseItem(QComboBox* box, int index)
{
    reach(box);
    box->setFocus(Qt::MouseFocusReason);
    QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(box->view(), Qt::Key_Home);
    for (int step = 0; step < index; ++step) {
        QTest::keyClick(box->view(), Qt::Key_Down);
    }
    QTest::keyClick(box->view(), Qt::Key_Return);
    require(box->currentIndex() == index, box, "does not take the item");
}

/// Hovers over a place of a widget, where a tooltip may appear.
inline void rest(QWidget* widget, const QPoint& place)
{
    QHelpEvent help(QEvent::ToolTip, place, widget->mapToGlobal(place));
    QApplication::sendEvent(widget, &help);
}

/// Clicks a chart or the current cell of a table with the right button and chooses an entry
/// of the menu that opens.
inline void chooseEntry(QWidget* widget, const QString& text)
{
    reach(widget);
    const auto* table = qobject_cast<QTableWidget*>(widget);
    QWidget* area = table ? table->viewport() : widget;
    const QPoint place =
        table ? table->visualRect(table->currentIndex()).center() : area->rect().center();
    QTest::mouseClick(area, Qt::RightButton, {}, place);
    QContextMenuEvent request(QContextMenuEvent::Mouse, place, area->mapToGlobal(place));
    QApplication::sendEvent(area, &request);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    require(menu, widget, "has no menu");
    for (QAction* action : menu->actions()) {
        if (action->text() == text && action->isEnabled()) {
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            QCoreApplication::processEvents(); // closes the menu
            reach(widget);
            return;
        }
    }
    require(false, widget, qPrintable("does not offer " + text));
}

} // namespace user

#endif
