// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_STUDYFILES_H
#define VELMORA_TESTS_SUPPORT_STUDYFILES_H

#include <QTemporaryDir>
#include <QVector>

/// A folder of small study files that is gone with the object.
class StudyFiles
{
public:
    /// The path of a file in the folder; of the folder itself without a name.
    QString path(const QString& name = {}) const
    {
        return name.isEmpty() ? folder.path() : folder.filePath(name);
    }

    /// Writes a file as it stands; gives its path.
    QString write(const QString& name, const QByteArray& content) const;

    /// Writes bootstrap results: quoted column names, 19 columns about the run, then each
    /// row's numbers as ofv (column 20), THETA1, THETA2 and so on; NaN becomes NA. The
    /// heading is as wide as the longest row. Gives the file's path.
    QString writeRawResults(const QString& name, const QVector<QVector<double>>& rows) const;

private:
    QTemporaryDir folder;
};

#endif
