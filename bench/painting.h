// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BENCH_PAINTING_H
#define VELMORA_BENCH_PAINTING_H

#include "bench/stopwatch.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QWidget>

/// Counts how often a window was painted.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget& window) { window.installEventFilter(this); }

    int count = 0;

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        count += event->type() == QEvent::UpdateRequest ? 1 : 0;
        return false;
    }
};

/// Seconds from an action until the window is painted and has nothing more to paint.
template <typename Act>
double secondsUntilSeen(const PaintCounter& paints, Act act)
{
    constexpr qint64 patienceMs = 1000;
    const int paintedBefore = paints.count;
    QElapsedTimer elapsed;
    elapsed.start();
    const Stopwatch watch(Clock::Wall);
    act();
    int painted = paintedBefore;
    do {
        painted = paints.count;
        QCoreApplication::processEvents();
    } while (paints.count != painted
             || (painted == paintedBefore && elapsed.elapsed() < patienceMs));
    return watch.seconds();
}

#endif
