// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_MODELTEXTS_H
#define VELMORA_BATCH_MODELTEXTS_H

#include "model/endpoint.h"

#include <QStringList>

// How settings name models and write numbers and covariances.

/// The number with as few digits as distinguish it from every other.
QString exactText(double number);

/// The number of the model that a text names, by name or by number; a # before it marks a number.
/// A text that names no model, or several, ends the run.
int modelNamed(const QStringList& names, const QString& text, const char* option);

/// A text by which modelNamed finds the model.
QString modelKey(const QStringList& names, int model);

/// Reads omega: rows separated by ; of elements separated by commas. A text that is no covariance
/// matrix of the endpoint's ETAs ends the run.
void readOmega(endPoint& definition, const QString& text);

/// The text that readOmega reads.
QString omegaText(const endPoint& definition);

#endif
