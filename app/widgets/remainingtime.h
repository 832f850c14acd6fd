// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WIDGETS_REMAININGTIME_H
#define VELMORA_APP_WIDGETS_REMAININGTIME_H

#include <QString>

#include <optional>

/// Estimates how long a loop still takes from the mean duration of its steps so far. All
/// times are milliseconds, since the start of the loop or still to go.
class RemainingTime
{
public:
    /// Sets how many steps are done by now.
    void update(int stepsDone, qint64 now);

    /// The time until all steps are done; time that passes within a step is taken off, down
    /// to 0. None before the first step is done.
    std::optional<qint64> at(qint64 now, int steps) const;

private:
    int done = 0;
    qint64 lastStep = 0; ///< when the last of these steps was seen to be done
};

/// The time as text for the user, such as "About 2 min 5 s left".
QString remainingTimeText(qint64 milliseconds);

#endif
