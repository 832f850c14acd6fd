// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_BATCHRUN_H
#define VELMORA_TESTS_SUPPORT_BATCHRUN_H

#include <QProcess>
#include <QRegularExpression>

/// A finished shell command: its exit code and its texts, without the folders of files.
struct BatchRun
{
    BatchRun(const QString& folder, const QString& command)
    {
        qputenv("PATH", VELMORA_BINARIES ":/usr/bin:/bin");
        QProcess process;
        process.setWorkingDirectory(folder);
        process.start("sh", {"-c", command});
        if (process.waitForFinished() && process.exitStatus() == QProcess::NormalExit) {
            code = process.exitCode();
        }
        out = process.readAllStandardOutput();
        error = process.readAllStandardError();
        error.remove(folder + '/').remove(VELMORA_EXAMPLES "/simulation/");
    }

    /// True if it failed with this code and this line, in which "*" stands for anything. Warns if
    /// not.
    bool failed(int expectedCode, const QString& line) const
    {
        QString pattern = QRegularExpression::escape("velmora-batch: " + line + '\n');
        pattern = QRegularExpression::anchoredPattern(pattern.replace("\\*", "[^\n]*"));
        const bool isSo = code == expectedCode && error.contains(QRegularExpression(pattern));
        if (!isSo) {
            qWarning("%d, %s", code, qPrintable(error));
        }
        return isSo;
    }

    int code = -1; ///< stays -1 after a crash
    QByteArray out;
    QString error;
};

#endif
