// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/randomng.h"
#include "tests/report/pagetext.h"
#include "tests/support/studywithetas.h"

#include <sys/resource.h>

using Act = std::function<void()>;
Q_DECLARE_METATYPE(Act)

/// The report as the window saves it.
class TestSaveReport : public StudyWithEtas
{
    Q_OBJECT

    QByteArray saved(const QString& name, const QString& message = {}, int abortValue = -1)
    {
        DialogDriver dialogs;
        dialogs.answerFiles({files.path(name)});
        if (QFile::exists(files.path(name))) {
            dialogs.acknowledge(name + " already exists.\nDo you want to replace it?");
        }
        if (!message.isEmpty()) {
            dialogs.acknowledge(message);
        }
        dialogs.abortProgressAt(abortValue);
        user::chooseEntry(reach<QWidget>("_4_tw_doseChoice"), "Save report...");
        return contentOf(files.path(name));
    }
    void abort(const char* button)
    {
        reach<QWidget>(button);
        DialogDriver dialogs;
        dialogs.abortProgressAt(0);
        press(button);
    }
    void calculateStale()
    {
        calculateDoses(0);
        type("_3_le_lowerBound", "1");
    }
    void calculateAndReopen()
    {
        calculateDoses(0);
        pressShortcut(Qt::Key_S, files.path("project"));
        pressShortcut(Qt::Key_O, files.path("project"));
    }
    /// Imports two files, of which one changes after that.
    void importChanging()
    {
        const QString name =
            QString("raw_results_<b>&%1%2.csv").arg(QChar(0x5d0)).arg(QString(150, 'n'));
        const QString path = files.writeRawResults(name, {{1, 2}, {3, 4}});
        pressAndAnswer("__pb_importFbF", {files.writeRawResults("b.csv", {{1, 2}}), path});
        files.write(name, "other");
    }

private slots:
    void init() { openWindow(); }

    void tells_data()
    {
        const Rows<Act, QStringList, bool> row("act", "parts", "onFirstPage");
        row(
            "nothing", [] {},
            {"\nNo data\n", "\nNo dose was selected and no probability was calculated.\n"}, true);
        // Of two samples: 26.8941 % of the first one's weight and all of the second one's hit at
        // dose 2, half of all weight at dose 0.1; in data set 1 all hits at dose 0.1.
        row(
            "numbers", [this] { calculateDoses(0); },
            {"\nDose|Probability (%)|Monte Carlo error|\n\n0|0|0|\n0.1|50|16.3383|\n",
             "\n2|63.4471|25.8468|\n", "\nmodel 0|0.5|50|\nmodel 1|0.5|50|\n",
             "\nDose|model 0|model 1|\n\n0|0|1|\n0.1|0.0333333|1.1|\n2|0.666667|3|\n",
             "\n2|13.4471|50|63.4471|\n", "|2|2|4|0|no column|no column|20: ofv|21: THETA1|\n",
             "\nTarget interval|1.05 < endpoint <= 10|\n"},
            false);
        row(
            "stale", [this] { calculateStale(); },
            {"\nOut of date: The doses were selected for 1.05 < endpoint <= 10, model average; ",
             "\nOut of date: The curve was calculated for ", "; since changed: interval.\n"},
            true);
        row(
            "aborted",
            [this] {
                calculateDoses(0);
                abort(toCurve);
                abort(toDoses);
            },
            {"\nThe calculation was aborted: the table holds 1 of 2 data sets.\n",
             "\nThe calculation was aborted: the curve holds 1 of 2 samples.\n",
             "|By Model Selection, using individual ofv|By Model Average, using one ofv per "
             "model|"},
            true);
        row(
            "several data sets", [this] { calculateDoses(1); },
            {"\nDoses were selected for 2 data sets. At 40 % the median dose is 0.1. At 60 % ",
             " the median dose is 2, and 1 data set has no dose.\n", "\n40|0.1|0.1|2|0|",
             "\n60|2|2|1|1|", "|Model Selection, using individual ofv (chosen)|"},
            true);
        row(
            "truth",
            [this] {
                calculateDoses(1);
                compareWithTruth();
            },
            {"\n40|1|1|0|2|0.8|0 to 2|yes|0.1|\n60|1|0|1|1|1.2|0 to 2|yes|2|\n"}, false);
        row(
            "project", [this] { calculateAndReopen(); },
            {"\nThe doses come from the opened project. How certain they are is not known.\n",
             "\nNot known: the doses come from a project, ", "\nproject|project|"},
            false);
        row(
            "files gone", [this] { importPairs(); },
            {"|is gone|\n", "\n4 of 4 files cannot be compared with what was read: "}, false);
        row(
            "names", [this] { importChanging(); },
            {QString("raw_results_<b>&") + QChar(0x5d0), "|has changed since it was read|\n"},
            false);
    }
    void tells()
    {
        QFETCH(Act, act);
        QFETCH(QStringList, parts);
        QFETCH(bool, onFirstPage);
        act();
        QString text = pageText(saved("report.html"));
        text = onFirstPage ? text.section("\n2 Probability by dose\n", 0, 0) : text;
        for (const QString& part : qAsConst(parts)) {
            QVERIFY2(text.contains(part),
                     qPrintable(part + " in " + text.section("The decision", 1)));
        }
    }

    /// The tables of a study with ETAs hold what the pages show, and nothing is drawn for it.
    void showsWhatPagesShow()
    {
        defineStudy();
        calculate({toCurve, toDoses});
        importSimulationModels();
        calculate({toTruth});
        const Results before = results();
        const auto position = randomPosition();
        const QString text = pageText(saved("report.html"));
        QCOMPARE(randomPosition(), position);
        const QVector<double> shown = curve("_3_cp_PoS");
        for (int dose = 0; dose < shown.size(); ++dose) {
            const QString line = QString("\n%1|%2|").arg(dose * 0.5).arg(shown.at(dose));
            QVERIFY2(text.contains(line), qPrintable(line));
        }
        for (const char* const part :
             {"\nTypical curves are left out for models that would need newly simulated "
              "individuals or have no results: model 0, model 1.\n",
              " Of 8 individuals, ",
              " were actually simulated. Before, the sequence of random numbers stood at 1.\n"}) {
            QVERIFY2(text.contains(part), part);
        }
        QCOMPARE(differing(before, results()), QString());
    }

    void choosesByEnding()
    {
        calculateDoses(0);
        QCOMPARE(saved("study"), QByteArray("unreadable"));
        QVERIFY(contentOf(files.path("study.html")).startsWith("<!DOCTYPE html>"));
        QVERIFY(saved("STUDY.PDF").startsWith("%PDF"));
        QVERIFY(saved("study.odt").startsWith("PK"));
        QCOMPARE(saved("study.doc", "The name of the file has to end with .html or .pdf or .odt."),
                 QByteArray("unreadable"));
    }

    void keepsOlderFile_data()
    {
        const Rows<QString> row("name");
        row("HTML", "older.html");
        row("PDF", "older.pdf");
        row("ODT", "older.odt");
    }
    void keepsOlderFile()
    {
        QFETCH(QString, name);
        calculateDoses(0);
        files.write(name, "older");
        QCOMPARE(saved(name, {}, 750), QByteArray("older"));
        constexpr rlim_t smallDisk = 30000;
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit small{smallDisk, limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
        const QByteArray kept = saved(name, "The file could not be written.");
        setrlimit(RLIMIT_FSIZE, &limit);
        QCOMPARE(kept, QByteArray("older"));
        QVERIFY(saved(name).size() > int(smallDisk));
    }
};

QTEST_MAIN(TestSaveReport)
#include "tst_savereport.moc"
