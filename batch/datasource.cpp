// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/datasource.h"

#include "batch/error.h"
#include "io/csv.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

/// The names of the files in a folder, as the window proposes them.
QString fileName(int model, const QString& dataSet)
{
    return QString("raw_results_estimation_model%1_data%2.csv").arg(model).arg(dataSet);
}

QString filePath(const QString& folder, int model, int dataSet)
{
    return folder + '/' + fileName(model, QString::number(dataSet));
}

/// The piece of the file's name between "raw_results_" and ".csv".
QString modelNameOf(const QString& path)
{
    return path.section('/', -1).split("raw_results_").last().split(".csv").first();
}

QStringList headingOfFile(const QString& path)
{
    QStringList unread;
    QStringList pieces = csvWithHeaderReadHeader(path, &unread);
    if (!unread.isEmpty()) {
        fail(QString("%1 cannot be read.").arg(path));
    }
    return pieces;
}

Table tableOfFile(const QString& path)
{
    QStringList unread;
    demandFile(path, {});
    const Table table = csvWithHeaderReadToDouble(path, &unread);
    if (!unread.isEmpty()) {
        fail(QString("%1 cannot be read to its end.").arg(path));
    }
    return table;
}

} // namespace

void demandFile(const QString& path, const QString& option)
{
    const QFileInfo info(path);
    const QString what = option.isEmpty() ? path : option + ": " + path;
    if (!info.exists()) {
        fail(QString("%1 does not exist.").arg(what));
    }
    if (!info.isFile()) {
        fail(QString(info.isDir() ? "%1 is a folder, not a file." : "%1 is not a regular file.")
                 .arg(what));
    }
    if (!info.isReadable()) {
        fail(QString("%1 cannot be read: permission denied.").arg(what));
    }
}

DataSource::DataSource(const BatchSettings& settings)
{
    const int given =
        int(settings.has("project")) + int(settings.has("models")) + int(settings.has("folder"));
    if (given != 1) {
        rejectUsage(given == 0 ? "There are no data: name a project, or give --models or --folder."
                               : "Give only one of a project, --models and --folder.");
    }
    if (settings.has("project")) {
        readProject(settings.textOf("project"));
    } else if (settings.has("models")) {
        findFiles(settings.files("models"));
    } else {
        findFolder(settings.textOf("folder"));
    }
}

void DataSource::findFiles(QStringList files)
{
    files.sort(Qt::CaseSensitive); // as the window does
    placeName = files.first().section('/', 0, -2);
    for (const QString& path : qAsConst(files)) {
        demandFile(path, "--models");
        if (!paths.isEmpty() && paths.constLast().first() == path) {
            rejectUsage(QString("--models names %1 twice.").arg(path));
        }
        paths.append(QStringList(path));
        names.append(modelNameOf(path));
        templates.append(path.section('/', -1));
    }
    readHeadings();
}

void DataSource::findFolder(const QString& folder)
{
    placeName = folder;
    if (!QFileInfo(folder).isDir()) {
        fail(QString("--folder: %1 is not a folder.").arg(folder));
    }
    int count = 0;
    while (QFile::exists(filePath(folder, 0, count))) {
        ++count;
    }
    fileGap = gapAt(count, folder, fileName(0, {}).section('.', 0, 0), ".csv");
    for (int model = 0; QFile::exists(filePath(folder, model, 0)); ++model) {
        QStringList ofModel;
        for (int dataSet = 0; dataSet < count; ++dataSet) {
            // A model that was fitted to fewer data sets repeats its last one.
            const QString path = filePath(folder, model, dataSet);
            ofModel.append(QFile::exists(path) ? path : ofModel.constLast());
            demandFile(ofModel.constLast(), "--folder");
        }
        paths.append(ofModel);
        templates.append(fileName(model, "*"));
    }
    if (paths.isEmpty()) {
        fail(QString("--folder: %1 does not exist.").arg(filePath(folder, 0, 0)));
    }
    names = numberedModelNames(paths.size());
    readHeadings();
    const auto other =
        std::find_if(paths.first().begin(), paths.first().end(), [this](const QString& path) {
            return headingOfFile(path) != headingPieces.constFirst();
        });
    if (other != paths.first().end()) {
        fail(QString("The headings of %1 differ from those of data set 0 of its model.")
                 .arg(*other));
    }
}

void DataSource::readHeadings()
{
    for (const QStringList& ofModel : qAsConst(paths)) {
        headingPieces.append(headingOfFile(ofModel.first()));
    }
}

void DataSource::readProject(const QString& path)
{
    demandFile(path, "project");
    placeName = path;
    projectFile = sourceFile(path);
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        decoded = ::readProject(file);
    }
    if (file.error() != QFileDevice::NoError) {
        fail(QString("%1 cannot be read: %2.").arg(path, file.errorString()));
    }
    if (decoded.items.rawResults.isEmpty()) {
        fail(QString("%1 is not a project with bootstrap results.").arg(path));
    }
    headingPieces = decoded.items.rawResultsHeaders;
    projectDataSets = decoded.items.rawResults.first().size();
    names = numberedModelNames(decoded.items.rawResults.size());
}

QVector<SourceFile> DataSource::files(int dataSet) const
{
    if (isProject()) {
        return {projectFile};
    }
    QVector<SourceFile> found;
    for (const QStringList& ofModel : paths) {
        const QString path = ofModel.value(dataSet);
        const bool repeats = dataSet > 0 && ofModel.value(dataSet - 1) == path;
        found.append(repeats ? SourceFile() : sourceFile(path));
    }
    return found;
}

void DataSource::load(Study& study, int dataSet) const
{
    for (int model = 0; model < paths.size(); ++model) {
        study.rawResults[model][dataSet] = tableOfFile(paths.at(model).at(dataSet));
    }
}

void DataSource::release(Study& study, int dataSet) const
{
    for (int model = 0; model < paths.size(); ++model) {
        study.rawResults[model][dataSet] = Table(); // clear() would keep the room for its rows
    }
}

QVector<Table> DataSource::tables(const Study& study, int dataSet) const
{
    QVector<Table> found;
    for (const QVector<Table>& dataSets : study.rawResults) {
        found.append(dataSets.value(dataSet));
    }
    return found;
}
