// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_ODT_H
#define VELMORA_REPORT_ODT_H

#include "report/document.h"
#include "report/goeson.h"

/// The document as a text of the OpenDocument format 1.2, for word processors: with headings,
/// tables whose headings are repeated on each page, pictures, page headings and page numbers as
/// these understand them. None if it is given up.
std::optional<QByteArray> odtReport(const ReportDocument& document, const GoesOnWithShare& goesOn);

#endif
