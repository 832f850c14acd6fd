// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/binding.h"

#include "compat/qtversions.h"

#include <algorithm>
#include <limits>

namespace {

std::optional<int> columnNumber(const QString& name)
{
    static const QStringList prefixes{"col", "Col", "COL", "column", "Column"};
    for (const QString& prefix : prefixes) {
        if (const std::optional<int> number = numberInName(name, prefix)) {
            return number;
        }
    }
    return std::nullopt;
}

/// -1 for columns that no row has.
int columnIndex(qint64 index)
{
    return index >= 0 && index <= std::numeric_limits<int>::max() ? static_cast<int>(index) : -1;
}

} // namespace

QVector<double> Binding::values(const QVector<double>& row) const
{
    QVector<double> result(slotCount, std::numeric_limits<double>::quiet_NaN());
    for (const FromColumn& source : columns) {
        if (source.column >= 0 && source.column < row.size()) {
            result[source.slot] = row.at(source.column);
        }
    }
    return result;
}

int Binding::highestEta() const
{
    return etaRows.isEmpty() ? 0 : *std::max_element(etaRows.begin(), etaRows.end()) + 1;
}

Binding bindEndpoint(const QStringList& names, int colNumTHETA1)
{
    Binding binding;
    binding.slotCount = names.size();
    for (int slot = 0; slot < names.size(); ++slot) {
        const QString& name = names.at(slot);
        if (name == QLatin1String("ofv")) {
            binding.columns.append({slot, endpointOfvColumn - 1});
        } else if (const std::optional<int> column = columnNumber(name)) {
            binding.columns.append({slot, columnIndex(qint64(*column) - 1)});
        } else if (const std::optional<int> eta = etaNumber(name)) {
            binding.etaSlots.append(slot);
            binding.etaRows.append(*eta - 1);
        } else if (const std::optional<int> theta = numberInName(name, "THETA")) {
            binding.columns.append({slot, columnIndex(qint64(*theta) + colNumTHETA1 - 2)});
        }
    }
    return binding;
}

Binding bindWeight(const QStringList& names, int colNumOFV)
{
    Binding binding;
    binding.slotCount = names.size();
    for (int slot = 0; slot < names.size(); ++slot) {
        const QString& name = names.at(slot);
        if (name == QLatin1String("ofv")) {
            binding.columns.append({slot, columnIndex(qint64(colNumOFV) - 1)});
        } else if (const std::optional<int> column = columnNumber(name)) {
            binding.columns.append({slot, columnIndex(qint64(*column) - 1)});
        }
    }
    return binding;
}

std::optional<int> numberInName(const QString& name, const QString& prefix)
{
    const QStringList parts = name.split(prefix, Qt::SkipEmptyParts);
    bool isNumber = false;
    const int number = parts.isEmpty() ? 0 : wholeNumber(parts.first(), &isNumber);
    return isNumber ? std::optional<int>(number) : std::nullopt;
}

std::optional<int> etaNumber(const QString& name)
{
    const std::optional<int> number = numberInName(name, "ETA");
    return number && *number >= 1 && *number <= highestEtaNumber ? number : std::nullopt;
}

std::optional<int> omegaColumnReference(const QString& text)
{
    static const QStringList prefixes{"COL", "Col", "COLUMN", "Column", "column"};
    for (const QString& prefix : prefixes) {
        if (const std::optional<int> number = numberInName(text, prefix)) {
            return *number > 0 ? *number - 1 : -1;
        }
    }
    return std::nullopt;
}
