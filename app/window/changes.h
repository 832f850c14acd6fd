// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WINDOW_CHANGES_H
#define VELMORA_APP_WINDOW_CHANGES_H

/// What can happen to the state of the main window. A page only reports what happened;
/// mainwindow_changes.cpp decides what it touches.
enum class Change {
    ResultsCleared, ///< to make room for others
    ImportAborted,
    Imported,
    Opened,          ///< the results of a project; its other items follow
    OmegaRestored,   ///< of a model, from a project
    WeightsRestored, ///< the same of all models
    NoWeightsRestored,
    DosesRestored, ///< that the project has chosen
    ProjectLoaded, ///< with all of its items
    OfvColumn,
    Theta1Column,
    ShownModel,    ///< on page "0"
    ShownDataSet,  ///< the same
    SelectedModel, ///< on page "1"
    Doses,
    Endpoint,  ///< of a model
    Omega,     ///< of the selected model
    OmegaCell, ///< another one became current
    Population,
    DefaultWeights,
    Weight, ///< of a model
    WeightScale,
    WeightsDataSet,
    Interval,
    Choices, ///< method, OFV use or data set of page "3"
    Levels,
    Simulations, ///< simulation models or true model numbers
    Calculated,
    Cache, ///< its use or its content
    PageTurned,
    Palette ///< of the desktop
};

/// What a change can touch. All from Omega on waits while the items of a project are applied;
/// all from CheckUp on is about findings.
enum class View {
    HistogramRanges, ///< are chosen again with the next values
    Models,          ///< selectors, rows and names
    ModelNames,
    WeightTables, ///< rows and columns for all models
    ResultsTable,
    ResultsHistogram,
    ColumnLabels,
    TypicalCurve,
    DrawlessCurve, ///< the typical curve; cleared where it would draw random numbers
    Weights,
    WeightsIfShown,
    DoseSlider,
    DoseHistogram,
    Omega, ///< of the selected model
    CheckUp,
    ShownCheckUp, ///< of the model shown
    ColumnNames,
    EndpointFinding, ///< of a model
    WeightFinding,   ///< the same
    WeightFindings,
    FormulaFindings,
    OmegaFindings,
    Marks, ///< of stale results, and all other findings on buttons and results
    AllInputs,
    CacheMark
};

#endif
