// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WINDOW_SOURCES_H
#define VELMORA_APP_WINDOW_SOURCES_H

#include "analysis/checkup/textorigins.h"
#include "io/numberedfiles.h"
#include "io/sourcefile.h"

#include <QStringList>
#include <QVector>

/// The source of the bootstrap results.
struct ResultsSource
{
    QString place; ///< the folder or the project
    /// Names of the files, without folders and with * for the number of the data set,
    /// [model]; empty after Open.
    QStringList files;
    /// The files as they were read, [model][dataSet], without path where a data set repeats the
    /// one before; the project alone after Open.
    QVector<QVector<SourceFile>> read;
    /// Names of the files that could not be read to their end, [model]; may be short.
    QVector<QStringList> unread;
    FileGap gap;              ///< in the numbers of the data sets of a folder
    bool namesModels = false; ///< whether models are named after their files
    /// Whether the number of individuals is from before a project was opened, which does not keep
    /// it.
    bool individualsAreOlder = false;
};

/// The source of the simulation models' results.
struct SimulationSource
{
    QStringList files;        ///< names without folders
    QVector<SourceFile> read; ///< as they were read
    QStringList unread;       ///< those that could not be read to their end
    quint64 fingerprint = 0;  ///< of the bootstrap results then; 0 if there were none
};

/// The models for which texts were typed or placed.
struct TextSources
{
    TextOrigins endpoints;
    TextOrigins weights;
    QStringList placedWeights; ///< default weights placed by the program, [model]; may be short

    void placed(int model, const QString& weight)
    {
        while (placedWeights.size() <= model) {
            placedWeights.append(QString());
        }
        placedWeights[model] = weight;
    }

    void resized(int modelCount)
    {
        endpoints.resized(modelCount);
        weights.resized(modelCount);
        placedWeights = placedWeights.mid(0, modelCount);
    }
};

#endif
