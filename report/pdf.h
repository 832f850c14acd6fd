// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_PDF_H
#define VELMORA_REPORT_PDF_H

#include "report/document.h"
#include "report/goeson.h"

/// The document on A4 pages, each with a heading and its number. Charts are lines and letters,
/// and all fonts are embedded. None if aborted. Throws std::bad_alloc if there is not enough
/// memory.
std::optional<QByteArray> pdfReport(const ReportDocument& document, const GoesOnWithShare& goesOn);

#endif
