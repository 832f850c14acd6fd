// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_MODEL_BINDING_H
#define VELMORA_MODEL_BINDING_H

#include <QStringList>
#include <QVector>

#include <optional>

/// ETA numbers run from 1 to this; others are not bound.
constexpr int highestEtaNumber = 999;

/// 1-based column that ofv reads in endpoint expressions. This is intended: the OFV column
/// setting concerns only weights.
constexpr int endpointOfvColumn = 20;

/// The sources of the numbers in a value vector. Slots that are in neither list are NaN, as
/// are columns outside the row.
struct Binding
{
    struct FromColumn
    {
        int slot;
        int column; ///< 0-based column of the bootstrap row; -1 for none
    };

    int slotCount = 0;
    QVector<FromColumn> columns;
    QVector<int> etaSlots; ///< slots that ETAs fill
    QVector<int> etaRows;  ///< the ETA of each, as 0-based row of omega

    /// The value vector of a bootstrap row; NaN in all slots that no column fills.
    QVector<double> values(const QVector<double>& row) const;

    /// Largest n of the ETAn variables; 0 if there are none.
    int highestEta() const;
};

/// Binds the names of an endpoint expression: ofv (always endpointOfvColumn), COLn in five
/// spellings, ETAn and THETAn. colNumTHETA1 is 1-based.
Binding bindEndpoint(const QStringList& names, int colNumTHETA1);

/// Binds the names of a weight expression: ofv (the 1-based column colNumOFV) and COLn.
/// Deliberately does not bind THETAs, ETAs and the dose.
Binding bindWeight(const QStringList& names, int colNumOFV);

/// The number in a name such as prefix + "3": the first part that remains when the name is cut
/// at the prefix.
std::optional<int> numberInName(const QString& name, const QString& prefix);

/// n of a variable ETAn within the permitted numbers.
std::optional<int> etaNumber(const QString& name);

/// The 0-based column that an omega cell such as "COL3" refers to; -1 for a number below 1;
/// none for other texts. Deliberately does not accept the spelling "col".
std::optional<int> omegaColumnReference(const QString& text);

#endif
