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
    /// Finds the data, with nothing else set.
    explicit RunInputs(const BatchSettings& settings)
        : source(settings)
    {
    }

    DataSource source;
    Study study;    ///< with definitions that are up to date; tables are loaded later
    QString doses;  ///< as typed
    QString levels; ///< the same
    Bound lower;
    Bound upper;
    TruthInputs truth;
    QStringList reports; ///< endings of the reports that are wanted
    bool writesEndpoints = false;
    bool usesCache = false;
    quint32 randomPosition = 0; ///< before the first data set
    quint32 truthPosition = 0;  ///< before the first true model; 0 to follow the doses
    int processors = 0;         ///< that individuals are spread over
    BatchSettings used;         ///< every setting, as it is used
};

/// Reads what the settings name, but no data set, and sets the number of processors. What does
/// not fit ends the run.
RunInputs runInputs(const BatchSettings& settings);

/// Every setting of a study, as a run is asked for it, without where its data come from.
BatchSettings studySettings(const Study& study, const QString& doses, const QString& levels);

#endif
