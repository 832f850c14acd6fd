// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_EXAMPLES_TOUR_STUDIES_H
#define VELMORA_EXAMPLES_TOUR_STUDIES_H

class QString;
class Tour;

/// One trial, five candidate models: from the import to the dose choice, by model averaging
/// and by model selection, and how firm it is; then saved as a project. Prints the
/// chosen doses.
void playBiomarkerStudy(Tour& tour, const QString& dataFolder, const QString& projectPath);

/// Twenty simulated trials, three candidate models: doses for all of them, compared with the
/// theoretical MEDs by a file and by the true models; then saved as a project and opened
/// again in a second window. Prints whether the theoretical MEDs agree, and the summary.
void playSimulationStudy(Tour& tour, const QString& dataFolder, const QString& projectPath);

#endif
