// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_WINDOWTEST_H
#define VELMORA_TESTS_SUPPORT_WINDOWTEST_H

#include "app/mainwindow.h"
#include "tests/support/compare.h"
#include "tests/support/dialogdriver.h"
#include "tests/support/studyfiles.h"
#include "tests/support/userinput.h"

#include <QtTest>
#include <qcustomplot.h>

#include <memory>

enum Page {
    ImportPage,
    ResultsPage,
    EndpointPage,
    WeightPage,
    ProbabilityPage,
    DosePage,
    TruthPage
};

/// Base of the tests that act on a main window as a user does.
class WindowTest : public QObject
{
protected:
    void openWindow()
    {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        window = std::make_unique<MainWindow>();
        user::show(*window);
    }

    template <typename T>
    T* the(const char* name) const
    {
        return user::widget<T>(*window, name);
    }

    /// The text of a table's cell, null without an item.
    QString cell(const char* table, int row, int column) const
    {
        const QTableWidgetItem* item = the<QTableWidget>(table)->item(row, column);
        return item != nullptr ? item->text() : QString();
    }

    QVector<double> curve(const char* plot, int graph = 0) const
    {
        QVector<double> values;
        for (const QCPGraphData& point : *the<QCustomPlot>(plot)->graph(graph)->data()) {
            values.append(point.value);
        }
        return values;
    }

    /// Presses a button on a page; the file dialog that follows takes the paths, the
    /// message box after it, if any, is to have the text, and a progress dialog is aborted
    /// at the value, if any.
    void pressAndAnswer(Page page, const char* button, const QStringList& paths,
                        const QString& message = {}, int tab = 0, int abortValue = -1)
    {
        DialogDriver dialogs;
        dialogs.answerFiles(paths);
        dialogs.abortProgressAt(abortValue);
        if (!message.isEmpty()) {
            dialogs.acknowledge(message);
        }
        user::showPage(*window, page);
        the<QTabWidget>("tabWidget")->setCurrentIndex(tab);
        user::click(the<QPushButton>(button));
    }

    std::unique_ptr<MainWindow> window;
};

#endif
