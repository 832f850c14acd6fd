// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_STUDYFILES_H
#define VELMORA_TESTS_SUPPORT_STUDYFILES_H

#include <QFile>
#include <QTemporaryDir>
#include <QVector>

/// The content of a file; "unreadable" if it cannot be read.
inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "unreadable";
}

/// A folder of small study files, removed with the object.
class StudyFiles
{
public:
    /// The path of a file in the folder; without a name, of the folder itself.
    QString path(const QString& name = {}) const
    {
        return name.isEmpty() ? folder.path() : folder.filePath(name);
    }

    /// Writes a file with this content and returns its path.
    QString write(const QString& name, const QByteArray& content) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("cannot write %s", qPrintable(file.fileName()));
        }
        return file.fileName();
    }

    /// Writes bootstrap results: quoted column names, 19 columns about the run, then each
    /// row's numbers as ofv (column 20), THETA1, THETA2 and so on, as many as in the first
    /// row. Returns the file's path.
    QString writeRawResults(const QString& name, const QVector<QVector<double>>& rows) const
    {
        QByteArray text = "\"model\"";
        for (int column = 2; column < 20; ++column) {
            text += ",\"run_column_" + QByteArray::number(column) + '"';
        }
        text += ",\"ofv\"";
        for (int theta = 1; theta < rows.value(0).size(); ++theta) {
            text += ",\"THETA" + QByteArray::number(theta) + '"';
        }
        for (const QVector<double>& row : rows) {
            text += "\n0,1,1,0,1,0,0,0,0,0,0,0,0,4.1,NA,FO,0:00:00,0,0";
            for (const double value : row) {
                text += ',' + QByteArray::number(value, 'g', 17);
            }
        }
        return write(name, text + '\n');
    }

private:
    QTemporaryDir folder;
};

#endif
