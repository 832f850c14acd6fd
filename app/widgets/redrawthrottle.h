// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_APP_WIDGETS_REDRAWTHROTTLE_H
#define VELMORA_APP_WIDGETS_REDRAWTHROTTLE_H

#include <QElapsedTimer>

#include <limits>

/// Decides how often something is drawn during a loop: as often as the eye notices, but so rarely
/// that drawing takes a small share of the time, even if it is slow.
class RedrawThrottle
{
public:
    /// The pause after a drawing, in nanoseconds.
    struct Pause
    {
        int timesDrawing; ///< as a multiple of what the drawing took, within these limits
        qint64 shortest;
        qint64 longest = std::numeric_limits<qint64>::max();

        /// The pause after a drawing that took this many nanoseconds.
        qint64 after(qint64 drawing) const
        {
            return qBound(shortest, timesDrawing * drawing, longest);
        }
    };

    /// The first drawing is due at once.
    explicit RedrawThrottle(const Pause& pauseWanted)
        : wanted(pauseWanted)
    {
    }

    /// Begins with the shortest pause instead.
    void startPaused()
    {
        pause = wanted.shortest;
        sinceDrawing.start();
    }

    /// Whether the pause is over.
    bool isDue() const { return !sinceDrawing.isValid() || sinceDrawing.nsecsElapsed() >= pause; }

    /// Draws, and begins the next pause.
    template <typename Draw>
    void run(Draw draw)
    {
        QElapsedTimer duration;
        duration.start();
        draw();
        pause = wanted.after(duration.nsecsElapsed());
        sinceDrawing.start();
    }

private:
    Pause wanted;
    QElapsedTimer sinceDrawing; ///< invalid before the first pause
    qint64 pause = 0;
};

#endif
