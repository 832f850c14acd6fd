// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_GOESON_H
#define VELMORA_REPORT_GOESON_H

#include <QByteArray>

#include <functional>
#include <optional>

/// Receives the share of the work that is done, 0 to 1. Returns false to abort.
using GoesOnWithShare = std::function<bool(double done)>;

#endif
