// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// The chapter on data: files, samples, columns, and all findings.

#include "analysis/checkup/samplecounts.h"
#include "analysis/checkup/wording.h"
#include "report/chapters.h"

#include <QFileInfo>

namespace {

QString stateText(const FileCheck& check)
{
    switch (check.state) {
    case FileCheck::State::Same:
        return QString::fromLatin1(check.sha256);
    case FileCheck::State::Changed:
        return "has changed since it was read";
    case FileCheck::State::Gone:
        return "is gone";
    case FileCheck::State::Unreadable:
        break;
    }
    return "can no longer be read";
}

void addFiles(ReportDocument& document, const QVector<ReportedFile>& files)
{
    ReportTable table{"Files", {"Used for", "File", "Bytes", "SHA-256"}, "llrc", {}};
    QStringList folders;
    int others = 0;
    for (const ReportedFile& file : files) {
        const QFileInfo info(file.file.path);
        if (!folders.contains(info.path())) {
            folders.append(info.path());
        }
        others += int(file.check.state != FileCheck::State::Same);
        table.rows.append({file.use, documentName(info.fileName()),
                           file.file.size < 0 ? QString() : QString::number(file.file.size),
                           stateText(file.check)});
    }
    if (files.isEmpty()) {
        document.say("It is not known which files the data were read from.");
        return;
    }
    if (others > 0) {
        document.add(ReportParagraph{
            QString("%1 of %2 files cannot be compared with what was read: they are gone or have "
                    "changed since.")
                .arg(others)
                .arg(files.size()),
            Emphasis::Warning});
    }
    document.add(table);
    document.say("The files are in " + folders.join(", ")
                 + ". Sizes date from when the files were read, hashes from when this report was "
                   "written.");
}

/// "20: ofv"; the number alone if the column has no heading.
QString columnText(const QStringList& names, int column)
{
    const QString name = names.value(column - 1);
    return QString::number(column) + (name.isEmpty() ? QString() : ": " + documentName(name));
}

void addSamples(ReportDocument& document, const Study& study, const ImportCheckUp& checkUp)
{
    ReportTable table{"Samples, including the original fits",
                      {"Model", "Data sets", "Samples in each", "Samples", "Without OFV",
                       "Not converged", "Near a boundary", "OFV column", "THETA1 column"},
                      "lrrrrrrll",
                      {}};
    for (int model = 0; model < study.rawResults.size(); ++model) {
        const QStringList names = study.columnNamesOf(model);
        const SampleColumns columns = columnsByName(names, study.colNumOFV);
        const SampleSums counts = checkUp.models.value(model).samples;
        const auto known = [](int column, qint64 count) {
            return column < 0 ? QString("no column") : QString::number(count);
        };
        table.rows.append(
            {modelName(study.endPoints, model), QString::number(counts.dataSets),
             rangeText(counts.fewest, counts.most), QString::number(counts.samples),
             QString::number(counts.withoutOfv), known(columns.converged, counts.notConverged),
             known(columns.boundary, counts.nearBoundary), columnText(names, study.colNumOFV),
             columnText(names, study.colNumTHETA1)});
    }
    document.add(table);
}

void addCheckUp(ReportDocument& document, const ImportCheckUp& checkUp)
{
    document.add(ReportHeading{"Check-up of the import", 2});
    if (checkUp.models.isEmpty()) {
        document.say("There are no imported results.");
        return;
    }
    document.say(checkUp.summary + '.');
    QStringList texts;
    for (const ModelCheckUp& model : checkUp.models) {
        QStringList lines = model.text.split('\n');
        const QString name = lines.takeFirst();
        texts.append(documentName(name) + ": " + lines.join("; ").replace(":; - ", ": "));
    }
    document.add(ReportList{texts, Emphasis::None});
}

} // namespace

void addData(ReportDocument& document, const ReportContext& context)
{
    const ReportSource& source = context.inputs.source;
    document.add(ReportHeading{"Data"});
    addFiles(document, source.files);
    const Study& study = context.inputs.now.study;
    if (!study.rawResults.isEmpty()) {
        addSamples(document, study, source.checkUp);
    }
    document.say("Velmora pairs the rows of different models by position: it takes row 7 of every "
                 "file to come from the same resampled data.");
    addCheckUp(document, source.checkUp);
    document.add(ReportHeading{"All findings", 2});
    if (source.findings.isEmpty()) {
        document.say("Nothing was found.");
    }
    document.add(ReportList{source.findings, Emphasis::None});
}
