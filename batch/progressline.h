// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_PROGRESSLINE_H
#define VELMORA_BATCH_PROGRESSLINE_H

#include <QElapsedTimer>
#include <QString>

/// A line on a terminal that shows how far a run is; nothing if stderr is not a terminal.
class ProgressLine
{
public:
    ProgressLine(const QString& whatIsDone, int allSteps, bool isQuiet);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void show(int done);

private:
    QString what;
    int all;
    bool isShown;
    QElapsedTimer start;
    QElapsedTimer last;
};

#endif
