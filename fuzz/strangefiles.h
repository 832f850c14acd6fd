// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_FUZZ_STRANGEFILES_H
#define VELMORA_FUZZ_STRANGEFILES_H

#include "tests/support/projectbytes.h"
#include "tests/support/studyfiles.h"

#include <QDir>

#include <cmath>
#include <sys/stat.h>

/// A folder of files that a user may choose: studies, and others.
class StrangeFiles
{
public:
    StrangeFiles()
    {
        writeStudies();
        writeBrokenTables();
        writeTruth();
        writeProjects();
        writeNoFiles();
    }

    QString path(const QString& name) const { return files.path(name); }

    /// All files, relative to the folder.
    QStringList names() const
    {
        QStringList found;
        for (const QString& folder : folders()) {
            for (const QString& name :
                 QDir(path(folder)).entryList(QDir::Files | QDir::System | QDir::Hidden)) {
                found.append(folder + '/' + name);
            }
        }
        return found;
    }

    static QStringList folders() { return {".", "study", "headers", "gaps", "empty", "missing"}; }

    /// The content of the project file "small"; every item is set.
    static ProjectItems smallItems()
    {
        ProjectItems items;
        items.rawResults = {{{{1, 2}, {1.5, 3}}}, {{{2, 1}, {1, 0.5}}}};
        items.rawResultsHeaders = {{"ofv", "THETA1"}, {"ofv", "THETA1"}};
        items.possibleDoses = "0,1,2";
        items.endPointExpressions = QStringList{"COL2*DOSE", "COL1+DOSE"};
        items.omegas = {{}, {}};
        items.omegaColumns = {{}, {}};
        items.weightExpressions = QStringList{"(0-COL1)", "(0-COL2)"};
        items.logScale = true;
        items.lowerBound = "1";
        items.upperBound = "4";
        items.doseChoice = {{1, 2}};
        items.doseChoiceLabels = QStringList{"50", "90"};
        items.doseChoiceVector = {50, 90};
        return items;
    }

private:
    static QVector<QVector<double>> samples(int model, int dataSet, int count)
    {
        QVector<QVector<double>> rows;
        for (int sample = 0; sample < count; ++sample) {
            const double noise = std::sin(sample * 1.7 + model * 0.3 + dataSet);
            rows.append({100 + 5 * noise, 1 + 0.1 * noise, 0.5 + model - 0.1 * noise, 3 + noise});
        }
        return rows;
    }

    void writeStudies()
    {
        for (const QString& folder : folders().mid(1, 4)) {
            QDir().mkpath(path(folder));
        }
        for (const char* model : {"emax", "linear", "sig emax", "100%_d\xc3\xb6se"}) {
            files.writeRawResults(QString("raw_results_%1.csv").arg(model), samples(1, 0, 60));
        }
        for (int model = 0; model < 3; ++model) {
            for (int dataSet = 0; dataSet < 4; ++dataSet) {
                const QString name =
                    QString("/raw_results_estimation_model%1_data%2.csv").arg(model).arg(dataSet);
                files.writeRawResults("study" + name, samples(model, dataSet, 150));
                if (model != 1 && dataSet != 1) { // no first data set, and a gap
                    files.writeRawResults("gaps" + name, samples(model, dataSet, 5));
                }
                files.write("headers" + name, dataSet == 1 ? "other\n1\n" : "a,b\n1,2\n3,4\n");
            }
        }
    }

    void writeBrokenTables()
    {
        files.write("nothing.csv", "");
        files.write("heading.csv", "\"model\",\"ofv\"\n");
        files.write("ragged.csv", "a,b,c\n1\n\n1,2,3,4,5\n,\nNA,inf,-inf,nan,1e400,1e308\n");
        files.write("utf16.csv", QByteArray("\xff\xfe"
                                            "a\0,\0b\0\n\0"
                                            "7\0,\0"
                                            "8\0\n\0",
                                            18));
        files.write("binary.csv", QByteArray("\0\x01\xff\n,\0\r\r\n\x80,5", 12));
        files.write("wide.csv",
                    QByteArray("x,").repeated(3000) + '\n' + QByteArray("1,").repeated(3000));
        files.write("long.csv", "v\n" + QByteArray("1e-300\n-2e300\n").repeated(1500));
        files.write("large.csv",
                    QByteArray(QByteArray("0.5,").repeated(1009) + "7\n").repeated(1000));
        files.write("sparse.csv",
                    "v\n" + QByteArray(18000, '\n') + QByteArray("1,").repeated(9000));
        files.write("digits.csv", "n\n" + QByteArray(100000, '9') + "\n5\n");
    }

    void writeTruth()
    {
        for (int dataSet = 0; dataSet < 4; ++dataSet) {
            files.writeRawResults(QString("sim%1.csv").arg(dataSet), samples(1, dataSet, 1));
        }
        files.write("truerow.csv", "0,1,2,1\n");
        files.write("truecolumn.csv", "0\n1\n2\n0\n");
        files.write("truewrong.csv", "7,-1,x,1e300\n");
        files.write("truemeds.csv", "0,2\n1,3.5\n2,100\n0,NA\n");
    }

    void writeProjects()
    {
        const QByteArray small = ProjectBytes(smallItems()).bytes;
        files.write("small", small);
        files.write("cut", small.left(small.size() / 2));
        files.write("resultsonly", small.left(ProjectBytes(smallItems()).ends.at(2)));
        files.write("damaged", QByteArray(small).replace(200, 8, "\xff\xff\xff\xff\x7f\xf8\0\0"));
        ProjectItems uneven = smallItems();
        uneven.rawResults = {{}, {{{5}, {}}, {}}, {{}}};
        uneven.rawResultsHeaders.removeLast();
        uneven.endPointExpressions = QStringList{"ETA2", "ETA1*ETA1", "((", "too many"};
        uneven.omegas = {{{1, 2}, {3}}, {{qQNaN()}}};
        uneven.omegaColumns = {{{5, 5}, {5, 5}}, {}};
        uneven.doseChoice = {{}, {1, 2, 3}, {qInf()}};
        uneven.doseChoiceCash = {uneven.rawResults.at(1), {}};
        files.write("uneven", ProjectBytes(uneven).bytes);
    }

    void writeNoFiles()
    {
        QDir().mkpath(path("folder.csv"));
        if (mkfifo(qPrintable(path("pipe.csv")), 0600) != 0
            || !QFile::link("/dev/full", path("device"))) {
            qFatal("cannot make special files");
        }
    }

    const StudyFiles files{};
};

#endif
