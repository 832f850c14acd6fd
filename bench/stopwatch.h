// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_STOPWATCH_H
#define VELMORA_BENCH_STOPWATCH_H

enum class Clock {
    Processor, ///< of all threads of this program
    Programs,  ///< processor time of the programs that were started and have ended
    Wall,      ///< less what the calling thread was ready for a processor that others had
    WholeWall, ///< all of it
};

/// The time of a clock, from its making on and without pauses.
class Stopwatch
{
public:
    explicit Stopwatch(Clock ofClock);

    void pause();
    void resume();

    /// Without a pause that goes on.
    double seconds() const;

private:
    Clock clock;
    double passed = 0.0;
    double start = 0.0;
    bool isRunning = false;
};

/// Seconds for which all threads of this program that there are now were ready to work while
/// their processors did something else. 0 where the system does not tell.
double secondsOfWaiting();

#endif
