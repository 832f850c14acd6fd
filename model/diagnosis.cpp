// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/diagnosis.h"

#include "expr/parser.h"
#include "model/binding.h"

#include <QRegularExpression>

namespace {

/// The reserved slot of the name if it means time, concentration or dose.
int slotOf(const QString& name)
{
    return parser(name).extract_variables().indexOf(name);
}

/// True if the name is a prefix and a number of at least 1, and so means what it says.
bool isRegular(const QString& name)
{
    static const QRegularExpression pattern(
        R"(\A(?:col|Col|COL|column|Column|THETA|ETA)0*[1-9][0-9]*\z)");
    return pattern.match(name).hasMatch();
}

/// The name of the language that the user probably meant; empty if none.
QString meantName(const QString& name)
{
    static const QRegularExpression pattern(R"(\A(col|column|theta|eta)_?([0-9]+)\z)",
                                            QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = pattern.match(name);
    if (match.hasMatch()) {
        const QString prefix = match.captured(1).toUpper();
        return (prefix == "COLUMN" ? "COL" : prefix) + match.captured(2);
    }
    if (name.compare(QLatin1String("ofv"), Qt::CaseInsensitive) == 0) {
        return "ofv";
    }
    return slotOf(name.toUpper()) == DoseSlot ? "DOSE" : QString();
}

QString columnName(int column)
{
    return "COL" + QString::number(qint64(column) + 1);
}

/// What is wrong with a name that nothing binds. isGood is true for good names.
template <typename IsGood>
QString unboundFault(const QString& name, const QString& useful, IsGood isGood)
{
    const QString meant = meantName(name);
    if (meant == name && meant.startsWith(QLatin1String("ETA"))) {
        return "\"" + name + "\" has no value (NaN): number ETAs from 1 to "
               + QString::number(highestEtaNumber);
    }
    const bool isMisspelt = !meant.isEmpty() && meant != name && isGood(meant);
    return "\"" + name + "\" has no value (NaN): write " + (isMisspelt ? meant : useful);
}

QString neverGiven(const QString& name, int slot)
{
    return "\"" + name + "\" stands for the " + (slot == TimeSlot ? "time" : "concentration")
           + ", which is never given a value (NaN): write its number or column";
}

/// What is wrong with a name that takes the value of a column.
QString columnFault(const QString& name, int column, int count)
{
    if (column < 0) {
        return "\"" + name
               + "\" lies outside of every row and has no value (NaN): check its number"
                 " and the column settings";
    }
    if (count > 0 && column >= count) {
        return "\"" + name + "\" is column " + QString::number(qint64(column) + 1)
               + " of rows with " + QString::number(count)
               + " columns and has no value (NaN): write a lower number";
    }
    return {};
}

QString irregularFault(const QString& name, const QString& taken)
{
    return "\"" + name + "\" is read as " + taken + ": write " + taken;
}

QString endpointFault(const QString& name, const QString& doseName, const RowColumns& columns)
{
    const int slot = slotOf(name);
    if (slot == DoseSlot) {
        return name == doseName ? QString()
                                : "\"" + name + "\" has no value (NaN) next to \"" + doseName
                                      + "\", which is the dose: write " + doseName;
    }
    if (slot == TimeSlot || slot == ConcentrationSlot) {
        return neverGiven(name, slot);
    }
    const Binding binding = bindEndpoint({name}, columns.colNumTHETA1);
    const bool isOfv = name == QLatin1String("ofv");
    if (!binding.etaRows.isEmpty()) {
        return isRegular(name)
                   ? QString()
                   : irregularFault(name, "ETA" + QString::number(binding.etaRows.first() + 1));
    }
    if (binding.columns.isEmpty()) {
        return unboundFault(name, "THETAn, ETAn, COLn, ofv or DOSE", [&](const QString& meant) {
            return endpointFault(meant, doseName, columns).isEmpty();
        });
    }
    const int column = binding.columns.first().column;
    if (isOfv && column + 1 != columns.colNumOFV) {
        return "\"ofv\" is column " + QString::number(column + 1)
               + " in an endpoint, and not the OFV column: write "
               + columnName(columns.colNumOFV - 1);
    }
    if (column >= 0 && !isOfv && !isRegular(name)) {
        return irregularFault(name, columnName(column));
    }
    return columnFault(name, column, columns.count);
}

QString weightFault(const QString& name, const RowColumns& columns)
{
    const int slot = slotOf(name);
    if (slot == TimeSlot || slot == ConcentrationSlot) {
        return neverGiven(name, slot);
    }
    if (slot == DoseSlot) {
        return "\"" + name + "\" has no value (NaN) in a weight: only endpoints have a dose";
    }
    const Binding binding = bindWeight({name}, columns.colNumOFV);
    if (!binding.columns.isEmpty()) {
        const int column = binding.columns.first().column;
        if (column >= 0 && name != QLatin1String("ofv") && !isRegular(name)) {
            return irregularFault(name, columnName(column));
        }
        return columnFault(name, column, columns.count);
    }
    const Binding inEndpoint = bindEndpoint({name}, columns.colNumTHETA1);
    if (!inEndpoint.etaRows.isEmpty()) {
        return "\"" + name + "\" has no value (NaN) in a weight: only endpoints have ETAs";
    }
    if (!inEndpoint.columns.isEmpty() && inEndpoint.columns.first().column >= 0) {
        return "\"" + name + "\" has no value (NaN) in a weight: write "
               + columnName(inEndpoint.columns.first().column);
    }
    return unboundFault(name, "COLn or ofv", [&columns](const QString& meant) {
        return weightFault(meant, columns).isEmpty();
    });
}

} // namespace

QVector<Diagnosis> diagnoseEndpoint(const QString& expression, const RowColumns& columns)
{
    const QString doseName = parser(expression).extract_variables().at(DoseSlot);
    return diagnose(expression, [&doseName, &columns](const QString& name) {
        return endpointFault(name, doseName, columns);
    });
}

QVector<Diagnosis> diagnoseWeight(const QString& expression, const RowColumns& columns)
{
    if (expression.trimmed().isEmpty()) {
        return {};
    }
    return diagnose(expression,
                    [&columns](const QString& name) { return weightFault(name, columns); });
}
