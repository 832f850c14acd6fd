// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/userinput.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QTableWidget>
#include <QTest>
#include <QToolBox>

namespace user {

namespace {

void require(bool condition, const QWidget* widget, const char* problem)
{
    if (!condition) {
        qFatal("%s %s", qPrintable(widget->objectName()), problem);
    }
}

/// Nothing else gives the keyboard back after a dialog when there is no window manager.
void reach(const QWidget* widget)
{
    require(widget->isVisible() && widget->isEnabled(), widget, "is hidden or disabled");
    QApplication::setActiveWindow(widget->window());
}

/// Types over the selected text; checks that run while one types see no empty text between.
void replaceText(QWidget* editor, const QString& text)
{
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty()) {
        QTest::keyClick(editor, Qt::Key_Delete);
    }
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
}

} // namespace

void show(QWidget& window)
{
    window.show();
    reach(&window);
    require(QTest::qWaitForWindowExposed(&window), &window, "does not appear");
}

void showPage(const QWidget& window, int page)
{
    const auto* toolBox = widget<QToolBox>(window, "__mainToolBox");
    const auto buttons = toolBox->findChildren<QAbstractButton*>("qt_toolbox_toolboxbutton",
                                                                 Qt::FindDirectChildrenOnly);
    click(buttons.value(page));
    require(toolBox->currentIndex() == page, toolBox, "does not open the page");
}

void click(QAbstractButton* button)
{
    reach(button);
    // A check box reacts at its mark and text only, not in the empty room to the right.
    const QPoint mark(8, button->height() / 2);
    const bool isCheckBox = qobject_cast<QCheckBox*>(button);
    QTest::mouseClick(button, Qt::LeftButton, {}, isCheckBox ? mark : button->rect().center());
}

void typeText(QWidget* editor, const QString& text)
{
    reach(editor);
    editor->setFocus(Qt::MouseFocusReason);
    replaceText(editor, text);
}

QPoint clickCell(QTableWidget* table, int row, int column)
{
    reach(table);
    const QModelIndex cell = table->model()->index(row, column);
    require(cell.isValid(), table, "has no such cell");
    table->scrollTo(cell);
    const QPoint place = table->visualRect(cell).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place);
    return place;
}

void editCell(QTableWidget* table, int row, int column, const QString& text)
{
    const QPoint place = clickCell(table, row, column);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
    const QPointer<QLineEdit> editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    require(table->isAncestorOf(editor), table, "does not let the cell be edited");
    replaceText(editor, text);
    require(QTest::qWaitFor([&editor] { return !editor; }), table, "keeps the editor open");
}

void chooseItem(QComboBox* box, int index)
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

} // namespace user
