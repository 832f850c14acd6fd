// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_DATASOURCE_H
#define VELMORA_BATCH_DATASOURCE_H

#include "analysis/study.h"
#include "batch/settings.h"
#include "io/numberedfiles.h"
#include "io/projectfile.h"
#include "io/sourcefile.h"

/// The source of a run's bootstrap results: files of one data set, a folder with many data sets,
/// or a project. Files are in memory only while the run works on their data set.
class DataSource
{
public:
    /// Looks for the files that the settings name and reads their headings, or the project. Files
    /// that are missing or do not fit end the run.
    explicit DataSource(const BatchSettings& settings);

    int dataSetCount() const { return paths.isEmpty() ? projectDataSets : paths.first().size(); }
    int modelCount() const { return names.size(); }
    const QStringList& modelNames() const { return names; }
    const QVector<QStringList>& headings() const { return headingPieces; }

    /// The path of the folder or the project, for reports.
    const QString& place() const { return placeName; }

    /// The names of the models' files, with * for the number of the data set, for reports.
    const QStringList& fileNames() const { return templates; }

    /// The gap in the numbers of a folder's data sets.
    const FileGap& gap() const { return fileGap; }

    /// The items of the project; none for other sources.
    const DecodedProject& project() const { return decoded; }
    bool isProject() const { return paths.isEmpty(); }

    /// The files that a data set is read from, [model]; without path if a model repeats its data
    /// set before. For a project: the project file, for each data set.
    QVector<SourceFile> files(int dataSet) const;

    /// Puts a data set's tables into the study, or takes them out. Those of a project are always
    /// there. A file that cannot be read to its end ends the run.
    void load(Study& study, int dataSet) const;
    void release(Study& study, int dataSet) const;

    /// The tables of a data set, [model].
    QVector<Table> tables(const Study& study, int dataSet) const;

private:
    void findFiles(QStringList files);
    void findFolder(const QString& folder);
    void readProject(const QString& path);
    void readHeadings();

    QStringList names;
    QVector<QStringList> headingPieces;
    QVector<QStringList> paths; ///< [model][dataSet]; empty for a project
    QStringList templates;
    QString placeName;
    FileGap fileGap;
    DecodedProject decoded;
    SourceFile projectFile;
    int projectDataSets = 0;
};

/// Ends the run unless the path is a readable file. option is the option that names it.
void demandFile(const QString& path, const QString& option);

#endif
