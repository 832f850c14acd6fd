// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_MODELTEXTS_H
#define VELMORA_BATCH_MODELTEXTS_H

#include "model/endpoint.h"

#include <QStringList>

// How settings name models and write numbers and covariances.

/// The number with as few digits as tell it from every other.
QString exactText(double number);

/// The number of the model that a text names: by its name, or by its number, which a # may tell
/// from a name. A text that names none, or several, ends the run.
int modelNamed(const QStringList& names, const QString& text, const char* option);

/// What names a model so that modelNamed finds it.
QString modelKey(const QStringList& names, int model);

/// Omega from rows with ; between, of elements with , between. What is no covariance matrix of
/// the endpoint's ETAs ends the run.
void readOmega(endPoint& definition, const QString& text);

/// The text that readOmega reads.
QString omegaText(const endPoint& definition);

#endif
