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

/// Plays a study on the window as a user would, and saves what the window shows in a folder.
/// A step that fails ends the program with a message.
class Tour
{
public:
    explicit Tour(const QString& outputFolder);

    /// True if someone can watch; without a display nobody can.
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

    /// Gives a spectator time to see the last step.
    void pause() const;

    /// Ends the program if a step did not have its expected effect.
    void require(bool condition, const QString& problem) const;

    /// Pauses, then saves a picture of the window as <name>.png.
    void savePicture(const QString& name);

    /// Saves a picture of the window while the mouse rests on a column of a table's first row,
    /// with the tooltip.
    void savePictureOfTip(const QString& name, const char* table, int column);

    /// Saves a table as shown, with its headings, as <name>.csv. Headings must have no comma.
    void saveTable(const QString& name, const char* table) const;

    /// The content of that file: a line of column headings, then the rows with their headings.
    QString tableText(const char* table) const;

    /// Saves a chart's curves, all over the same abscissas, with full precision as <name>.csv.
    void saveCurves(const QString& name, const char* plot, const QString& heading) const;

    /// Saves the endpoint values behind a curve or behind the doses as <name>.csv.
    void saveEndpoints(const QString& name, const char* source);

    /// Saves the report of the analysis as <name> with each possible ending.
    void saveReports(const QString& name);

    /// Saves what an entry in the menu of a table or chart copies, as <name>.txt.
    void saveCopied(const QString& name, const char* source, const QString& entry) const;

    /// Saves the analysis as a project file.
    void saveProject(const QString& path);

private:
    void save(const QString& name, const char* source, const QString& entry);
    void writeFile(const QString& name, const QString& content) const;

    MainWindow m_window;
    QDir m_output;
    bool m_watched;
};

#endif
