// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Shows the thread sanitizer the order that Qt's parallel map keeps; it does not see into Qt's
// library. What the calling thread did precedes the work of the pool, and the pool's results
// precede what the calling thread does next. Threads of the pool have no order, so a race
// between them is reported. Compiled only for this sanitizer; the linker then puts these
// functions before Qt's of the same name.

#include <sanitizer/tsan_interface.h>

namespace {

char work;    // passed on by the calling thread
char results; // passed on by the pool

} // namespace

// For each function its place before Qt's, and Qt's own.
#define VELMORA_WRAPS(name, symbol)                                                                \
    void name(void* object) __asm__("__wrap_" symbol);                                             \
    void qt_##name(void* object) __asm__("__real_" symbol)

extern "C" {

VELMORA_WRAPS(acquireBarrierSemaphore,
              "_ZN12QtConcurrent16ThreadEngineBase23acquireBarrierSemaphoreEv");
VELMORA_WRAPS(run, "_ZN12QtConcurrent16ThreadEngineBase3runEv");
VELMORA_WRAPS(timeAfterUser, "_ZN12QtConcurrent18BlockSizeManagerV213timeAfterUserEv");
VELMORA_WRAPS(waitForFinished, "_ZN20QFutureInterfaceBase15waitForFinishedEv");

/// The calling thread's last step before it asks the pool.
void acquireBarrierSemaphore(void* engine)
{
    __tsan_release(&work);
    qt_acquireBarrierSemaphore(engine);
}

/// All that a thread of the pool does.
void run(void* engine)
{
    __tsan_acquire(&work);
    qt_run(engine);
}

/// What follows the work on some items.
void timeAfterUser(void* blockSize)
{
    __tsan_release(&results);
    qt_timeAfterUser(blockSize);
}

/// The calling thread's wait, in which it may do some work itself.
void waitForFinished(void* future)
{
    qt_waitForFinished(future);
    __tsan_acquire(&results);
}

} // extern "C"
