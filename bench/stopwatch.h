// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_STOPWATCH_H
#define VELMORA_BENCH_STOPWATCH_H

enum class Clock {
    Processor, ///< processor time of all threads of this program
    Programs,  ///< processor time of all started programs that have ended
    Wall,      ///< wall time without the time that the calling thread waits for a processor
    WholeWall, ///< all wall time
};

/// The time of a clock since the stopwatch was made, without pauses.
class Stopwatch
{
public:
    explicit Stopwatch(Clock ofClock);

    void pause();
    void resume();

    /// Without the pauses, a present one included.
    double seconds() const;

private:
    Clock clock;
    double passed = 0.0;
    double start = 0.0;
    bool isRunning = false;
};

/// What other programs do since the object was made.
class OtherPrograms
{
public:
    OtherPrograms();

    /// The share of the processors that they take; 0 where the system does not report it.
    double share() const;

private:
    Stopwatch wall;
    double start;
};

#endif
