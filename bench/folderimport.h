// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_FOLDERIMPORT_H
#define VELMORA_BENCH_FOLDERIMPORT_H

#include "bench/stopwatch.h"
#include "bench/study.h"
#include "bench/studywindow.h"
#include "tests/support/studyfiles.h"

/// The name of a raw_results file in a folder with many data sets.
QString folderFileName(int model, int dataSet);

/// Writes bootstrap results of InputColumnCount columns. All models of a data set have the same,
/// so that their rows belong together, and so have five data sets.
void writeFolder(const StudyFiles& files, const StudySize& size);

/// Turns a window to the page that imports folders.
void showFolderImport(StudyWindow& window);

/// Imports the folder by the button of that page. A stopwatch, if there is one, goes on when the
/// folder is chosen, until when it has to be paused.
void importFolder(StudyWindow& window, const StudyFiles& files, const StudySize& size,
                  Stopwatch* watch = nullptr);

#endif
