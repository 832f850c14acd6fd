// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/modeltexts.h"

#include "batch/error.h"
#include "compat/qtversions.h"
#include "model/binding.h"

#include <QLocale>

namespace {

constexpr int exactDigits = QLocale::FloatingPointShortest;

} // namespace

QString exactText(double number)
{
    return significantDigits(number, exactDigits);
}

int modelNamed(const QStringList& names, const QString& text, const char* option)
{
    const int count = names.count(text);
    if (count == 1) {
        return names.indexOf(text);
    }
    bool isNumber = false;
    const int number = wholeNumber(text.startsWith('#') ? text.mid(1) : text, &isNumber);
    if (count == 0 && isNumber && number >= 0 && number < names.size()) {
        return number;
    }
    if (count > 1) {
        rejectUsage(QString("--%1: several models have the name \"%2\"; use their numbers, "
                            "#0 to #%3.")
                        .arg(option, text)
                        .arg(names.size() - 1));
    }
    rejectUsage(QString("--%1: there is no model \"%2\"; the models are %3.")
                    .arg(option, text, names.join(", ")));
}

QString modelKey(const QStringList& names, int model)
{
    return names.count(names.at(model)) == 1 ? names.at(model) : '#' + QString::number(model);
}

void readOmega(endPoint& definition, const QString& text)
{
    const auto reject = [&](const QString& why) {
        rejectUsage(QString("--omega of %1: %2.").arg(definition.name, why));
    };
    const QStringList rows = text.split(';');
    if (rows.size() < definition.highestEta || rows.size() > highestEtaNumber) {
        reject(QString("%1 rows, but the endpoint has ETA%2")
                   .arg(rows.size())
                   .arg(definition.highestEta));
    }
    definition.resizeOmega(0);
    definition.resizeOmega(rows.size());
    for (int row = 0; row < rows.size(); ++row) {
        const QStringList elements = rows.at(row).split(',');
        if (elements.size() != rows.size()) {
            reject(QString("row %1 has %2 elements instead of %3")
                       .arg(row + 1)
                       .arg(elements.size())
                       .arg(rows.size()));
        }
        for (int column = 0; column < elements.size(); ++column) {
            const QString element = elements.at(column).trimmed();
            bool isNumber = false;
            const double number = element.toDouble(&isNumber);
            const std::optional<int> reference = omegaColumnReference(element);
            if (!isNumber && (!reference || *reference < 0)) {
                reject(
                    QString("\"%1\" is neither a number nor a column such as COL24").arg(element));
            }
            definition.omega[row][column] = isNumber ? number : 0.0;
            definition.omegaColumns[row][column] = isNumber ? -1 : *reference;
        }
    }
    for (int row = 0; row < rows.size(); ++row) {
        for (int column = 0; column < row; ++column) {
            if (definition.omegaText(row, column, exactDigits)
                != definition.omegaText(column, row, exactDigits)) {
                reject(QString("the elements %1,%2 and %2,%1 differ").arg(row + 1).arg(column + 1));
            }
        }
    }
}

QString omegaText(const endPoint& definition)
{
    QStringList rows;
    for (int row = 0; row < definition.numEtas; ++row) {
        QStringList elements;
        for (int column = 0; column < definition.numEtas; ++column) {
            elements.append(definition.omegaText(row, column, exactDigits));
        }
        rows.append(elements.join(','));
    }
    return rows.join(';');
}
