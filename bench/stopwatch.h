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

/// What other programs do from its making on.
class OtherPrograms
{
public:
    OtherPrograms();

    /// How much of the processors' time they take. 0 where the system does not tell.
    double share() const;

private:
    Stopwatch wall;
    double start;
};

#endif
