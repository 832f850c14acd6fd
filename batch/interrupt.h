// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_INTERRUPT_H
#define VELMORA_BATCH_INTERRUPT_H

/// Lets Ctrl+C and SIGTERM end the run at the next call of endIfInterrupted, and after a second in
/// any case. The latter may leave files velmora-*.tmp.
void watchInterrupts();

bool isInterrupted();

/// Ends the run if it was interrupted.
void endIfInterrupted();

#endif
