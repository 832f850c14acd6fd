// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_CHAPTERS_H
#define VELMORA_REPORT_CHAPTERS_H

#include "report/content.h"

// The chapters of a report, each in a file of its own.

/// The result of one data set as the chapters show it: the doses of page "4" with their
/// probability, or the curve of page "3".
struct ReportedResult
{
    QString name; ///< "doses of data set 0", "curve of data set 0"
    int dataSet = 0;
    Study made;                  ///< inputs of the result; its levels are those that have doses
    QVector<double> probability; ///< in percent, [dose]; empty if not known
    QVector<double> errors;      ///< Monte Carlo errors, [dose]; empty if not known
    QVector<double> meds;        ///< [level]; NaN for none
    Evaluation evaluation;
    QVector<DoseStability> stability; ///< [level]; empty if not known
    Circumstances before;
};

/// The results of one data set, the deciding one first: the doses and the curve, or one result
/// for both if they agree. None if aborted.
std::optional<QVector<ReportedResult>> reportedResults(const ReportInputs& inputs,
                                                       const GoesOn& goesOn);

/// What the chapters are made from.
struct ReportContext
{
    const ReportInputs& inputs;
    const QVector<ReportedResult>& results;
    const GoesOn& goesOn;

    /// True if doses were selected for several data sets.
    bool isSimulation() const { return inputs.results.selection.doses.size() > 1; }
};

// Each function adds a chapter. addDecision returns false if aborted.
bool addDecision(ReportDocument& document, const ReportContext& context);
void addProbability(ReportDocument& document, const ReportContext& context);
void addDoseResponse(ReportDocument& document, const ReportContext& context);
void addModels(ReportDocument& document, const ReportContext& context);
void addSensitivity(ReportDocument& document, const ReportContext& context);
void addData(ReportDocument& document, const ReportContext& context);
void addSimulations(ReportDocument& document, const ReportContext& context);
void addMethods(ReportDocument& document, const ReportContext& context);

/// A dose with all its digits; "none" for NaN.
QString doseText(double dose);

/// "80 %".
QString levelText(double level);

/// The alignment of a table: one l for texts, then as many r as there are columns of numbers.
QByteArray textThenNumbers(int numbers);

/// "data set 3".
QString dataSetText(int dataSet);

/// "Data: 5 models, 1 data set, 1001 samples each.", and where their endpoints are; empty without
/// data.
QString extent(const ReportContext& context);

/// The name of a model, with its number if other names look the same; the number alone if it has
/// no name.
QString modelName(const QVector<endPoint>& models, int model);

#endif
