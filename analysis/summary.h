// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_SUMMARY_H
#define VELMORA_ANALYSIS_SUMMARY_H

#include "analysis/truth.h"
#include "model/tables.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// What a report tells about one candidate model.
struct ModelSummary
{
    QString name;
    QString file; ///< name without folder, with * for the number of the data set; may be empty
    QVector<int> sampleCounts; ///< [dataSet]
    QString endpointExpression;
    QString weightExpression;
    QVector<QStringList> omega; ///< [row][column], as typed; empty without ETAs
};

/// An analysis as a report tells it: what was chosen, and what came out. Results that were
/// not calculated are empty.
struct AnalysisSummary
{
    QString program; ///< name and version
    QString qtVersion;
    QString directory; ///< as shown to the user
    int colNumOFV = 0; ///< 1-based
    int colNumTHETA1 = 0;
    QVector<ModelSummary> models;
    QVector<double> doses;
    QString populationSummary;
    int individuals = 0;
    TargetInterval target{0.0, 0.0};
    bool logScale = false;
    QString method;         ///< averaging or selection, as the user chooses it
    QString ofvUse;         ///< one or individual OFV, the same
    QVector<double> levels; ///< of the dose selection, in percent

    int weightsDataSet = 0;
    Table relativeWeights;       ///< [sample][model], of that data set
    QVector<int> selectedModels; ///< [sample], of that data set; -1 for none
    QString probabilityName;     ///< what the curve was calculated for
    QVector<double> probabilityDoses;
    QVector<double> probability;         ///< in percent, per entry of probabilityDoses
    Table doseChoice;                    ///< [dataSet][level]
    QString doseChoiceOrigin;            ///< by which choices it was made
    QVector<LevelComparison> comparison; ///< [level], of the following
    QVector<double> comparedLevels;      ///< in percent; the doses may have others since
};

/// The summary as lines of plain text; the cells of its tables are separated by tabs.
/// Typed numbers have all their digits, calculated ones six.
QString summaryText(const AnalysisSummary& summary);

#endif
