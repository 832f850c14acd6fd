// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/formats.h"

#include "report/html.h"
#include "report/odt.h"
#include "report/pdf.h"

QStringList reportSuffixes()
{
    return {"html", "pdf", "odt"};
}

std::optional<QByteArray> writtenReport(const ReportDocument& document, const QString& suffix,
                                        const GoesOnWithShare& goesOn)
{
    return suffix == "pdf"   ? pdfReport(document, goesOn)
           : suffix == "odt" ? odtReport(document, goesOn)
                             : htmlReport(document, goesOn);
}
