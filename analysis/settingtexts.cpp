// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/settingtexts.h"

#include <algorithm>
#include <iterator>
#include <limits>

QString typed(double number)
{
    return QString::number(number, 'g', std::numeric_limits<double>::digits10);
}

QString typed(const QVector<double>& numbers)
{
    QStringList texts;
    for (const double number : numbers) {
        texts.append(typed(number));
    }
    return texts.join(", ");
}

QString calculated(double number)
{
    return QString::number(number, 'g', 6);
}

QString countRange(const QVector<Table>& dataSets)
{
    if (dataSets.isEmpty()) {
        return "0";
    }
    const auto [fewest, most] =
        std::minmax_element(dataSets.begin(), dataSets.end(),
                            [](const Table& a, const Table& b) { return a.size() < b.size(); });
    return fewest->size() == most->size()
               ? QString::number(fewest->size())
               : QString("%1 to %2").arg(fewest->size()).arg(most->size());
}

QString intervalText(const Study& study)
{
    const TargetInterval& target = study.target;
    return target.upper == qInf() ? "endpoint > " + typed(target.lower)
           : target.lower == -qInf()
               ? "endpoint <= " + typed(target.upper)
               : QString("%1 < endpoint <= %2").arg(typed(target.lower), typed(target.upper));
}

QString populationText(const Study& study)
{
    const char* const names[] = {"Mean of the Population", "Median of the Population",
                                 "75percentile of the Population",
                                 "25 percentile of the Population"};
    const bool hasOmega =
        std::any_of(study.endPoints.begin(), study.endPoints.end(),
                    [](const endPoint& definition) { return definition.numEtas > 0; });
    const auto* chosen = std::find(std::begin(populationSummaries), std::end(populationSummaries),
                                   study.populationSummary);
    return hasOmega && chosen != std::end(populationSummaries)
               ? QString("%1, %2 individuals")
                     .arg(names[chosen - std::begin(populationSummaries)])
                     .arg(study.individuals)
               : QString();
}

QString methodText(const Study& study)
{
    return QString(study.selecting ? "Model Selection" : "Model Average")
           + (study.individualOfv ? ", using individual ofv" : ", using one ofv per model");
}
