// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_ODT_H
#define VELMORA_REPORT_ODT_H

#include "report/document.h"
#include "report/goeson.h"

/// The document in the OpenDocument text format 1.2, for word processors. Headings, pictures,
/// page headings and page numbers are what these expect; tables repeat their headings on each
/// page. None if aborted.
std::optional<QByteArray> odtReport(const ReportDocument& document, const GoesOnWithShare& goesOn);

#endif
