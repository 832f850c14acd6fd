// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/definitioncheck.h"

#include "analysis/checkup/heading.h"
#include "analysis/checkup/wording.h"
#include "analysis/weights.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <cmath>

namespace {

/// Whether names stand above the columns that they belong to.
bool namesFit(const QStringList& names, int columnCount)
{
    return columnCount == 0 || names.size() == columnCount;
}

/// The ETAs in the endpoint expression, as 0-based rows of omega, ascending.
QVector<int> etaRows(const endPoint& definition)
{
    QVector<int> rows =
        bindEndpoint(parser(definition.endPointParser).extract_variables(), definition.colNumTHETA1)
            .etaRows;
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

/// Whether a row of omega can hold other than zeros. Numbers count in their row alone, and
/// column references also across the diagonal, as in evaluation.
bool varies(const endPoint& definition, int row)
{
    const auto& numbers = definition.omega;
    const auto& columns = definition.omegaColumns;
    for (int other = 0; other < qMin(numbers.size(), columns.size()); ++other) {
        const double number = numbers.value(row).value(other);
        const bool hasColumn =
            columns.value(row).value(other, -1) >= 0 || columns.at(other).value(row, -1) >= 0;
        if (hasColumn || !(number * number == 0)) {
            return true;
        }
    }
    return false;
}

/// The content of a column that is not a variance or covariance; empty if its name does not show
/// it.
QString noVariance(const QStringList& names, int column)
{
    static const QRegularExpression deviation("(^|[^A-Z])SD$|(^|[^A-Za-z])sd$");
    const QString kind = otherThanTheta(names, column);
    if (kind.isEmpty() && deviation.match(names.value(column)).hasMatch()) {
        return "a standard deviation";
    }
    return kind == "an OMEGA" || kind == "a SIGMA" ? QString() : kind;
}

/// K in the text that the program proposes as a weight.
QString kOf(const QString& proposed)
{
    return QString(proposed).remove("(0-").remove("-ofv/2)");
}

} // namespace

QStringList checkEndpointGiven(const QString& expression)
{
    return expression.trimmed().isEmpty()
               ? QStringList("There is no endpoint expression: the endpoint is 0 at every dose.")
               : QStringList();
}

QVector<Diagnosis> diagnoseThetas(const QString& expression, const QStringList& names,
                                  const RowColumns& columns)
{
    if (!namesFit(names, columns.count)) {
        return {};
    }
    QSet<QString> messages;
    const auto nameFault = [&](const QString& name) {
        const Binding binding = bindEndpoint({name}, columns.colNumTHETA1);
        const bool isTheta = name.startsWith("THETA") && !binding.columns.isEmpty();
        const int column = isTheta ? binding.columns.first().column : -1;
        const QString kind = otherThanTheta(names, column);
        if (kind.isEmpty()) {
            return QString();
        }
        QString message =
            QString("\"%1\" is column %2, whose name, %3, is that of %4: check the number, or "
                    "write COL%2 if you mean this column")
                .arg(name, QString::number(column + 1), shortName(names.at(column)), kind);
        messages.insert(message);
        return message;
    };
    QVector<Diagnosis> found = diagnose(expression, nameFault);
    const auto isOther = [&messages](const Diagnosis& diagnosis) {
        return !messages.contains(diagnosis.message);
    };
    found.erase(std::remove_if(found.begin(), found.end(), isOther), found.end());
    return found;
}

QStringList checkEtaVariances(const endPoint& definition)
{
    QStringList fixed;
    for (const int eta : etaRows(definition)) {
        if (!varies(definition, eta)) {
            fixed.append(QString("ETA%1").arg(eta + 1));
        }
    }
    return fixed.isEmpty()
               ? QStringList()
               : QStringList("ETAs without a variance in omega are 0 for every individual: "
                             + enumerated(fixed) + '.');
}

QStringList checkOmegaColumns(const endPoint& definition, const QStringList& names, int columnCount)
{
    const QVector<int> etas = etaRows(definition);
    if (etas.isEmpty() || !namesFit(names, columnCount)) {
        return {};
    }
    QStringList wrong;
    // An ETA depends on its own row up to the diagonal and on the rows above.
    for (int row = 0; row <= etas.last(); ++row) {
        for (int other = 0; other <= row; ++other) {
            const int column = definition.omegaColumns.value(row).value(other, -1);
            const QString kind = noVariance(names, column);
            if (!kind.isEmpty()) {
                wrong.append(
                    QString("COL%1 (%2, %3)")
                        .arg(QString::number(column + 1), shortName(names.at(column)), kind));
            }
        }
    }
    wrong.removeDuplicates();
    return wrong.isEmpty() ? QStringList()
                           : QStringList("Omega takes variances and covariances, but the names of "
                                         "these columns are those of something else: "
                                         + enumerated(wrong) + '.');
}

QStringList checkDefaultWeight(const QString& placed, const QString& weightExpression,
                               const parser& endPointParser)
{
    const QString proposed = defaultWeightExpression(endPointParser);
    const bool isPlaced = !placed.trimmed().isEmpty() && weightExpression == placed;
    if (!isPlaced || proposed == placed || endPointParser.expression.trimmed().isEmpty()) {
        return {};
    }
    return {QString("Proposed with K = %1 for an earlier endpoint. With K = %2, for the present "
                    "endpoint, the proposal is %3.")
                .arg(kOf(placed), kOf(proposed), proposed)};
}

QStringList checkWeightScale(const QString& expression, const QVector<double>& values,
                             bool logScale)
{
    static const QRegularExpression exponential("^[\\s(]*exp\\(");
    qint64 numbers = 0;
    qint64 negative = 0;
    qint64 shares = 0;
    for (const double value : values) {
        numbers += std::isnan(value) ? 0 : 1;
        negative += value < 0 ? 1 : 0;
        shares += value >= 0 && value <= 1 ? 1 : 0;
    }
    if (logScale && numbers > 0 && shares == numbers && exponential.match(expression).hasMatch()) {
        return {"Weights are read as logarithms, but this looks like an exponential with values "
                "from 0 to 1: untick \"in log scale\" or write the exponent alone."};
    }
    if (!logScale && negative > 0) {
        return {
            QString("%1 of %2 %3 below 0: relative weights are shares of their sum; if they are "
                    "logarithms, tick \"in log scale\".")
                .arg(QString::number(negative), counted(numbers, "weight"),
                     negative == 1 ? "is" : "are")};
    }
    return {};
}
