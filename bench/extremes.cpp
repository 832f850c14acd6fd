// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the window with very large inputs and prints a table: the time of each action, and the
// peak memory of the program. Each action runs in a program of its own.

#include "bench/folderimport.h"
#include "bench/inputs.h"
#include "bench/memory.h"
#include "tests/support/dialogdriver.h"

#include <QLoggingCategory>
#include <QProcess>

#include <cstdio>
#include <functional>
#include <unistd.h>

namespace {

constexpr int million = 1'000'000;

/// A shown window with files for it.
struct Trial
{
    StudyFiles files;
    StudyWindow window;

    void import(const QString& path)
    {
        window.showPage(ImportPage);
        DialogDriver dialogs;
        dialogs.answerFiles({path});
        window.press("__pb_importFbF");
        require(window.widget<QTableWidget>("_1_tw_endPoints")->rowCount() > 0, "nothing imported");
    }

    void open(const QString& path)
    {
        DialogDriver dialogs;
        dialogs.answerFiles({path});
        QTest::keyClick(&window.window(), Qt::Key_O, Qt::ControlModifier);
        require(window.widget<QTableWidget>("_1_tw_endPoints")->rowCount() > 0, "nothing opened");
    }

    /// Replaces the text of a cell at once, as from the clipboard.
    void enter(const char* table, int row, const QString& text)
    {
        auto* cells = window.widget<QTableWidget>(table);
        const QPoint place = user::clickCell(cells, row, 0);
        QTest::mouseDClick(cells->viewport(), Qt::LeftButton, {}, place);
        enter(qobject_cast<QLineEdit*>(QApplication::focusWidget()), text);
    }

    static void enter(QLineEdit* edit, const QString& text)
    {
        require(edit != nullptr, "no editor");
        edit->setText(text);
        QTest::keyClick(edit, Qt::Key_Return);
        QCoreApplication::processEvents(); // a cell takes its text, and all is painted
    }

    QString projectFile(const ProjectItems& items) const
    {
        QFile file(files.path("project"));
        require(file.open(QIODevice::WriteOnly) && writeProject(items, &file), "cannot write");
        return file.fileName();
    }
};

using Action = std::function<void()>;

/// Prepares a trial and returns the action to measure.
using Prepare = std::function<Action(Trial&)>;

Action importOf(Trial& trial, const QByteArray& content)
{
    const QString path = trial.files.write("raw_results_model1.csv", content);
    return [&trial, path] { trial.import(path); };
}

QByteArray rowsOf200Mb()
{
    InputNumbers numbers;
    return rawResultsText(bootstrapTable(numbers, 370'000));
}

Action importFolderOf200Mb(Trial& trial)
{
    const StudySize size{4, 100, 1000};
    writeFolder(trial.files, size);
    showFolderImport(trial.window);
    return [&trial, size] { importFolder(trial.window, trial.files, size); };
}

QByteArray manyColumns()
{
    QByteArray heading;
    QByteArray row;
    for (int column = 1; column <= million; ++column) {
        heading += "\"c" + QByteArray::number(column) + "\",";
        row += "1,";
    }
    return heading.chopped(1) + '\n' + row.chopped(1) + '\n';
}

Action editThetaColumn(Trial& trial)
{
    importOf(trial, manyColumns())();
    trial.window.showPage(ImportPage);
    return
        [&trial] { user::typeText(trial.window.widget<QLineEdit>("_m1_le_colNumTHETA1"), "30"); };
}

Action openEmptyModels(Trial& trial)
{
    ProjectItems items;
    items.rawResults.resize(100'000);
    return [&trial, path = trial.projectFile(items)] { trial.open(path); };
}

Action openManyEtas(Trial& trial)
{
    ProjectItems items;
    for (int model = 0; model < 300; ++model) {
        items.rawResults.append({{{1, 1}}});
        items.endPointExpressions.append("ETA999");
        items.omegas.append(QVector<QVector<double>>());
        items.omegaColumns.append(QVector<QVector<int>>());
    }
    return [&trial, path = trial.projectFile(items)] { trial.open(path); };
}

Action openLongExpression(Trial& trial)
{
    ProjectItems items;
    items.rawResults = {{{{1, 2}}}};
    items.rawResultsHeaders = {{"ofv", "THETA1"}};
    items.possibleDoses = "0,1";
    items.endPointExpressions = QStringList{QString("THETA1*DOSE+").repeated(million / 12) + '1'};
    items.omegas.resize(1);
    items.omegaColumns.resize(1);
    return [&trial, path = trial.projectFile(items)] {
        trial.open(path);
        const auto* cell = trial.window.widget<QTableWidget>("_1_tw_endPoints")->item(0, 0);
        require(cell->text().size() > million - 12, "the expression was not opened");
    };
}

/// Enters an endpoint expression.
Action enterEndpoint(Trial& trial, const QString& text)
{
    importOf(trial, "ofv,THETA1\n1,2\n3,4\n")();
    trial.window.showPage(EndpointPage);
    return [&trial, text] { trial.enter("_1_tw_endPoints", 0, text); };
}

Action editVariance(Trial& trial)
{
    enterEndpoint(trial, "THETA1+ETA999")();
    return [&trial] { trial.enter("_1_tw_etaDefinition", 0, "0.04"); };
}

Action chooseManyDoses(Trial& trial)
{
    InputNumbers numbers;
    importOf(trial, rawResultsText(bootstrapTable(numbers, 10)))();
    trial.window.showPage(EndpointPage);
    trial.enter("_1_tw_endPoints", 0, "THETA2*DOSE");
    Trial::enter(trial.window.widget<QLineEdit>("_1_le_possibleDoses"), "1:1:100000");
    trial.window.showPage(DosePage);
    Trial::enter(trial.window.widget<QLineEdit>("_4_le_probabilities"), "0.001:0.001:99.9");
    return [&trial] { trial.window.press("_4_pb_startCalculation"); };
}

Action copyManyCells(Trial& trial)
{
    InputNumbers numbers;
    importOf(trial, rawResultsText(bootstrapTable(numbers, 250'000)))();
    trial.window.showPage(ResultsPage);
    auto* table = trial.window.widget<QTableWidget>("_0_tw_RawResults");
    user::clickCell(table, 0, 0);
    return [table] {
        QTest::keyClick(table, Qt::Key_A, Qt::ControlModifier);
        user::chooseEntry(table, "Copy with full precision");
    };
}

struct Extreme
{
    const char* name;
    Prepare prepare;
};

QVector<Extreme> extremes()
{
    const auto content = [](QByteArray (*make)()) {
        return [make](Trial& trial) { return importOf(trial, make()); };
    };
    const auto endpoint = [](const QString& text) {
        return [text](Trial& trial) { return enterEndpoint(trial, text); };
    };
    return {
        {"import of one file of 200 MB", content(rowsOf200Mb)},
        {"the same with a character beyond ASCII",
         content([] { return rowsOf200Mb().replace(1, 1, "\u00fc"); })},
        {"import of 400 files, 200 MB in all", importFolderOf200Mb},
        {"import of a file with a million columns", content(manyColumns)},
        {"another column for THETA(1) in that file", editThetaColumn},
        {"opening a project of 100,000 empty models", openEmptyModels},
        {"opening a project of 300 models with 999 ETAs", openManyEtas},
        {"opening a project with an endpoint expression of a million characters",
         openLongExpression},
        {"an endpoint expression with 1,000 nested parentheses",
         endpoint(QString(1000, '(') + "THETA1" + QString(1000, ')'))},
        {"an endpoint expression with 999 ETAs, and their matrix", endpoint("THETA1+ETA999")},
        {"a variance in that matrix", editVariance},
        {"selection among 100,000 doses at 99,900 levels", chooseManyDoses},
        {"copy of 15 million cells with full precision", copyManyCells},
    };
}

void measure(const Extreme& extreme)
{
    Trial trial;
    const Action action = extreme.prepare(trial);
    double seconds = 0;
    memoryOf([&action, &seconds] {
        const Stopwatch watch(Clock::Wall);
        action();
        QCoreApplication::processEvents();
        seconds = watch.seconds();
    });
    std::printf("| %s | %.2f s | %.0f MB |\n", extreme.name, seconds, 1e-6 * peakMemory(getpid()));
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
    QLoggingCategory::setFilterRules("*.debug=false\n*.warning=false");
    const QApplication application(argc, argv);
    QLocale::setDefault(QLocale::c());
    const QVector<Extreme> all = extremes();
    if (argc == 2) {
        measure(all.value(QByteArray(argv[1]).toInt()));
        return 0;
    }
    std::puts("| action | time | memory |\n|---|---|---|");
    std::fflush(stdout);
    int failures = 0;
    for (int extreme = 0; extreme < all.size(); ++extreme) {
        failures +=
            QProcess::execute(QApplication::applicationFilePath(), {QString::number(extreme)}) == 0
                ? 0
                : 1;
    }
    return failures == 0 ? 0 : 1;
}
