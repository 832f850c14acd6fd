// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// A project file, opened and saved by the window, which then computes with it.

#include "app/window/mainwindow.h"
#include "fuzz/messages.h"
#include "fuzz/target.h"
#include "tests/support/projectbytes.h"
#include "tests/support/studyfiles.h"

#include <QApplication>
#include <QtWidgets>

namespace {

QString chosenPath;

/// Aborts long work and closes message boxes.
void answerDialog()
{
    QWidget* const dialog = QApplication::activeModalWidget();
    if (auto* progress = qobject_cast<QProgressDialog*>(dialog)) {
        progress->cancel();
    } else if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
        box->accept();
    }
}

void trigger(MainWindow& window, const char* action)
{
    window.findChild<QAction*>(action)->trigger();
}

QByteArray savedBytes(MainWindow& window, const StudyFiles& files)
{
    chosenPath = files.path("saved");
    trigger(window, "actionSave");
    QFile file(chosenPath);
    require(file.open(QIODevice::ReadOnly), "the analysis is saved");
    return file.readAll();
}

/// The imported results in a project file.
QByteArray resultBytes(const QByteArray& project)
{
    ProjectItems items;
    readItemCount(project, items);
    const ProjectBytes written(items);
    return written.bytes.left(written.ends.at(2));
}

void open(MainWindow& window, const StudyFiles& files, const QByteArray& project)
{
    chosenPath = files.write("project", project);
    trigger(window, "actionOpen");
}

} // namespace

// These replace Qt's dialogs, so that building and answering them takes no time.

QString QFileDialog::getOpenFileName(QWidget* /*parent*/, const QString& /*caption*/,
                                     const QString& /*dir*/, const QString& /*filter*/,
                                     QString* /*selectedFilter*/, Options /*options*/)
{
    return chosenPath;
}

QString QFileDialog::getSaveFileName(QWidget* /*parent*/, const QString& /*caption*/,
                                     const QString& /*dir*/, const QString& /*filter*/,
                                     QString* /*selectedFilter*/, Options /*options*/)
{
    return chosenPath;
}

int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static QApplication application(*argc, *argv);
    static QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, answerDialog);
    timer.start(1);
    qInstallMessageHandler(failOnWarning);
    return 0;
}

int LLVMFuzzerTestOneInput(const uchar* data, size_t size)
{
    static const StudyFiles files;
    MainWindow window;
    const QByteArray project(reinterpret_cast<const char*>(data), int(size));
    open(window, files, project);
    QByteArray saved = savedBytes(window, files);
    require(resultBytes(saved) == resultBytes(project), "no result is lost or made up");
    for (int round = 0; round < 2; ++round) { // the first may add rows for missing items
        const QByteArray before = saved;
        open(window, files, saved);
        saved = savedBytes(window, files);
        require(round == 0 || saved == before, "saving and opening change nothing");
    }

    auto* toolBox = window.findChild<QToolBox*>("__mainToolBox");
    for (int page = 0; page < toolBox->count(); ++page) {
        toolBox->setCurrentIndex(page);
    }
    for (auto* table : window.findChildren<QTableWidget*>()) {
        table->setCurrentCell(table->rowCount() - 1, table->columnCount() - 1);
    }
    for (const char* button : {"_3_pb_calculatePoS", "_4_pb_startCalculation"}) {
        window.findChild<QPushButton*>(button)->click();
    }
    savedBytes(window, files);
    return 0;
}
