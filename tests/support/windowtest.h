// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_WINDOWTEST_H
#define VELMORA_TESTS_SUPPORT_WINDOWTEST_H

#include "app/window/mainwindow.h"
#include "tests/support/compare.h"
#include "tests/support/dialogdriver.h"
#include "tests/support/rows.h"
#include "tests/support/studyfiles.h"
#include "tests/support/userinput.h"

#include <QtTest>
#include <qcustomplot.h>

#include <memory>

/// Inputs and buttons that many tests use.
const char endpoints[] = "_1_tw_endPoints";
const char omega[] = "_1_tw_etaDefinition";
const char weights[] = "_2_tw_weightDefinition";
const char toCurve[] = "_3_pb_calculatePoS";
const char toDoses[] = "_4_pb_startCalculation";
const char toTruth[] = "_4_pb_compTruth";

/// The text of the message box when there are no results.
const char notFound[] =
    "raw results file cannot be found in this folder, check the namr format definition.";
/// The text when simulation models have other columns.
const char otherHeaders[] = "Some of the headers for the raw_results files for the simulation "
                            "models do not match with the estimation models.  Please double check.";

/// Base of tests that act on a main window as a user does.
class WindowTest : public QObject
{
protected:
    void openWindow()
    {
        window = std::make_unique<MainWindow>();
        user::show(*window);
    }

    template <typename T>
    T* the(const char* name) const
    {
        return user::widget<T>(*window, name);
    }

    /// The same after turning to the page and tab that the widget is on.
    template <typename T>
    T* reach(const char* name) const
    {
        T* found = the<T>(name);
        const auto* toolBox = the<QToolBox>("__mainToolBox");
        const auto* tabs = the<QTabWidget>("tabWidget");
        int tab = -1;
        for (QWidget* parent = found; parent != nullptr; parent = parent->parentWidget()) {
            const int page = toolBox->indexOf(parent);
            if (page >= 0 && page != toolBox->currentIndex()) {
                user::showPage(*window, page);
            }
            tab = qMax(tab, tabs->indexOf(parent));
        }
        if (tab >= 0) {
            user::showTab(tabs, tab);
        }
        return found;
    }

    void type(const char* editor, const QString& text)
    {
        user::typeText(reach<QWidget>(editor), text);
    }
    void edit(const char* table, int row, int column, const QString& text)
    {
        user::editCell(reach<QTableWidget>(table), row, column, text);
    }
    void choose(const char* box, int index) { user::chooseItem(reach<QComboBox>(box), index); }
    void press(const char* button) { user::click(reach<QAbstractButton>(button)); }

    /// Empties a field with a key and types, without Return.
    void retype(const char* field, const QString& keys)
    {
        auto* editor = reach<QWidget>(field);
        editor->setFocus(Qt::MouseFocusReason);
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(editor, Qt::Key_Delete);
        QTest::keyClicks(editor, keys);
    }

    /// Changes an input: types a text, chooses an item by its number, presses a box, or edits
    /// column 0 of a table, in the row that follows a blank.
    void set(const QString& input, const QString& value)
    {
        const QByteArray name = input.section(' ', 0, 0).toLatin1();
        auto* widget = reach<QWidget>(name);
        if (qobject_cast<QTableWidget*>(widget)) {
            edit(name, input.section(' ', 1).toInt(), 0, value);
        } else if (qobject_cast<QComboBox*>(widget)) {
            choose(name, value.toInt());
        } else if (qobject_cast<QCheckBox*>(widget)) {
            press(name);
        } else {
            type(name, value);
        }
    }

    /// The text that an entry of a widget's menu copies.
    QString copied(const char* widget, const QString& entry)
    {
        user::chooseEntry(reach<QWidget>(widget), entry);
        return QApplication::clipboard()->text();
    }

    /// Presses a button. The file dialog that follows takes the paths; a message box after it
    /// must have the text, if given; a progress dialog is aborted at the value, if given.
    void pressAndAnswer(const char* button, const QStringList& paths, const QString& message = {},
                        int abortValue = -1)
    {
        DialogDriver dialogs;
        dialogs.answerFiles(paths);
        dialogs.abortProgressAt(abortValue);
        if (!message.isEmpty()) {
            dialogs.acknowledge(message);
        }
        press(button);
    }

    /// Presses Ctrl and the key. The file dialog takes the path; the boxes after it must have the
    /// texts.
    void pressShortcut(Qt::Key key, const QString& path, const QStringList& messages = {})
    {
        user::show(*window);
        DialogDriver dialogs;
        dialogs.answerFiles({path});
        for (const QString& message : messages) {
            dialogs.acknowledge(message);
        }
        QTest::keyClick(window.get(), key, Qt::ControlModifier);
    }

    /// Saves the project and returns the content of its file.
    QByteArray save()
    {
        QFile::remove(files.path("project")); // avoids the question whether to replace it
        pressShortcut(Qt::Key_S, files.path("project"));
        return contentOf(files.path("project"));
    }
    void open(const QStringList& messages = {})
    {
        pressShortcut(Qt::Key_O, files.path("project"), messages);
    }

    /// Imports a folder with a file for every data set.
    void importStudy(const RawResults& results)
    {
        const StudyFiles folder;
        for (int model = 0; model < results.size(); ++model) {
            for (int dataSet = 0; dataSet < results.at(model).size(); ++dataSet) {
                folder.writeRawResults(
                    QString("raw_results_estimation_model%1_data%2.csv").arg(model).arg(dataSet),
                    results.at(model).at(dataSet));
            }
        }
        pressAndAnswer("__pb_import", {folder.path()});
    }

    /// Defines the endpoints of two models, then the doses, and visits the weights on the way.
    void define(const char* endpoint0, const char* endpoint1, const char* doses, const char* lower)
    {
        edit(endpoints, 0, 0, endpoint0);
        edit(endpoints, 1, 0, endpoint1);
        type("_1_le_possibleDoses", doses);
        reach<QWidget>(weights);
        type("_3_le_lowerBound", lower);
        type("_3_le_upperBound", "");
    }

    /// Two models with two data sets; model 1 has the higher weight in the second sample.
    void importPairs()
    {
        importStudy(
            {{{{2, 1 / 3.0}, {2, 2}}, {{9, 1}, {9, 2}}}, {{{4, 1}, {0, 1}}, {{1, 0}, {1, 1}}}});
    }

    /// Calculates a curve and doses of these models, by averaging or by selection.
    void calculateDoses(int method)
    {
        importPairs();
        define("THETA1*DOSE", "THETA1+DOSE", "0,0.1,2", "1.05");
        choose("_3_cb_aveORselect", method);
        press(toCurve);
        type("_4_le_probabilities", "40,60");
        press(toDoses);
    }
    void compareWithTruth(const QByteArray& meds = "0,0.05\n1,-1\n")
    {
        pressAndAnswer(toTruth, {files.write("true_meds.csv", meds)});
    }

    /// The texts of a table, row by row, with blanks between cells.
    QStringList rows(const char* table) const
    {
        QStringList texts;
        const QAbstractItemModel* cells = the<QTableWidget>(table)->model();
        for (int i = 0; i < cells->rowCount() * cells->columnCount(); ++i) {
            const int column = i % cells->columnCount();
            const QString text = cells->index(i / cells->columnCount(), column).data().toString();
            column == 0 ? texts.append(text) : void(texts.last() += ' ' + text);
        }
        return texts;
    }
    QString cell(const char* table, int row, int column) const
    {
        return the<QTableWidget>(table)->model()->index(row, column).data().toString();
    }

    QString tip(const char* widget) const { return the<QWidget>(widget)->toolTip(); }
    QString status() const { return the<QStatusBar>("statusBar")->currentMessage(); }

    QVector<double> curve(const char* plot, int graph = 0) const
    {
        QVector<double> values;
        for (const QCPGraphData& point : *the<QCustomPlot>(plot)->graph(graph)->data()) {
            values.append(point.value);
        }
        return values;
    }

    const StudyFiles files{};
    std::unique_ptr<MainWindow> window;
};

#endif
