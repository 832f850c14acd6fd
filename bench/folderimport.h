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

/// Writes bootstrap results of InputColumnCount columns. All models of a data set have the same
/// results, so that their rows belong together. Five data sets in a row share theirs, too.
void writeFolder(const StudyFiles& files, const StudySize& size);

/// Shows the page that imports folders.
void showFolderImport(StudyWindow& window);

/// Imports the folder with the button of that page. A stopwatch must be paused before; it resumes
/// when the folder is chosen.
void importFolder(StudyWindow& window, const StudyFiles& files, const StudySize& size,
                  Stopwatch* watch = nullptr);

#endif
