// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/randomcheck.h"

#include "model/randomng.h"

#include <algorithm>

namespace {

/// ETAs of the model that draw random numbers: their row of omega may hold other numbers than 0.
int varyingEtas(const endPoint& definition)
{
    if (definition.highestEta == 0 || definition.hasBlankOmega()) {
        return 0;
    }
    int count = 0;
    for (int eta = 0; eta < definition.omega.size(); ++eta) {
        const QVector<double>& numbers = definition.omega.at(eta);
        const QVector<int> columns = definition.omegaColumns.value(eta); // symmetric
        const bool varies =
            std::any_of(numbers.begin(), numbers.end(), [](double n) { return !(n == 0); })
            || std::any_of(columns.begin(), columns.end(), [](int column) { return column >= 0; });
        count += varies ? 1 : 0;
    }
    return count;
}

/// The random numbers that one sample takes, [model].
QVector<double> numbersPerSample(const Study& study)
{
    QVector<double> numbers;
    for (const endPoint& definition : study.endPoints) {
        numbers.append(2.0 * varyingEtas(definition) * qMax(0, definition.numSimulations)
                       * study.doses.size());
    }
    return numbers;
}

double numbersOf(const Study& study, int dataSet, const QVector<double>& perSample)
{
    if (dataSet < 0 || dataSet >= study.dataSetCount()) {
        return 0.0;
    }
    const int sampleCount = study.rawResults.first().at(dataSet).size();
    double numbers = 0.0;
    for (int model = 0; model < qMin(study.rawResults.size(), perSample.size()); ++model) {
        const int rowCount = study.rawResults.at(model).value(dataSet).size();
        numbers += perSample.at(model) * qMin(sampleCount, rowCount);
    }
    return numbers;
}

/// where is "from data set 122 on, " or nothing.
QStringList finding(double numbers, const QString& where)
{
    const QString bound = QString::number(numbers, 'g', 3).replace("e+0", "e").replace("e+", "e");
    return {QString("This may draw up to %1 random numbers, but the sequence repeats after %2: "
                    "%3the same numbers are drawn again.")
                .arg(bound)
                .arg(randomPeriod)
                .arg(where)};
}

} // namespace

double mostRandomNumbers(const Study& study, int dataSet)
{
    return numbersOf(study, dataSet, numbersPerSample(study));
}

QStringList checkRandomNumbers(const Study& study, int dataSet)
{
    const double numbers = mostRandomNumbers(study, dataSet);
    return numbers > randomPeriod ? finding(numbers, {}) : QStringList();
}

QStringList checkRandomNumbersOfAll(const Study& study)
{
    const QVector<double> perSample = numbersPerSample(study);
    if (std::all_of(perSample.begin(), perSample.end(), [](double n) { return n == 0; })) {
        return {};
    }
    QVector<double> numbers;
    for (int dataSet = 0; dataSet < study.dataSetCount(); ++dataSet) {
        numbers.append(numbersOf(study, dataSet, perSample));
    }
    return checkRandomNumbers(numbers);
}

QStringList checkRandomNumbers(const QVector<double>& ofDataSets)
{
    double numbers = 0.0;
    int firstRepeating = -1;
    for (int dataSet = 0; dataSet < ofDataSets.size(); ++dataSet) {
        numbers += ofDataSets.at(dataSet);
        if (firstRepeating < 0 && numbers > randomPeriod) {
            firstRepeating = dataSet;
        }
    }
    if (firstRepeating < 0) {
        return {};
    }
    return finding(numbers, ofDataSets.size() > 1
                                ? QString("from data set %1 on, ").arg(firstRepeating)
                                : QString());
}
