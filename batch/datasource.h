// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_DATASOURCE_H
#define VELMORA_BATCH_DATASOURCE_H

#include "analysis/study.h"
#include "batch/settings.h"
#include "io/projectfile.h"
#include "io/sourcefile.h"

/// Where the bootstrap results of a run come from: files of one data set, a folder with many, or
/// a project. Files are read when their data set has its turn, and let go.
class DataSource
{
public:
    /// Looks for the files that the settings name, and reads headings, or the project. What is
    /// missing or does not fit ends the run.
    explicit DataSource(const BatchSettings& settings);

    int dataSetCount() const { return paths.isEmpty() ? projectDataSets : paths.first().size(); }
    int modelCount() const { return names.size(); }
    const QStringList& modelNames() const { return names; }
    const QVector<QStringList>& headings() const { return headingPieces; }

    /// The folder or the project, for reports.
    const QString& place() const { return placeName; }

    /// Names of the models' files for reports, with * for the number of the data set.
    const QStringList& fileNames() const { return templates; }

    /// The items of the project; none of other sources.
    const DecodedProject& project() const { return decoded; }
    bool isProject() const { return paths.isEmpty(); }

    /// The files that a data set is read from, [model]; without path where a model repeats its
    /// data set before. Of a project the file itself, with each data set.
    QVector<SourceFile> files(int dataSet) const;

    /// Puts a data set's tables into the study, or takes them out of it. Those of a project are
    /// always there. A file that cannot be read to its end ends the run.
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
    QVector<QStringList> paths; ///< [model][dataSet]; empty of a project
    QStringList templates;
    QString placeName;
    DecodedProject decoded;
    SourceFile projectFile;
    int projectDataSets = 0;
};

/// Ends the run unless the path is a file that can be read. option is what named it.
void demandFile(const QString& path, const QString& option);

#endif
