// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_EXAMPLES_TOUR_STUDIES_H
#define VELMORA_EXAMPLES_TOUR_STUDIES_H

class QString;
class Tour;

/// One trial, five candidate models: from the import to the dose choice, by model averaging
/// and by model selection. Prints the chosen doses.
void playBiomarkerStudy(Tour& tour, const QString& dataFolder);

#endif
