// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/folderimport.h"

#include "bench/inputs.h"
#include "tests/support/dialogdriver.h"

#include <QApplication>
#include <QFileDialog>
#include <QSpinBox>
#include <QTabWidget>

#include <optional>

namespace {

constexpr int simulationTab = 1;

/// Resumes the stopwatch when the file dialog closes.
class FileDialogClock : public QObject
{
public:
    explicit FileDialogClock(Stopwatch& stopped)
        : watch(stopped)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Hide && qobject_cast<QFileDialog*>(watched) != nullptr) {
            QCoreApplication::instance()->removeEventFilter(this);
            watch.resume();
        }
        return false;
    }

private:
    Stopwatch& watch;
};

} // namespace

QString folderFileName(int model, int dataSet)
{
    return QString("raw_results_estimation_model%1_data%2.csv").arg(model).arg(dataSet);
}

void writeFolder(const StudyFiles& files, const StudySize& size)
{
    InputNumbers numbers;
    QByteArray content;
    for (int dataSet = 0; dataSet < size.dataSets; ++dataSet) {
        if (dataSet % 5 == 0) {
            content = rawResultsText(bootstrapTable(numbers, size.samples));
        }
        for (int model = 0; model < size.models; ++model) {
            files.write(folderFileName(model, dataSet), content);
        }
    }
}

void showFolderImport(StudyWindow& window)
{
    window.showPage(ImportPage);
    window.widget<QTabWidget>("tabWidget")->setCurrentIndex(simulationTab);
}

void importFolder(StudyWindow& window, const StudyFiles& files, const StudySize& size,
                  Stopwatch* watch)
{
    DialogDriver dialogs;
    dialogs.answerFiles({files.path()});
    std::optional<FileDialogClock> clock;
    if (watch != nullptr) {
        clock.emplace(*watch);
    }
    window.press("__pb_import");
    require(window.widget<QSpinBox>("_0_sb_model")->maximum() == size.models - 1
                && window.widget<QSpinBox>("_0_sb_data")->maximum() == size.dataSets - 1,
            "the folder was not imported");
}
