// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/studyfiles.h"

#include <QFile>

#include <cmath>

QString StudyFiles::write(const QString& name, const QByteArray& content) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("cannot write %s", qPrintable(file.fileName()));
    }
    return file.fileName();
}

QString StudyFiles::writeRawResults(const QString& name, const QVector<QVector<double>>& rows) const
{
    QByteArray heading = R"("model","problem","subproblem","covariance_step_run",)"
                         R"("minimization_successful")";
    for (int column = 6; column < 20; ++column) {
        heading += ",\"run_column_" + QByteArray::number(column) + '"';
    }
    heading += ",\"ofv\"";

    QByteArray lines;
    int thetas = 0;
    for (int sample = 0; sample < rows.size(); ++sample) {
        lines +=
            '\n' + QByteArray::number(sample) + ",1,1,0,1,0,0,0,0,0,0,0,0,4.1,NA,FO,0:00:00,0,0";
        for (const double value : rows.at(sample)) {
            lines += ',' + (std::isnan(value) ? "NA" : QByteArray::number(value, 'g', 17));
        }
        for (; thetas < rows.at(sample).size() - 1; ++thetas) {
            heading += ",\"THETA" + QByteArray::number(thetas + 1) + '"';
        }
    }
    return write(name, heading + lines + '\n');
}
