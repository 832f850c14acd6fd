// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_FORMATS_H
#define VELMORA_REPORT_FORMATS_H

#include "report/document.h"
#include "report/goeson.h"

/// The endings of the files that a report can be written to.
QStringList reportSuffixes();

/// The content of a file with one of these endings. None if aborted. Throws std::bad_alloc if
/// there is not enough memory.
std::optional<QByteArray> writtenReport(const ReportDocument& document, const QString& suffix,
                                        const GoesOnWithShare& goesOn);

#endif
