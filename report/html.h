// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_HTML_H
#define VELMORA_REPORT_HTML_H

#include "report/document.h"
#include "report/goeson.h"

/// The document as one HTML 5 file in UTF-8. It contains its style and pictures, and neither
/// scripts nor references to anything else. None if aborted.
std::optional<QByteArray> htmlReport(const ReportDocument& document, const GoesOnWithShare& goesOn);

#endif
