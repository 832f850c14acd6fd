// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_PDF_H
#define VELMORA_REPORT_PDF_H

#include "report/document.h"
#include "report/goeson.h"

/// The document on pages of A4 paper, each with a heading and its number. Charts are lines and
/// letters, and all fonts are embedded. None if it is given up. Throws std::bad_alloc where
/// memory does not suffice.
std::optional<QByteArray> pdfReport(const ReportDocument& document, const GoesOnWithShare& goesOn);

#endif
