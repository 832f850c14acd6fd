// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/studywindow.h"

#include "tests/support/dialogdriver.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <qcustomplot.h>

StudyWindow::StudyWindow()
{
    user::show(shown);
}

StudyWindow::StudyWindow(const ProjectItems& study)
    : StudyWindow()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("study"));
    require(file.open(QIODevice::WriteOnly) && writeProject(study, &file),
            "cannot write the study");
    file.close();
    DialogDriver dialogs;
    dialogs.answerFiles({file.fileName()});
    QTest::keyClick(&shown, Qt::Key_O, Qt::ControlModifier);
    require(widget<QTableWidget>("_1_tw_endPoints")->rowCount() == study.rawResults.size(),
            "cannot open the study");
}

QVector<double> StudyWindow::curve(const char* plot) const
{
    const auto* chart = widget<QCustomPlot>(plot);
    QVector<double> values;
    if (chart->graphCount() > 0) {
        for (const QCPGraphData& point : *chart->graph(0)->data()) {
            values.append(point.value);
        }
    }
    return values;
}

void require(bool condition, const char* problem)
{
    if (!condition) {
        qFatal("%s", problem);
    }
}
