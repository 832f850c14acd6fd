// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/projectstudy.h"

#include "analysis/numberlist.h"

#include <algorithm>
#include <iterator>

namespace {

/// The size of the largest leading square block that the rows hold.
template <typename T>
int squareSize(const QVector<QVector<T>>& matrix)
{
    int size = 0;
    int shortestRow = matrix.isEmpty() ? 0 : matrix.first().size();
    while (size < matrix.size()) {
        shortestRow = qMin(shortestRow, matrix.at(size).size());
        if (shortestRow <= size) {
            break;
        }
        ++size;
    }
    return size;
}

template <typename T>
void copySquare(const QVector<QVector<T>>& source, QVector<QVector<T>>& target)
{
    const int size = qMin(squareSize(source), target.size());
    for (int row = 0; row < size; ++row) {
        std::copy_n(source.at(row).begin(), size, target[row].begin());
    }
}

/// Takes a covariance matrix and its column references over, cut or filled up to squares
/// of equal size that hold every ETA of the expression.
void adoptOmega(endPoint& definition, const QVector<QVector<double>>& omega,
                const QVector<QVector<int>>& omegaColumns)
{
    const int size = std::max({squareSize(omega), squareSize(omegaColumns), definition.highestEta});
    definition.resizeOmega(0);
    definition.resizeOmega(qMin(size, highestEtaNumber));
    copySquare(omega, definition.omega);
    copySquare(omegaColumns, definition.omegaColumns);
}

void applyEndPoints(Study& study, const DecodedProject& project)
{
    const ProjectItems& items = project.items;
    for (int model = 0; model < qMin(items.endPointExpressions.size(), study.endPoints.size());
         ++model) {
        endPoint& definition = study.endPoints[model];
        definition.endPointParser.expression = items.endPointExpressions.at(model);
        definition.checkETA();
        if (project.completeItems >= 6) {
            adoptOmega(definition, items.omegas.value(model), items.omegaColumns.value(model));
        }
        definition.numSimulations = study.individuals;
    }
    const int summary = items.populationSummary;
    if (project.completeItems >= 7 && summary >= 0
        && summary < int(std::size(populationSummaries))) {
        study.populationSummary = populationSummaries[summary];
    }
    if (project.completeItems >= 7) {
        for (endPoint& definition : study.endPoints) {
            definition.populationSummary = study.populationSummary;
        }
    }
}

void applyChoices(ProjectStudy& target, const DecodedProject& project)
{
    const ProjectItems& items = project.items;
    Study& study = target.study;
    const auto choose = [](bool& choice, int index) {
        choice = index == 0 || index == 1 ? index == 1 : choice;
    };
    if (project.completeItems >= 9) {
        study.logScale = items.logScale;
    }
    if (project.completeItems >= 10) {
        choose(study.selecting, items.averageOrSelection);
    }
    if (project.completeItems >= 11) {
        choose(study.individualOfv, items.oneOrIndividualOfv);
    }
    if (project.completeItems >= 12) {
        target.lowerBound = storedBound(items.lowerBound, lowerSubstitute);
    }
    if (project.completeItems >= 13) {
        target.upperBound = storedBound(items.upperBound, upperSubstitute);
    }
    study.target = {target.lowerBound.value, target.upperBound.value};
    if (project.completeItems >= 15) {
        study.levels = parseNumberList(items.doseChoiceLabels.join(","));
    }
}

} // namespace

ProjectStudy appliedProject(const ProjectStudy& before, const DecodedProject& project)
{
    ProjectStudy applied = before;
    Study& study = applied.study;
    const ProjectItems& items = project.items;
    study.rawResults = items.rawResults;
    study.fingerprint = 0;
    if (project.completeItems >= 2 || project.endsInsideItem) {
        study.rawResultsHeaders = items.rawResultsHeaders;
        study.headings.clear();
    }
    if (!study.rawResults.isEmpty()) {
        defineModels(study, numberedModelNames(study.rawResults.size()));
    }
    if (project.completeItems >= 3) {
        study.doses = parseNumberList(items.possibleDoses);
    }
    applyEndPoints(study, project);
    if (project.completeItems >= 8) {
        const int count = qMin(items.weightExpressions.size(), study.endPoints.size());
        for (int model = 0; model < count; ++model) {
            study.endPoints[model].weightParser.expression = items.weightExpressions.at(model);
        }
    }
    applyChoices(applied, project);
    return applied;
}
