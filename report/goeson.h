// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_GOESON_H
#define VELMORA_REPORT_GOESON_H

#include <QByteArray>

#include <functional>
#include <optional>

/// Told which share of the work is done, 0 to 1; gives the rest up by false.
using GoesOnWithShare = std::function<bool(double done)>;

#endif
