// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_CERTAINTY_ENDPOINTCSV_H
#define VELMORA_ANALYSIS_CERTAINTY_ENDPOINTCSV_H

#include "analysis/certainty/certaintytables.h"

class QIODevice;

/// Writes the endpoints behind results as comma-separated lines (RFC 4180) below the heading
/// data_set,model,sample,dose,endpoint,weight,selected,in_target, in this order of data set,
/// sample, model and dose. Only evaluated endpoints have lines.
///
/// Data sets and samples count from 0; numbers have 17 digits, NaN is NA, infinities are Inf
/// and -Inf. weight is the relative weight of the model in the sample (of the first sample with
/// one OFV per model), whatever the method; selected is 1 for the model that selection would
/// judge the sample by; in_target is 1 inside the target interval. So the probability at a dose
/// is, over the samples, the mean sum of weight in_target, or the share of selected lines
/// with in_target.
///
/// False if aborted, which goesOn decides; it receives the number of results done. The device
/// reports write errors.
bool writeEndpoints(QIODevice& device, int resultCount,
                    const std::function<JudgedResult(int result)>& resultAt,
                    const std::function<bool(int done)>& goesOn);

/// The same in pieces, for results that come one after another: the heading, then the lines of
/// each.
void writeEndpointHeading(QIODevice& device);
bool writeEndpoints(QIODevice& device, const JudgedResult& result,
                    const std::function<bool()>& goesOn);

/// A number as these lines contain it.
QByteArray csvNumber(double number);

#endif
