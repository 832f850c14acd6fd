// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/widgets/remainingtime.h"

#include <QtGlobal>

void RemainingTime::update(int stepsDone, qint64 now)
{
    if (stepsDone != done) {
        done = stepsDone;
        lastStep = now;
    }
}

std::optional<qint64> RemainingTime::at(qint64 now, int steps) const
{
    if (done <= 0) {
        return std::nullopt;
    }
    const double meanDuration = double(lastStep) / done;
    return qMax(qint64(0), qRound64(meanDuration * (steps - done)) - (now - lastStep));
}

QString remainingTimeText(qint64 milliseconds)
{
    const qint64 seconds = qMax(qint64(1), (milliseconds + 999) / 1000);
    const qint64 minutes = seconds / 60;
    if (minutes == 0) {
        return QString("About %1 s left").arg(seconds);
    }
    return minutes < 60 ? QString("About %1 min %2 s left").arg(minutes).arg(seconds % 60)
                        : QString("About %1 h %2 min left").arg(minutes / 60).arg(minutes % 60);
}
