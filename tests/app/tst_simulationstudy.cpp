// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/projectbytes.h"
#include "tests/support/windowtest.h"

#include <sys/stat.h>

const char simulationCountText[] =
    "The number of imported raw results files must be the same as number of simulations or one "
    "(if all the simulaitons were generated from the same model with the same parameters).";
const char formatText[] =
    "The file imported does not follow the recognizable format.  Make sure that it is a csv file "
    "with either one row or column.";
const char trueModels[] = "_5_tw_trueModelTMED"; // number and theoretical MED per simulation

/// Simulation studies from import to comparison, and analyses saved and opened again.
class TestSimulationStudy : public WindowTest
{
    Q_OBJECT

    /// Three data sets of two models with the slopes 1, 2 and 3 in every bootstrap sample.
    void importSlopes()
    {
        RawResults results(2);
        for (const double slope : {1.0, 2.0, 3.0}) {
            results[0].append({{10, slope}, {10, slope}});
            results[1].append({{20, slope}, {20, slope}});
        }
        importStudy(results);
    }
    /// The estimated MEDs are 3, 2 and 1: model 0 is the better one.
    void chooseDoses()
    {
        define("THETA1*DOSE", "THETA1*DOSE*2", "0:1:3", "2.5");
        type("_4_le_probabilities", "40,80");
        press("_4_cb_useCash");
        press(toDoses);
    }
    void open(const QByteArray& content, const QStringList& messages = {})
    {
        files.write("project", content);
        WindowTest::open(messages);
        QCOMPARE(the<QLabel>("__lb_directory")->text(), files.path("project"));
    }

private slots:
    void init() { openWindow(); }

    void refusesOtherNumbersOfDataSets()
    {
        importSlopes();
        pressAndAnswer("_5_pb_importSimRawRes", {files.write("a", ""), files.write("b", "")},
                       simulationCountText);
        QCOMPARE(rows(trueModels), QStringList());
        pressAndAnswer("_5_pb_simTrueModel", {files.write("true_models.csv", "0,1\n")}, formatText);
        QCOMPARE(rows(trueModels), QStringList());
    }

    void abortsImportsOfManyFiles()
    {
        // Few numbers that take long to read, as the text is not plain.
        const QString file = files.write(
            "raw_results_0.csv", "\xc3\xa4" + ("\n0." + QByteArray(10000, '7')).repeated(1000));
        QStringList paths{file};
        while (paths.size() < 100) {
            paths.append(files.path(QString("raw_results_%1.csv").arg(paths.size())));
            QFile::link(file, paths.last());
        }
        pressAndAnswer("__pb_importFbF", paths, {}, 0);
        QCOMPARE(the<QTableWidget>(endpoints)->rowCount(), 0);
        QVERIFY2(status().startsWith("100 models, 0 to 1 data set, "), qPrintable(status()));
        ProjectItems items;
        readItemCount(save(), items);
        const int read = items.rawResultsHeaders.size();
        QVERIFY(read > 0 && read < paths.size());

        // Nothing stays, as half of the simulations would fit no data set.
        items.rawResults = {QVector<Table>(paths.size())};
        open(ProjectBytes(items).bytes);
        pressAndAnswer("_5_pb_importSimRawRes", {files.write("bare.csv", "a,b\n")});
        pressAndAnswer("_5_pb_importSimRawRes", paths, {}, 0);
        QCOMPARE(rows(trueModels), QStringList());
    }

    void tellsOfAProjectThatIsNotSaved()
    {
        QCOMPARE(mkfifo(qPrintable(files.path("pipe")), 0600), 0);
        pressShortcut(Qt::Key_S, files.path("pipe"),
                      {"pipe already exists.\nDo you want to replace it?", "Not a regular file"});
    }

    void comparesWithTrueModels()
    {
        importSlopes();
        chooseDoses();
        // Model 1 with slope 1 in all data sets, one file for data set 0 alone.
        pressAndAnswer("_5_pb_simTrueModel", {files.write("models.csv", "1\n1\n1\n")},
                       otherHeaders);
        pressAndAnswer("_5_pb_importSimRawRes",
                       {files.writeRawResults("raw_results_simulation.csv", {{0, 1}, {0, 9}})});
        type("_4_le_probabilities", "7"); // for which no doses were selected
        press(toTruth);
        QCOMPARE(rows(trueModels), QStringList({"1 2"})); // 2 x 2 is the first above 2.5
        const char plot[] = "_5_cp_truthVisualization";
        QVERIFY(almostEqual(curve(plot, 1), {1, 1})); // the estimate of 3 is above

        // A number that cannot be read ends the comparison silently; the plot stays.
        edit(trueModels, 0, 0, "one");
        press(toTruth);
        QCOMPARE(rows("_5_tw_Summary").first(), "nan nan");
        QVERIFY(almostEqual(curve(plot, 1), {1, 1}));
    }

    /// A file may end behind any of its items; the others are as they were.
    void opensPartsOfFiles_data()
    {
        const auto savedItems = [this] {
            ProjectItems items;
            readItemCount(save(), items);
            return ProjectBytes(items);
        };
        openWindow();
        const QByteArray fresh = save();
        importSlopes();
        chooseDoses();
        edit(endpoints, 1, 0, "THETA1*DOSE*2+ETA1");
        edit(omega, 0, 0, "COL20");
        choose("_1_cb_iivEndPoint", 2);
        edit(weights, 0, 0, "");
        press("_2_cb_logScale");
        choose("_3_cb_aveORselect", 1);
        choose("_3_cb_indOFVone", 0);
        type("_3_le_upperBound", "9");
        const ProjectBytes whole = savedItems();
        openWindow();
        open(whole.bytes.left(whole.ends.at(2)));
        const ProjectBytes results = savedItems();
        const Rows<QByteArray, QByteArray> row("part", "saved");
        row("an empty file", "", fresh);
        for (int count = 6; count <= 17; ++count) {
            const QByteArray part = whole.bytes.left(whole.ends.at(count));
            row(qPrintable(QString("%1 items").arg(count)), part,
                part + results.bytes.mid(results.ends.at(count)));
        }
    }
    void opensPartsOfFiles()
    {
        QFETCH(QByteArray, part);
        open(part);
        QTEST(save(), "saved");
    }

    void opensFilesWithoutResults()
    {
        const QByteArray empty = save();
        importSlopes();
        type("_1_le_possibleDoses", "1");
        open(empty, {notFound});
        QCOMPARE(the<QToolBox>("__mainToolBox")->currentIndex(), 0);
        QCOMPARE(the<QLineEdit>("_1_le_possibleDoses")->text(), "");
    }
};

QTEST_MAIN(TestSimulationStudy)
#include "tst_simulationstudy.moc"
