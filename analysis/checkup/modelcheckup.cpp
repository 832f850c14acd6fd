// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/modelcheckup.h"

#include "analysis/checkup/wording.h"
#include "model/binding.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace {

/// Data sets of a model in which something occurs, and how often.
struct Occurrence
{
    qint64 count = 0;
    qint64 samples = 0; ///< of the data sets looked at
    int dataSets = 0;
    int dataSetCount = 0;
    int worst = -1; ///< data set with most
    qint64 worstCount = 0;
    qint64 worstSamples = 0;
};

/// Adds up a count, which is a member of SampleCounts or a function of them.
template <typename Count>
Occurrence occurrence(const CheckedModel& model, Count count)
{
    Occurrence found;
    found.dataSetCount = model.dataSets.size();
    for (int dataSet = 0; dataSet < model.dataSets.size(); ++dataSet) {
        const SampleCounts& counts = model.dataSets.at(dataSet);
        const auto here = qint64(std::invoke(count, counts));
        found.count += here;
        found.samples += counts.samples;
        found.dataSets += int(here > 0);
        if (here > found.worstCount) {
            found.worst = dataSet;
            found.worstCount = here;
            found.worstSamples = counts.samples;
        }
    }
    return found;
}

/// " in 12 of 20 data sets"; nothing for a single data set.
QString placeText(const Occurrence& found)
{
    if (found.dataSetCount < 2) {
        return {};
    }
    if (found.dataSets == 1) {
        return QString(" in data set %1").arg(found.worst);
    }
    return found.dataSets == found.dataSetCount
               ? QString(" in all %1 data sets").arg(found.dataSetCount)
               : QString(" in %1 of %2 data sets").arg(found.dataSets).arg(found.dataSetCount);
}

/// "317 of 1001 samples (31.7 %) did not converge", with the data sets where several are.
QString shareText(const Occurrence& found, const QString& what)
{
    const qint64 samples = found.dataSets == 1 ? found.worstSamples : found.samples;
    QString text = QString("%1 of %2 (%3 %) %4%5")
                       .arg(QString::number(found.count), counted(samples, "sample"),
                            QString::number(100.0 * double(found.count) / double(samples), 'g', 3),
                            what, placeText(found));
    if (found.dataSets > 1) {
        text += QString(", the largest number in data set %1 (%2)")
                    .arg(found.worst)
                    .arg(found.worstCount);
    }
    return text;
}

/// Reports the samples that show something, and returns whether there are any. what continues "317
/// of 1001 samples".
template <typename Count>
bool addShare(CheckedModel& model, Kind kind, const QString& what, Count count)
{
    const Occurrence found = occurrence(model, count);
    if (found.count > 0) {
        model.findings.append(
            {kind, found.count, shareText(found, what),
             QString("%1 of %2 %3").arg(counted(found.count, "sample"), model.name, what)});
    }
    return found.count > 0;
}

/// Reports what concerns whole data sets: flag is 1 for those.
template <typename Flag>
void addDataSets(CheckedModel& model, Kind kind, const QString& text, Flag flag)
{
    const Occurrence found = occurrence(model, flag);
    if (found.count > 0) {
        model.findings.append(
            {kind, found.count, text + placeText(found), model.name + ": " + text});
    }
}

/// Reports a number of things other than samples.
void addNumber(CheckedModel& model, Kind kind, const QString& text, qint64 SampleCounts::*count)
{
    const Occurrence found = occurrence(model, count);
    if (found.count > 0) {
        const QString filled = text + ": " + QString::number(found.count);
        model.findings.append(
            {kind, found.count, filled + placeText(found), model.name + ": " + filled});
    }
}

void addFinding(CheckedModel& model, Kind kind, const QString& text)
{
    model.findings.append({kind, 0, text, model.name + ": " + text});
}

QString nameAt(const CheckedModel& model, int column)
{
    const QString name = model.names.value(column - 1);
    return QString("column %1").arg(column)
           + (name.isEmpty() ? QString() : ", named " + shortName(name));
}

/// Whether the samples can be looked at any further.
bool checkReadable(CheckedModel& model)
{
    for (const QString& finding : unreadFindings(model.unread)) {
        addFinding(model, Kind::Unreadable, finding);
    }
    const QChar separator = model.heading.foreignSeparator;
    if (model.dataSets.isEmpty()) {
        addFinding(model, Kind::Unreadable, "no data set was read");
    } else if (!separator.isNull()) {
        addFinding(model, Kind::Unreadable,
                   QString("columns are separated by %1, not by commas, and cannot be read")
                       .arg(separator == ';' ? "semicolons" : "tabs"));
    } else if (model.width == 0) {
        addFinding(model, Kind::Unreadable, "no samples");
    } else if (model.width == 1) {
        addFinding(model, Kind::Unreadable, "there is only one column");
    } else {
        addDataSets(model, Kind::Unreadable, "no samples",
                    [](const SampleCounts& counts) { return counts.samples == 0; });
        return true;
    }
    return false;
}

void addSampleFact(CheckedModel& model, bool zeroSeen)
{
    const SampleCounts& any = model.dataSets.first();
    qint64 fewest = any.samples;
    qint64 most = any.samples;
    bool startsAtOne = false;
    for (const SampleCounts& counts : qAsConst(model.dataSets)) {
        fewest = qMin(fewest, counts.samples);
        most = qMax(most, counts.samples);
        startsAtOne = startsAtOne || counts.firstNumber == 1;
    }
    QString fact = rangeText(fewest, most) + (most == 1 ? " sample" : " samples");
    if (model.dataSets.size() > 1) {
        fact += QString(" in each of %1 data sets").arg(model.dataSets.size());
    } else if (any.lastNumber - any.firstNumber == double(any.samples - 1)) {
        fact += QString(", numbered %1 to %2").arg(any.firstNumber).arg(any.lastNumber);
    }
    const Occurrence fits =
        occurrence(model, [](const SampleCounts& counts) { return int(counts.firstNumber == 0); });
    if (fits.count > 0) {
        fact += ", the first is the original fit" + placeText(fits);
    } else if (startsAtOne && !zeroSeen) {
        fact += ", the first is the original fit or, if that is missing, sample 1";
    }
    model.facts.append(fact);
}

/// The heading against the data, and where the shown headings leave their columns.
void checkHeading(CheckedModel& model)
{
    if (model.heading.isNumeric) {
        addFinding(
            model, Kind::Unreadable,
            "the heading consists of numbers: the first row of data was read as the heading");
        return;
    }
    if (model.names.isEmpty()) {
        model.facts.append("there is no heading");
        return;
    }
    const QString names = counted(model.names.size(), "name");
    const QString columns = counted(model.width, "column");
    if (model.names.size() != model.width) {
        addFinding(model, Kind::Widths, "the heading has " + names + ", the samples " + columns);
    } else {
        model.facts.append("the heading has " + names + " for " + columns);
    }
    if (model.heading.firstCut < model.names.size()) {
        model.facts.append(QString("names with commas are cut; the headings shown are cut or "
                                   "shifted from column %1 on")
                               .arg(model.heading.firstCut + 1));
    }
}

void checkColumnSettings(CheckedModel& model, int colNumOFV, int colNumTHETA1)
{
    if (model.names.isEmpty()) {
        return;
    }
    const QString readOfv = nameAt(model, colNumOFV);
    const QString readTheta = nameAt(model, colNumTHETA1);
    const int ofv = columnNamed(model.names, "ofv") + 1;
    if (ofv == 0) {
        addFinding(model, Kind::WrongColumn, "no column is named ofv; weights read " + readOfv);
        return;
    }
    if (ofv != colNumOFV) {
        addFinding(model, Kind::WrongColumn,
                   QString("ofv is column %1, but weights read ").arg(ofv) + readOfv);
    } else {
        model.facts.append(QString("ofv is column %1, which weights read").arg(ofv));
    }
    if (ofv != endpointOfvColumn) {
        model.facts.append("ofv in endpoints reads " + nameAt(model, endpointOfvColumn));
    }
    const int theta = columnNamed(model.names, "THETA1") + 1;
    if (theta > 0 && theta != colNumTHETA1) {
        addFinding(model, Kind::WrongColumn,
                   QString("THETA1 is column %1, but endpoints read ").arg(theta) + readTheta);
    } else if (colNumTHETA1 <= ofv || colNumTHETA1 > model.width) {
        addFinding(
            model, Kind::WrongColumn,
            QString("the parameters follow ofv from column %1 on, but endpoints read THETA1 from ")
                    .arg(ofv + 1)
                + readTheta);
    }
}

void checkConvergence(CheckedModel& model)
{
    addShare(model, Kind::NoOfv, "had no OFV", &SampleCounts::withoutOfv);
    addDataSets(model, Kind::FirstRow, "the original fit did not converge",
                &SampleCounts::fitFailed);
    const bool failed =
        addShare(model, Kind::NotConverged, "did not converge", &SampleCounts::notConverged);
    const bool open = addShare(model, Kind::NotConverged, "did not report whether they converged",
                               &SampleCounts::unknownConvergence);
    const bool near =
        addShare(model, Kind::NearBoundary, "ended near a boundary", &SampleCounts::nearBoundary);
    if (model.columns.converged < 0) {
        model.facts.append("no column shows which samples converged");
    } else if (!failed && !open) {
        model.facts.append("all samples converged");
    }
    if (model.columns.boundary < 0) {
        model.facts.append("no column shows which samples are near a boundary");
    } else if (!near) {
        model.facts.append("no sample ended near a boundary");
    }
}

/// The original fit and the numbers of the samples.
void checkNumbering(CheckedModel& model, bool zeroSeen)
{
    const double lowestWithoutFit = zeroSeen ? 1 : 2;
    addDataSets(model, Kind::FirstRow, "the original fit is missing",
                [lowestWithoutFit](const SampleCounts& counts) {
                    return counts.firstNumber >= lowestWithoutFit;
                });
    addNumber(model, Kind::Numbering, "number of missing samples", &SampleCounts::missingNumbers);
    addNumber(model, Kind::Numbering, "repeated sample numbers", &SampleCounts::repeatedNumbers);
    addNumber(model, Kind::Numbering, "samples without a number", &SampleCounts::unnumbered);
}

QString correlationText(double correlation)
{
    return QString::number(std::round(correlation * 1000) / 1000 + 0.0, 'g', 3); // no "-0"
}

/// "(rank correlation 0.012 in rows 801 to 1001, 0.93 after moving its rows down by 1)"
QString correlationsText(const PairingFault& fault, bool namesDataSet)
{
    QString place;
    if (!fault.isWhole) {
        place = QString(" in rows %1 to %2")
                    .arg(fault.firstRow + 1)
                    .arg(fault.firstRow + fault.rowCount);
    } else if (!namesDataSet) {
        place = " over all samples";
    }
    if (namesDataSet) {
        place += QString(fault.isWhole ? " in data set %1" : " of data set %1").arg(fault.dataSet);
    }
    QString text = "(rank correlation " + correlationText(fault.correlation) + place;
    if (fault.shift != 0) {
        text += QString(", %1 after moving its rows %2 by %3")
                    .arg(correlationText(fault.restored), fault.shift > 0 ? "down" : "up")
                    .arg(std::abs(fault.shift));
    }
    return text + ')';
}

/// The OFV of the model against that of the others.
void checkOfvPairing(CheckedModel& model, const QVector<CheckedModel>& models)
{
    const RowPairing& pairing = model.pairing;
    const Occurrence found = occurrence(model, &SampleCounts::unpaired);
    if (found.count > 0) {
        const QString text =
            "OFV does not go with that of " + shortName(models.at(pairing.worst.partner).name);
        model.findings.append(
            {Kind::Pairing, found.count,
             text + ' ' + correlationsText(pairing.worst, found.dataSets > 1) + placeText(found),
             model.name + ": " + text});
    } else if (!std::isnan(pairing.lowest)) {
        const QStringList range{correlationText(pairing.lowest), correlationText(pairing.highest)};
        model.facts.append("OFV goes with that of the other models: rank correlation "
                           + (range.first() == range.last() ? range.first() : range.join(" to ")));
    }
}

/// The rows of the model against those of the first model, which they are paired with.
void checkPairing(CheckedModel& model, const CheckedModel& first)
{
    addShare(model, Kind::Pairing,
             "stood in a row with another sample number than in " + shortName(first.name),
             &SampleCounts::mispaired);
    QString text = "a different number of samples than " + shortName(first.name);
    if (model.dataSets.size() == 1) {
        text += QString(" (%1, not %2)")
                    .arg(model.dataSets.first().samples)
                    .arg(first.dataSets.value(0).samples);
    }
    addDataSets(model, Kind::Pairing, text, &SampleCounts::unevenlyPaired);
    if (model.dataSets.size() != first.dataSets.size()) {
        addFinding(model, Kind::DataSets,
                   counted(model.dataSets.size(), "data set")
                       + QString(", not %1 as in ").arg(first.dataSets.size())
                       + shortName(first.name));
    }
    addDataSets(model, Kind::DataSets, "the same samples as in the data set before",
                &SampleCounts::repeatsPrevious);
}

void checkWidths(CheckedModel& model)
{
    const int width = model.width;
    QVector<int> others;
    for (const SampleCounts& counts : qAsConst(model.dataSets)) {
        others += counts.widths.keys().toVector();
    }
    others.removeAll(width);
    if (others.isEmpty()) {
        return;
    }
    const auto [narrowest, widest] = std::minmax_element(others.begin(), others.end());
    addShare(model, Kind::Widths,
             QString("had another number of columns than %1 (%2)")
                 .arg(QString::number(width), rangeText(*narrowest, *widest)),
             [width](const SampleCounts& counts) {
                 return counts.samples - counts.widths.value(width);
             });
}

} // namespace

void checkModel(CheckedModel& model, const CheckContext& context)
{
    if (checkReadable(model)) {
        addSampleFact(model, context.zeroSeen);
        checkHeading(model);
        checkColumnSettings(model, context.colNumOFV, context.colNumTHETA1);
        checkPairing(model, context.models.first());
        checkOfvPairing(model, context.models);
        checkConvergence(model);
        checkNumbering(model, context.zeroSeen);
        checkWidths(model);
    }
    std::stable_sort(model.findings.begin(), model.findings.end(),
                     [](const Finding& a, const Finding& b) { return a.kind < b.kind; });
}
