// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CHECKUP_WORDING_H
#define VELMORA_ANALYSIS_CHECKUP_WORDING_H

#include <QStringList>

// Numbers and names in findings.

/// "1 sample", "2 samples".
QString counted(qint64 count, const QString& noun);

/// "200" or "198 to 201".
QString rangeText(qint64 lowest, qint64 highest);

/// As many digits as people type; fewer would make different numbers look equal.
QString numberText(double number);

/// A name of any length, with dots for the part that is cut off.
QString shortName(const QString& name);

/// The first texts of a list, which may be of any length: "a, b, c, d, e and 2 more".
QString enumerated(const QStringList& texts, int most = 5);

/// "a.csv could not be read to its end"; nothing without files.
QStringList unreadFindings(const QStringList& files);

#endif
