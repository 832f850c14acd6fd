// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_CHAPTERS_H
#define VELMORA_REPORT_CHAPTERS_H

#include "report/content.h"

// The chapters of a report, each in a file of its own.

/// The result of one data set as chapters tell it: doses of page "4" with the probability behind
/// them, or the curve of page "3".
struct ReportedResult
{
    QString name; ///< "doses of data set 0", "curve of data set 0"
    int dataSet = 0;
    Study made; ///< inputs of the result; its levels are those that doses are told for
    QVector<double> probability; ///< in percent, [dose]; empty where it is not known
    QVector<double> errors;      ///< Monte Carlo errors, [dose]; empty where they are not known
    QVector<double> meds;        ///< [level]; NaN for none
    Evaluation evaluation;
    QVector<DoseStability> stability; ///< [level]; empty where it is not known
    Circumstances before;
};

/// The results that can be told of one data set, the one that decides first: of the doses and of
/// the curve, or one for both where they agree. None if it is given up.
std::optional<QVector<ReportedResult>> reportedResults(const ReportInputs& inputs,
                                                       const GoesOn& goesOn);

/// What chapters are made from.
struct ReportContext
{
    const ReportInputs& inputs;
    const QVector<ReportedResult>& results;
    const GoesOn& goesOn;

    /// Whether doses were selected for several data sets.
    bool isSimulation() const { return inputs.results.selection.doses.size() > 1; }
};

// Each adds a chapter; false if it is given up.
bool addDecision(ReportDocument& document, const ReportContext& context);
void addProbability(ReportDocument& document, const ReportContext& context);
void addDoseResponse(ReportDocument& document, const ReportContext& context);
void addModels(ReportDocument& document, const ReportContext& context);
void addSensitivity(ReportDocument& document, const ReportContext& context);
void addData(ReportDocument& document, const ReportContext& context);
void addSimulations(ReportDocument& document, const ReportContext& context);
void addMethods(ReportDocument& document, const ReportContext& context);

/// A dose with all its digits, "none" for NaN.
QString doseText(double dose);

/// "80 %".
QString levelText(double level);

/// So many letters, r for numbers, behind one l for texts.
QByteArray textThenNumbers(int numbers);

/// "data set 3".
QString dataSetText(int dataSet);

/// "Data: 5 models, 1 data set, 1001 samples each."; empty without any.
QString extent(const ReportContext& context);

/// The name of a model, with its number where others look the same; the number alone where it has
/// none.
QString modelName(const QVector<endPoint>& models, int model);

#endif
