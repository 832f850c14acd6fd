// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_STUDYWINDOW_H
#define VELMORA_BENCH_STUDYWINDOW_H

#include "app/window/mainwindow.h"
#include "io/projectfile.h"
#include "tests/support/userinput.h"

#include <QPushButton>

enum Page { ImportPage, ResultsPage, EndpointPage, WeightPage, ProbabilityPage, DosePage };

/// A shown window, operated by mouse and keys.
class StudyWindow
{
public:
    StudyWindow();

    /// Opens the study with the menu, from a temporary file.
    explicit StudyWindow(const ProjectItems& study);

    MainWindow& window() { return shown; }

    template <typename T>
    T* widget(const char* name) const
    {
        return user::widget<T>(shown, name);
    }

    void showPage(Page page) { user::showPage(shown, page); }

    /// Clicks a button on the page that is open.
    void press(const char* button) { user::click(widget<QPushButton>(button)); }

    /// The values of a chart's first curve.
    QVector<double> curve(const char* plot) const;

private:
    MainWindow shown;
};

/// Ends the program with the message if a study could not be set up.
void require(bool condition, const char* problem);

#endif
