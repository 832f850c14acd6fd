// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/study.h"

#include "analysis/weights.h"
#include "bench/inputs.h"

namespace {

const QStringList etaExpressions{
    "THETA1+ETA1+(THETA2+ETA2)*DOSE/THETA3",
    "THETA1+ETA1+(THETA2+ETA2)*DOSE/(THETA3+DOSE)",
    "THETA1+ETA1+(THETA2+ETA2)*DOSE^THETA4/(THETA3^THETA4+DOSE^THETA4)",
    "THETA1+ETA1+(THETA2+ETA2)*(1-exp((0-DOSE)/THETA3))",
};

const QStringList typicalExpressions{
    "THETA1+THETA2*DOSE/THETA3",
    "THETA1+THETA2*DOSE/(THETA3+DOSE)",
    "THETA1+THETA2*DOSE^THETA4/(THETA3^THETA4+DOSE^THETA4)",
    "THETA1+THETA2*(1-exp((0-DOSE)/THETA3))",
};

QStringList header()
{
    QStringList names;
    for (int column = 1; column <= InputColumnCount; ++column) {
        names.append(QString("column%1").arg(column));
    }
    return names;
}

} // namespace

ProjectItems makeStudy(const StudySize& size, Variability variability)
{
    const bool hasEtas = variability == Variability::TwoEtas;
    ProjectItems study;
    study.possibleDoses = "0:10:100";
    study.logScale = true;
    study.oneOrIndividualOfv = 1;
    study.lowerBound = QString::number(target.lower);
    study.upperBound = QString::number(target.upper);
    study.doseChoiceLabels = QStringList{"50", "60", "70", "80", "90"};
    InputNumbers numbers;
    for (int model = 0; model < size.models; ++model) {
        QVector<Table> dataSets;
        for (int dataSet = 0; dataSet < size.dataSets; ++dataSet) {
            dataSets.append(bootstrapTable(numbers, size.samples));
        }
        study.rawResults.append(dataSets);
        study.rawResultsHeaders.append(header());
        study.endPointExpressions.append((hasEtas ? etaExpressions : typicalExpressions).at(model));
        study.weightExpressions.append("(0-3-ofv/2)");
        study.omegas.append(Table(hasEtas ? 2 : 0, QVector<double>(2, 0.0)));
        study.omegaColumns.append(hasEtas
                                      ? QVector<QVector<int>>{{OmegaColumn, OmegaColumn + 1},
                                                              {OmegaColumn + 1, OmegaColumn + 2}}
                                      : QVector<QVector<int>>());
    }
    return study;
}

QVector<endPoint> definitionsOf(const ProjectItems& study)
{
    QVector<endPoint> definitions;
    for (int model = 0; model < study.endPointExpressions.size(); ++model) {
        endPoint definition;
        definition.endPointParser.expression = study.endPointExpressions.at(model);
        definition.weightParser.expression = study.weightExpressions.at(model);
        definition.numSimulations = simulationCount;
        definition.bringUpToDate(doses);
        definition.resizeOmega(study.omegas.at(model).size());
        definition.omegaColumns = study.omegaColumns.at(model);
        definitions.append(definition);
    }
    return definitions;
}

Study inputsOf(const QVector<endPoint>& endPoints, const RawResults& rawResults)
{
    Study study;
    study.endPoints = endPoints;
    study.rawResults = rawResults;
    return study;
}

Table weightsOf(const QVector<endPoint>& endPoints, const RawResults& rawResults)
{
    return relativeWeights(weightValues(inputsOf(endPoints, rawResults), 0),
                           rawResults.constFirst().constFirst().size(), true);
}

Curve computeCurve(const QVector<endPoint>& endPoints, const RawResults& rawResults,
                   const Table& weights, bool individualWeights)
{
    EndpointRun run(inputsOf(endPoints, rawResults), 0,
                    averagingPlan(weights, individualWeights, endPoints.size()));
    for (int sample = 0; sample < run.sampleCount(); ++sample) {
        run.evaluateNext();
    }
    return {run.endpoints(), probabilityByAveraging(run.endpoints(), weights, individualWeights,
                                                    doses.size(), target)};
}
