// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_INPUTS_H
#define VELMORA_BATCH_INPUTS_H

#include "analysis/projectstudy.h"
#include "batch/datasource.h"
#include "batch/truthinputs.h"

/// Everything that a run works with.
struct RunInputs
{
    /// Finds the data and sets nothing else.
    explicit RunInputs(const BatchSettings& settings)
        : source(settings)
    {
    }

    DataSource source;
    Study study;    ///< with definitions that are up to date; tables are loaded later
    QString doses;  ///< as typed
    QString levels; ///< as typed
    Bound lower;
    Bound upper;
    TruthInputs truth;
    QStringList reports; ///< endings of the reports to write
    bool writesEndpoints = false;
    bool usesCache = false;
    quint32 randomPosition = 0; ///< before the first data set
    quint32 truthPosition = 0;  ///< before the first true model; 0: where the doses end
    int processors = 0;         ///< processors that share the individuals
    BatchSettings used;         ///< all settings as used
};

/// Reads what the settings name, except data sets, and sets the number of processors. Settings
/// that do not fit end the run.
RunInputs runInputs(const BatchSettings& settings);

/// All settings of a study as a run takes them, except the source of its data.
BatchSettings studySettings(const Study& study, const QString& doses, const QString& levels);

#endif
