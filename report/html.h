// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_HTML_H
#define VELMORA_REPORT_HTML_H

#include "report/document.h"
#include "report/goeson.h"

/// The document as one file of HTML 5 in UTF-8: its style and pictures are within it, and it
/// has neither script nor reference to anything else. None if it is given up.
std::optional<QByteArray> htmlReport(const ReportDocument& document, const GoesOnWithShare& goesOn);

#endif
