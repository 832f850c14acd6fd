// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_SUMMARY_H
#define VELMORA_ANALYSIS_SUMMARY_H

#include "analysis/results.h"

#include <QString>
#include <QStringList>

/// The origin of a study, and the program that summarises it.
struct StudySource
{
    QString program; ///< name and version
    QString qtVersion;
    QString directory; ///< or project, as shown to the user
    /// Names of the models' files without folder, with * for the number of the data set,
    /// [model]; may be empty.
    QStringList files;
};

/// The study and its results as lines of plain text; the cells of its tables are separated by tabs.
/// Typed numbers have all their digits, calculated ones six. A stale result appears with the inputs
/// that it was made with. Results that were not calculated are left out. Relative weights are the
/// current ones of a data set, -1 for none. The findings come last.
QString summaryText(const CurrentInputs& now, const StudyResults& results, int weightsDataSet,
                    const StudySource& source, const QStringList& findings);

#endif
