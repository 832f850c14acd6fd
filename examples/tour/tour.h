// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_EXAMPLES_TOUR_TOUR_H
#define VELMORA_EXAMPLES_TOUR_TOUR_H

#include "app/window/mainwindow.h"
#include "tests/support/userinput.h"

#include <QDir>

enum Page {
    ImportPage,
    ResultsPage,
    EndpointPage,
    WeightPage,
    ProbabilityPage,
    DosePage,
    TruthPage
};

/// Items of the combo boxes on the probability page.
enum Choice { ModelAverage, ModelSelection };
enum ObjectiveFunctionValue { OneOfvPerModel, IndividualOfv };

/// The window on which a study is played as a user would, and the folder that keeps what
/// the window shows. A step that goes wrong ends the program with a message.
class Tour
{
public:
    explicit Tour(const QString& outputFolder);

    /// Whether someone can watch; without a display nobody can.
    bool isWatched() const { return m_watched; }

    MainWindow& window() { return m_window; }

    QString outputFolder() const { return m_output.path(); }

    template <typename T>
    T* widget(const char* name) const
    {
        return user::widget<T>(m_window, name);
    }

    /// Opens a page of the tool box.
    void showPage(Page page);

    /// Leaves a spectator the time to see the last step.
    void pause() const;

    /// Ends the program if a step did not have its effect.
    void require(bool condition, const QString& problem) const;

    /// The window as it looks now, as <name>.png; a pause comes first.
    void savePicture(const QString& name);

    /// A table as shown, with its headings, as <name>.csv; headings hold no comma.
    void saveTable(const QString& name, const char* table) const;

    /// The content of that file: a line of column headings, then the rows with theirs.
    QString tableText(const char* table) const;

    /// A chart's curves, all over the same abscissas, with full precision as <name>.csv.
    void saveCurves(const QString& name, const char* plot, const QString& heading) const;

    /// The endpoint values behind a curve or behind the doses as <name>.csv.
    void saveEndpoints(const QString& name, const char* source);

    /// The report of the analysis as <name> with each ending that it can have.
    void saveReports(const QString& name);

    /// What an entry in the menu of a table or chart copies, as <name>.txt.
    void saveCopied(const QString& name, const char* source, const QString& entry) const;

    /// The analysis as a project file.
    void saveProject(const QString& path);

private:
    void save(const QString& name, const char* source, const QString& entry);
    void writeFile(const QString& name, const QString& content) const;

    MainWindow m_window;
    QDir m_output;
    bool m_watched;
};

#endif
