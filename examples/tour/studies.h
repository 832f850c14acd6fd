// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_EXAMPLES_TOUR_STUDIES_H
#define VELMORA_EXAMPLES_TOUR_STUDIES_H

class QString;
class Tour;

/// One trial, five candidate models: from the import to the doses, by model averaging and by
/// model selection, and how certain they are. Then saves the project. Prints the doses.
void playBiomarkerStudy(Tour& tour, const QString& dataFolder, const QString& projectPath);

/// Twenty simulated trials, three candidate models: doses for all of them, compared with
/// theoretical MEDs from a file and from the true models. Then saves the project and opens it
/// in a second window. Prints whether the theoretical MEDs agree, and the summary.
void playSimulationStudy(Tour& tour, const QString& dataFolder, const QString& projectPath);

#endif
