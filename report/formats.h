// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_FORMATS_H
#define VELMORA_REPORT_FORMATS_H

#include "report/document.h"
#include "report/goeson.h"

/// The endings of files that a report can be written as.
QStringList reportSuffixes();

/// The report as a file with one of these endings. None if it is given up. Throws
/// std::bad_alloc where memory does not suffice.
std::optional<QByteArray> writtenReport(const ReportDocument& document, const QString& suffix,
                                        const GoesOnWithShare& goesOn);

#endif
