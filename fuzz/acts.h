// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_FUZZ_ACTS_H
#define VELMORA_FUZZ_ACTS_H

#include "tests/support/projectbytes.h"
#include "tests/support/windowtest.h"

#include <functional>

/// Something that a user does with files.
struct Act
{
    QString name;
    std::function<void()> perform;
    QStringList files;                  ///< files for its dialog; none if it has no dialog
    std::function<QByteArray()> result; ///< the resulting content of a file or of the window
    std::function<void()> prepare;      ///< prepares the act; may be missing
    /// True if a result is right after the program reported a fault. Without this function the
    /// result must be that from before the act.
    std::function<bool(const QByteArray& result, const QByteArray& whole)> isKept;
    /// Allocations of at least this many bytes are made to fail; 0 for none.
    unsigned long leastPiece = 0;
};

/// Takes files for the dialog of an act and notes what messages say.
class DialogAnswers : public QObject
{
public:
    /// Calls start when the dialog is gone, before the program uses the files.
    DialogAnswers(const QStringList& chosen, const std::function<void()>& start)
        : paths(chosen)
        , started(start)
    {
        connect(&timer, &QTimer::timeout, this, &DialogAnswers::look);
        timer.start(1);
    }

    QStringList messages;

private:
    void look()
    {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (dialog == nullptr || dialog->property("answered").toBool()
            || qobject_cast<QProgressDialog*>(dialog) != nullptr) {
            return;
        }
        dialog->setProperty("answered", true);
        if (const auto* message = qobject_cast<QMessageBox*>(dialog)) {
            if (!message->text().contains("already exists")) {
                messages.append(message->text());
            }
        } else {
            dialog->findChild<QLineEdit*>("fileNameEdit")->setText('"' + paths.join("\" \"") + '"');
            // The last of its children is destroyed last, when the dialog has done everything.
            connect(new QObject(dialog), &QObject::destroyed, this, started);
        }
        QTimer::singleShot(0, dialog->findChild<QDialogButtonBox*>()->buttons().first(),
                           &QAbstractButton::click);
    }

    QTimer timer;
    const QStringList paths;
    const std::function<void()> started;
};

/// A window with results, and the acts to try on it. They read and write files in a folder of
/// their own.
class ActWindow : public WindowTest
{
public:
    ActWindow()
    {
        openWindow();
        calculateDoses(0);
        the<QTableWidget>("_0_tw_RawResults")->selectAll();
        QDir().mkpath(work(""));
        writeTables();
        writeProjects();
    }

    QString work(const QString& name) const { return files.path("work/" + name); }
    QStringList workNames() const
    {
        return QDir(work("")).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

    /// Performs an act and returns what messages say meanwhile.
    static QStringList answered(
        const std::function<void()>& perform, const QStringList& paths,
        const std::function<void()>& start = [] {})
    {
        DialogAnswers dialogs(paths, start);
        if (paths.isEmpty()) {
            start();
        }
        perform();
        return dialogs.messages;
    }

    /// The reports about files that could not be read. Overwrites the clipboard.
    QStringList unread()
    {
        entry("CopyFindings")->trigger();
        return QApplication::clipboard()->text().split('\n').filter("could not be read to ");
    }

    /// Imports results that take some time and memory to save. Returns acts on them; the first
    /// one saves.
    QVector<Act> largeActs()
    {
        constexpr unsigned long largePiece = 1 << 16;
        const Table table(4000, QVector<double>{1, 2, 3, 4, 5});
        importStudy({{table, table}, {table, table}});
        the<QTableWidget>("_0_tw_RawResults")->selectAll();
        return {saveAct("save larger one"),
                copyAct("copy larger table", "Copy_0_tw_RawResults", largePiece)};
    }

    Act saveAct(const QString& name)
    {
        Act act = exportAct(name, "Save", "saved", 1);
        act.prepare = [=] { files.write("work/saved", contentOf(files.path("other"))); };
        return act;
    }

    QVector<Act> acts()
    {
        // Qt crashes if smaller allocations fail while it lays out letters or embeds them in a
        // PDF; the program makes sure of that memory before.
        constexpr unsigned long drawing = 1024;
        constexpr unsigned long embedding = 1 << 20;
        return QVector<Act>{
                   saveAct("save project"),
                   exportAct("save table", "SaveCsv_0_tw_RawResults", "table.csv", drawing),
                   exportAct("save PDF", "SavePdf_3_cp_PoS", "chart.pdf", embedding),
                   exportAct("save PNG", "SavePng_3_cp_PoS", "chart.png", drawing),
                   reportAct(embedding),
                   exportAct("save chart data", "SaveDataCsv_3_cp_PoS", "data.csv", 1),
                   copyAct("copy table", "CopyFullPrecision_0_tw_RawResults", drawing),
                   copyAct("copy picture", "CopyPicture_3_cp_PoS", drawing),
                   copyAct("copy chart data", "CopyData_3_cp_PoS", 1),
               }
               + importActs() + truthActs()
               + QVector<Act>{openAct("open", "project"), openAct("open, mapped", "mapped")};
    }

private:
    QAction* entry(const QString& name) const { return the<QAction>(qPrintable("action" + name)); }

    static QString rawResultsName(int model, int dataSet)
    {
        return QString("raw_results_estimation_model%1_data%2.csv").arg(model).arg(dataSet);
    }

    /// Model 0 is plain ASCII, model 1 is not.
    void writeTables()
    {
        QVector<QVector<double>> samples;
        for (int sample = 0; sample < 400; ++sample) {
            samples.append({100.0 + sample, 0.5 + sample, 2, 3});
        }
        for (int dataSet = 0; dataSet < 2; ++dataSet) {
            files.writeRawResults("work/" + rawResultsName(0, dataSet), samples);
            const QString name = "work/" + rawResultsName(1, dataSet);
            const QString path = files.writeRawResults(name, samples);
            files.write(name, contentOf(path) + "7,8,\xc3\xa4\n");
            files.writeRawResults(QString("work/sim%1.csv").arg(dataSet), {{1, 0.5, 2}});
        }
        files.write("work/truth.csv", "0,1\n");
        files.write("work/meds.csv", "0,1\n1,2\n");
    }

    void writeProjects()
    {
        ProjectItems items;
        items.rawResults = {{{{1, 2}, {1.5, 3}}}};
        items.rawResultsHeaders = QVector<QStringList>{{"ofv", "THETA1"}};
        files.write("other", ProjectBytes(items).bytes);
        items.rawResults.append(items.rawResults);
        items.possibleDoses = "0,1,2";
        files.write("work/project", ProjectBytes(items).bytes);
        files.write("work/mapped", ProjectBytes(items).bytes);
        QFile(work("mapped")).resize(qint64(1100) << 20); // too large for a copy in memory
    }

    /// All that the window would save.
    QByteArray state()
    {
        answered([this] { entry("Save")->trigger(); }, {files.path("state")});
        return contentOf(files.path("state"));
    }

    Act exportAct(const QString& name, const QString& action, const QString& file,
                  unsigned long leastPiece)
    {
        Act act;
        act.name = name;
        act.perform = [act = entry(action)] { act->trigger(); };
        act.files = QStringList{work(file)};
        act.result = [=] {
            QByteArray bytes = contentOf(work(file));
            const int date = bytes.indexOf("/CreationDate");
            return date < 0 ? bytes : bytes.remove(date, bytes.indexOf('\n', date) - date);
        };
        act.prepare = [=] { files.write("work/" + file, "older"); };
        act.leastPiece = leastPiece;
        return act;
    }

    /// Saves the report as HTML, where the time can be removed.
    Act reportAct(unsigned long leastPiece)
    {
        Act act = exportAct("save report", "SaveReport", "document.html", leastPiece);
        act.result = [result = act.result] {
            static const QRegularExpression time(R"(\d{4}-\d\d-\d\d[ T][\d:]{5,8})");
            return QString::fromUtf8(result()).remove(time).toUtf8();
        };
        return act;
    }

    Act copyAct(const QString& name, const QString& action, unsigned long leastPiece)
    {
        Act act;
        act.name = name;
        act.perform = [act = entry(action)] { act->trigger(); };
        act.result = [] {
            QByteArray bytes = QApplication::clipboard()->text().toUtf8();
            QDataStream stream(&bytes, QIODevice::Append);
            stream << QApplication::clipboard()->image();
            return bytes;
        };
        act.prepare = [] { QApplication::clipboard()->setText("older"); };
        act.leastPiece = leastPiece;
        return act;
    }

    QVector<Act> importActs()
    {
        const auto result = [this] { return state(); };
        const auto import = [=](const QString& name, const char* button, const QStringList& names) {
            Act act{name, [=] { press(button); }, {}, result, {}, isPartOf};
            for (const QString& file : names) {
                act.files.append(work(file));
            }
            return act;
        };
        return {
            import("import, ASCII", "__pb_importFbF", {rawResultsName(0, 0), rawResultsName(0, 1)}),
            import("import, other", "__pb_importFbF", {rawResultsName(1, 0), rawResultsName(1, 1)}),
            import("import folder", "__pb_import", {""})};
    }

    /// Imports of true MEDs, and of simulation models and true models, which make some.
    QVector<Act> truthActs()
    {
        const auto compare = [this] { press("_4_pb_compTruth"); };
        const auto shown = [this] { return rows("_5_tw_trueModelTMED").join('\n').toUtf8(); };
        const auto calculated = [=] {
            compare();
            return shown();
        };
        const auto lacksMed = [](const QByteArray& result, const QByteArray& /*whole*/) {
            return result.contains("nan");
        };
        const auto import = [this](const char* button) { return [=] { press(button); }; };
        return {{"import true MEDs", compare, {work("meds.csv")}, shown, {}, {}},
                {"import simulations",
                 import("_5_pb_importSimRawRes"),
                 {work("sim0.csv"), work("sim1.csv")},
                 calculated,
                 {},
                 lacksMed},
                {"import true models",
                 import("_5_pb_simTrueModel"),
                 {work("truth.csv")},
                 shown,
                 {},
                 {}}};
    }

    Act openAct(const QString& name, const QString& file)
    {
        const auto open = [act = entry("Open")] { act->trigger(); };
        return {name,
                open,
                {work(file)},
                [this] { return state(); },
                [=] { answered(open, {files.path("other")}); },
                {}};
    }

    template <typename Value>
    static QByteArray bytesOf(const Value& value)
    {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << value;
        return bytes;
    }

    /// True if a project has whole tables and headings of another one, or none.
    static bool isPartOf(const QByteArray& project, const QByteArray& whole)
    {
        ProjectItems found;
        ProjectItems expected;
        readItemCount(project, found);
        readItemCount(whole, expected);
        for (int model = 0; model < found.rawResults.size(); ++model) {
            const QStringList heading = found.rawResultsHeaders.value(model);
            if (!heading.isEmpty() && heading != expected.rawResultsHeaders.value(model)) {
                return false;
            }
            const QVector<Table> tables = expected.rawResults.value(model);
            for (int dataSet = 0; dataSet < found.rawResults.at(model).size(); ++dataSet) {
                const Table& table = found.rawResults.at(model).at(dataSet);
                if (!table.isEmpty() && bytesOf(table) != bytesOf(tables.value(dataSet))) {
                    return false;
                }
            }
        }
        return true;
    }
};

#endif
