// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/settings.h"
#include "tests/support/batchrun.h"
#include "tests/support/rows.h"
#include "tests/support/studyfiles.h"

#include <csignal>
#include <functional>
#include <unistd.h>

#define SIMULATION VELMORA_EXAMPLES "/simulation"

/// What a project keeps: emax with variability between subjects, no upper bound.
const char definitions[] = " --folder " SIMULATION " --doses 0:0.2:1 --levels 10:20:90 --lower 0.4"
                           " --endpoint 0=THETA2*DOSE --endpoint 2=THETA2*DOSE+THETA3*DOSE^2"
                           " --endpoint '#1=THETA2*DOSE/(THETA3+DOSE)+ETA1' --omega 1=COL24"
                           " --method average";
/// The rest, from a place in the random sequence, with all files.
const char circumstances[] = " --individuals 20 --random-position 1234567 --processors 2"
                             " --true-models " SIMULATION "/raw_results_simulation*.csv"
                             " --true-model-numbers " SIMULATION "/true_models.csv"
                             " --endpoints --report html";

/// The program velmora-batch: wrong usage, and results whole, in shards and repeated, from the
/// simulation study.
class TestBatch : public QObject
{
    Q_OBJECT

    BatchRun run(const QString& arguments) const
    {
        return {files.path(), "velmora-batch " + arguments};
    }
    BatchRun runStudy(const QString& arguments) const
    {
        return run(arguments + definitions + circumstances);
    }
    /// A copy of a shard as "bad", with what a command in it spoils.
    void spoil(const QString& command) const
    {
        QCOMPARE(BatchRun(files.path(), "cp -r half-1 bad; cd bad; " + command).error, "");
    }
    /// What differs between two folders but for times.
    QString differing(const QString& folders) const
    {
        return BatchRun(files.path(), "diff -rq -I '\"seconds\":' -I 'by Velmora' " + folders).out;
    }

    const StudyFiles files{};
    const StudyFiles inputs{}; ///< for wrong usage

private slots:
    void initTestCase()
    {
        QCOMPARE(runStudy("-o whole --save-project project").code, 0);
        QCOMPARE(runStudy("--plan plan.json").code, 0);
        QCOMPARE(runStudy("--quiet -o half-0 --data-sets 0:10 --plan plan.json").error, "");
        QCOMPARE(runStudy("--quiet -o half-1 --data-sets 10:20").error, "");

        QCOMPARE(BatchRun(inputs.path(), "mkdir empty one two study").error, "");
        for (const char* const name :
             {"study/raw_results_estimation_model0_data0.csv", "one/raw_results_a.csv",
              "study/raw_results_estimation_model0_data1.csv", "two/raw_results_a.csv"}) {
            inputs.writeRawResults(name, {{0, 1}, {0, 2}});
        }
        QFile(inputs.write("secret", "1")).setPermissions({});
        inputs.write("damaged", "{\"doses\": ");
        inputs.write("unknown", "{\"dosis\": \"1\"}");
        inputs.write("kind", "{\"log-scale\": \"yes\"}");
        inputs.write("meds", "0,1\n0,3\n");
    }
    void cleanup()
    {
        QDir(files.path("new")).removeRecursively();
        QDir(files.path("bad")).removeRecursively();
    }

    void refusesWrongUsage_data();
    void refusesWrongUsage()
    {
        QFETCH(QString, arguments);
        arguments.replace("STUDY", "--folder study --doses 0:1:3 --levels 50 -o new");
        const QString list = "find . ! -name secret -exec cat {} + -print 2>/dev/null";
        const QByteArray before = BatchRun(inputs.path(), list).out;
        QFETCH(int, code);
        QFETCH(QString, message);
        const BatchRun ended(inputs.path(), "velmora-batch " + arguments);
        QVERIFY(ended.failed(code, message) && ended.out.isEmpty());
        QCOMPARE(BatchRun(inputs.path(), list).out, before);
    }

    /// By hand: at dose 1 one of the slopes is above 1.5, at dose 2 both are.
    void writesTables()
    {
        files.writeRawResults("slopes.csv", {{0, 1}, {0, 2}});
        files.write("meds.csv", "0,1\n");
        run("--models slopes.csv --doses 0:1:2 --levels 40,60,100 --lower 1.5 --upper inf -o new "
            "--endpoint slopes=THETA1*DOSE --true-meds meds.csv");
        const auto table = [&](const char* name) { return contentOf(files.path("new/") + name); };
        QCOMPARE(table("probability.csv"), "data_set,dose,probability,error\r\n0,0,0,0\r\n"
                                           "0,1,50,35.35533905932737\r\n0,2,100,0\r\n");
        QCOMPARE(table("doses.csv"), "data_set,40,60,100\r\n0,1,2,NA\r\n");
        QCOMPARE(table("weights.csv"), "data_set,sample,slopes\r\n0,0,1\r\n0,1,1\r\n");
        QCOMPARE(table("theoretical_meds.csv"), "data_set,true_model,theoretical_med\r\n0,0,1\r\n");
        QCOMPARE(table("comparison.csv"), "level,nominal,over,equal,under,mean_absolute_error\r\n"
                                          "40,0.40000000000000002,0,1,0,NA\r\n"
                                          "60,0.59999999999999998,1,0,0,1\r\n"
                                          "100,1,0,0,1,NA\r\n");

        files.write("meds.csv", "0,9\n");
        run("--settings new/run.json --true-meds meds.csv -o high");
        QVERIFY(contentOf(files.path("high/comparison.csv")).contains("0,0,1,NA\r\n60,"));
        QVERIFY(contentOf(files.path("high/findings.txt")).contains("theoretical MED: 1 of 1. "));
    }

    void reportsMissingFiles()
    {
        QVERIFY(QDir(files.path()).mkdir("new") && QDir(files.path()).mkdir("bad"));
        for (const char* const dataSet : {"0", "2"}) {
            files.writeRawResults(
                QString("new/raw_results_estimation_model0_data%1.csv").arg(dataSet), {{0, 1}});
        }
        run("--folder new --doses 1 --levels 50 --quiet --data-sets 0:1 -o bad/0");
        run("merge --quiet bad/0 -o bad/all");
        QVERIFY(contentOf(files.path("bad/all/findings.txt"))
                    .contains("1 file of later data sets not read, as raw_results_estimation_"));
    }

    void sharesTheWork_data()
    {
        const Rows<int, QString> row("count", "plan");
        for (const int count : {1, 4, 20}) {
            row(qPrintable(QString("%1 shards").arg(count)), count, "");
            row(qPrintable(QString("%1 by a plan").arg(count)), count, " --plan plan.json");
        }
    }
    void sharesTheWork()
    {
        QFETCH(int, count);
        QFETCH(QString, plan);
        QString merge = "merge --quiet -o new";
        for (int shard = count - 1; shard >= 0; --shard) {
            const QString words = QString("-o bad/%1 --quiet --data-sets %2:%3").arg(shard);
            const int first = 20 * shard / count;
            QCOMPARE(runStudy(words.arg(first).arg(first + 20 / count) + plan).error, "");
            merge += QString(" bad/%1").arg(shard);
        }
        QCOMPARE(run(merge).error, "");
        QCOMPARE(differing("new whole"), "");
    }

    void repeatsARun_data()
    {
        files.write("settings.json", runStudy("--dry-run").out);
        const Rows<QString, QString> row("arguments", "others");
        row("by its record", "--settings whole/run.json", "");
        row("by printed settings", "--settings settings.json", "");
        row("with its project", QString("project") + circumstances,
            "Files new/report.html and whole/report.html differ\n"
            "Files new/run.json and whole/run.json differ\n");
    }
    void repeatsARun()
    {
        QFETCH(QString, arguments);
        QCOMPARE(run(arguments + " -o new").code, 0);
        QTEST(differing("new whole"), "others");
    }

    void refusesWhatDoesNotFit_data();
    void refusesWhatDoesNotFit()
    {
        QFETCH(QString, fault);
        QFETCH(QString, arguments);
        QFETCH(QString, message);
        spoil(fault);
        if (!arguments.contains("-o ")) {
            arguments += " -o new";
        }
        const bool merges = arguments.startsWith("merge");
        QVERIFY((merges ? run(arguments) : runStudy(arguments)).failed(1, message));
        QVERIFY(!QFile::exists(files.path("new")));
    }

    void resumes_data()
    {
        const Rows<QString, QString> row("fault", "others");
        row("a complete shard", "echo x >doses.csv; touch velmora-1.tmp",
            "Files bad/doses.csv and half-1/doses.csv differ\nOnly in bad: velmora-1.tmp\n");
        row("one that was killed", "echo x >doses.csv; touch velmora-1.tmp; rm run.json", "");
        row("one of other files", "echo x >doses.csv; sed -i '0,/a256\": \"/s//&0/' run.json", "");
    }
    void resumes()
    {
        QFETCH(QString, fault);
        spoil(fault);
        QCOMPARE(runStudy("--quiet --data-sets 10:20 --resume -o bad").error, "");
        QTEST(differing("bad half-1"), "others");
    }

    void tellsFindings()
    {
        spoil("sed -i s/glibc/other/ run.json");
        QCOMPARE(run("merge half-0 bad -o new --quiet").error, "");
        const BatchRun strict = run("merge half-0 bad -o new --resume --strict");
        QCOMPARE(strict.code, 3);
        QVERIFY(strict.error.startsWith("The shards were calculated on different processors or"));
        QCOMPARE(strict.error, contentOf(files.path("new/findings.txt")));
    }

    void leavesNothingOnAFullDisk()
    {
        // A program that is built for coverage writes a file of its own at its end.
        const QString command = "ulimit -f 20; LLVM_PROFILE_FILE=/dev/null "
                                "velmora-batch -o new --settings half-0/run.json";
        QVERIFY(BatchRun(files.path(), command)
                    .failed(1, "new/*.csv cannot be written: File too large."));
        QVERIFY(!QFile::exists(files.path("new")));
    }

    void endsWhenItIsTold()
    {
        for (const int signal : {SIGTERM, SIGINT}) {
            QProcess process;
            process.setWorkingDirectory(files.path());
            process.start("sh", {"-c", QString("exec velmora-batch -o new --individuals 9999")
                                           + definitions});
            QTRY_VERIFY(QDir(files.path("new")).entryList({"*.tmp"}).size() > 2);
            QElapsedTimer timer;
            timer.start();
            QCOMPARE(kill(pid_t(process.processId()), signal), 0);
            QVERIFY(process.waitForFinished());
            QVERIFY2(timer.elapsed() < 1500, qPrintable(QString::number(timer.elapsed())));
            QCOMPARE(process.exitCode(), 1);
            QCOMPARE(QDir(files.path("new")).entryList({"*.csv", "*.json"}), QStringList());
        }
    }
};

using UsageRow = std::function<void(const QString&, int, const QString&)>;

/// Options whose value is missing or makes no sense.
void addWrongValues(const UsageRow& row)
{
    QStringList names{"--settings", "--data-sets", "--plan", "-o", "--save-project"};
    for (const SettingDefinition& definition : settingDefinitions()) {
        if (*definition.value != 0 && definition.name != QLatin1String("project")) {
            names.append(QString("--") + definition.name);
        }
    }
    for (const QString& name : qAsConst(names)) {
        row("STUDY " + name, 2, "Missing value after '" + name + "'; see --help.");
    }
    for (const QString& text : QString("doses x,levels x,lower x,upper x,log-scale x,cache x,"
                                       "method x,ofv x,summary x,report x,individuals -1,"
                                       "ofv-column 0,theta1-column 1.5,processors 1025,"
                                       "random-position 2147483647,truth-position 0,"
                                       "data-sets 1,data-sets x:1,data-sets 1:1,data-sets -1:1")
                                   .split(',')) {
        row("STUDY --" + text, 2,
            QString("--%1*\"%2\"*.").arg(text.section(' ', 0, 0), text.section(' ', 1)));
    }
}

void TestBatch::refusesWrongUsage_data()
{
    const Rows<QString, int, QString> add("arguments", "code", "message");
    const auto row = [&](const QString& arguments, int code, const QString& message) {
        add(qPrintable(arguments), arguments, code, message);
    };
    addWrongValues(row);
    row("-o new", 2, "There are no data: name a project, or give --models or --folder.");
    row("--folder study --doses 1", 2, "Results need a folder: give --output DIR.");
    row("STUDY --dose 1", 2, "Unknown option 'dose'; see --help.");
    row("a b -o new", 2, "Only one project at a time; b is one too many.");
    row("STUDY --models meds", 2, "Give only one of a project, --models and --folder.");
    row("--models absent -o new", 1, "--models: absent does not exist.");
    row("--models one -o new", 1, "--models: one is a folder, not a file.");
    if (geteuid() != 0) { // who may read everything
        row("--models secret -o new", 1, "--models: secret cannot be read: permission denied.");
    }
    row("--models meds ./meds -o new", 2, "--models names meds twice.");
    row("absent -o new", 1, "project: absent does not exist.");
    row("meds -o new", 1, "meds is not a project with bootstrap results.");
    row("--folder absent -o new", 1, "--folder: absent is not a folder.");
    row("--folder empty -o new", 1, "--folder: empty/raw_*_model0_data0.csv does not exist.");
    row("--folder study -o new", 2, "There are no candidate doses: give --doses, such as 0:1:10.");
    row("STUDY --endpoint a=1", 2, "--endpoint: there is no model \"a\"; the models are model 0.");
    row("STUDY --omega 1", 2, "--omega takes MODEL=ROWS, not \"1\".");
    row("--models one/raw_results_a.csv two/raw_results_a.csv --endpoint a=1 -o new", 2,
        "--endpoint: several models have the name \"a\"; use their numbers, #0 to #1.");
    row("STUDY --omega '0=1,2;3,4'", 2, "--omega of model 0: the elements 2,1 and 1,2 differ.");
    row("STUDY --omega 0=COL", 2, "*: \"COL\" is neither a number nor a column such as COL24.");
    row("STUDY --endpoint 0=ETA2 --omega 0=1", 2, "*: 1 rows, but the endpoint has ETA2.");
    row("STUDY --true-models meds", 2, "--true-models * belong together: give both.");
    const QString numbers = " --true-model-numbers meds";
    row("STUDY --true-meds meds --true-models meds" + numbers, 2, "Give either *, not both.");
    row("STUDY --true-models a b c" + numbers, 2, "--true-models names 3 files; it takes 1, or *.");
    row("STUDY --true-models meds" + numbers, 1, "--true-model-numbers: meds must have *.");
    row("STUDY --true-meds damaged", 1, "--true-meds: damaged must have a row with *.");
    row("STUDY --settings absent", 1, "--settings: absent does not exist.");
    row("STUDY --settings damaged", 2, "damaged is not a settings file: * at byte *.");
    row("STUDY --settings unknown", 2, "unknown has the unknown setting \"dosis\"; see --help.");
    row("STUDY --settings kind", 2, "The setting \"log-scale\" must be true or false.");
    row("STUDY -o meds", 1, "--output: meds is not a folder.");
    row("STUDY -o study", 1, "--output: study is not empty; name another folder, or *.");
    row("STUDY -o meds/new", 1, "--output: meds/new cannot be created; *");
    row("--folder study --doses 1 --plan one", 1, "--plan: one cannot be written.");
    row("STUDY --save-project one", 1, "--save-project: one cannot be written: *.");
    row("STUDY --save-project p --data-sets 0:1", 2, "--save-project *: leave out --data-sets.");
    row("merge -o new", 2, "merge needs the folders of shards and --output DIR.");
    row("merge study -o new --doses 1", 2, "merge takes no --doses: *.");
}

void TestBatch::refusesWhatDoesNotFit_data()
{
    const Rows<QString, QString, QString> row("fault", "arguments", "message");
    const QString merge = "merge bad half-0";
    row("gap", "", "merge bad", "No shard has the data sets 0 to 9.");
    row("no end", "", "merge half-0", "No shard has the data sets 10 to 19.");
    row("overlap", "", merge + " half-1", "* and another shard both have data set 10.");
    row("unfinished", "rm run.json", merge, "bad is not complete: it has no run.json.");
    row("damaged", "echo >shard.dat", merge,
        "bad/shard.dat is damaged; calculate this shard again.");
    row("no weights", "rm weights.csv", merge, "bad/weights.csv cannot be read: *.");
    const QString differs = "half-0 and bad differ in \"%1\".";
    row("version", "sed -i 's/Velmora /&1/' run.json", merge, differs.arg("program"));
    row("method", "sed -i s/average/selection/ run.json", merge, differs.arg("method"));
    row("omega", "sed -i s/COL24/COL25/ run.json", merge, differs.arg("omega"));
    const QString others = ", the file of %1, differs from that of %2: other SHA-256.";
    row("truth", "sed -i '/csv\"/{n;s/: \"/&0/}' run.json", merge,
        "raw_*.csv" + others.arg("simulation model 0", "the other shards"));
    const QString part = "--data-sets 0:2 --plan bad/plan.json";
    row("planned files", "sed 's/a256\": \"/&0/' ../plan.json >plan.json", part,
        "raw_*.csv" + others.arg("model 0, data set 0", "bad/plan.json"));
    row("planned settings", "sed s/COL24/COL25/ ../plan.json >plan.json", part,
        "this run and bad/plan.json differ in \"omega\".");
    row("damaged plan", "sed s/draws/x/ ../plan.json >plan.json", part,
        "--plan: bad/plan.json is damaged.");
    row("other run", "sed -i s/COL24/COL25/ run.json", "--data-sets 10:20 --resume -o bad",
        "this run and bad differ in \"omega\".");
    row("no plan", "", part, "--plan: bad/plan.json does not exist. *");
}

QTEST_GUILESS_MAIN(TestBatch)
#include "tst_batch.moc"
