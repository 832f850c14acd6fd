// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/calculation.h"
#include "analysis/certainty/othermethods.h"
#include "report/chapters.h"
#include "report/columns.h"
#include "report/formats.h"
#include "report/manydatasets.h"
#include "report/zip.h"
#include "tests/report/pagetext.h"
#include "tests/support/rows.h"
#include "tests/support/studyfiles.h"

/// Three models whose weights and endpoints differ from sample to sample.
static Study threeModels()
{
    Study study;
    for (int model = 0; model < 3; ++model) {
        Table samples;
        for (int sample = 0; sample < 40; ++sample) {
            samples.append({sample * (7 + model) % 11 / 2.0, sample * 5 % (13 - model) / 10.0});
        }
        study.rawResults.append(QVector<Table>{samples});
    }
    study.colNumOFV = 1;
    study.colNumTHETA1 = 2;
    defineModels(study, {"emax", "linear", "power"});
    const char* const endpoints[] = {"THETA1*DOSE", "THETA1+DOSE/2", "THETA1*DOSE^2"};
    for (int model = 0; model < 3; ++model) {
        study.endPoints[model].endPointParser.expression = endpoints[model];
        study.endPoints[model].weightParser.expression = "(0-1-COL1/2)";
    }
    study.doses = {0.5, 1, 1.5, 2};
    study.rawResultsHeaders.fill({"ofv", "THETA1"}, 3);
    study.target = {0.6, 1.9};
    study.levels = {30, 50};
    bringUpToDate(study.endPoints, study.doses);
    return study;
}

static ReportDocument filled(const QString& text)
{
    ReportDocument document(text, {text});
    document.add(ReportHeading{text});
    document.add(ReportParagraph{text, Emphasis::Statement});
    document.add(ReportList{{text, text}, Emphasis::Warning});
    document.add(ReportTable{text, {text, text}, "lr", {{text, text}, {text}}});
    ReportChart chart{text, text, text, text};
    chart.curves = {{text, {0, 1, qInf()}, {1e300, qQNaN(), 2}, {1, 1, 1}, ChartRole::Main}};
    chart.bars = {{text, {}, {}}};
    chart.spots = {{0, 0, 3}};
    document.add(chart);
    return document;
}

/// A report as data, without a window.
class TestReportDocument : public QObject
{
    Q_OBJECT

private slots:
    void makesTextsFit_data()
    {
        const Rows<QString, QString> row("text", "fit");
        row("markup", "<b>&\"'", "<b>&\"'");
        row("lines", "a\nb\tc", "a b c");
        row("no letters", QString("a%1b%2").arg(QChar(1)).arg(QChar(0xffff)), "a b ");
        row("pair", QString::fromUtf8("\xf0\x9f\x98\x80"), QString::fromUtf8("\xf0\x9f\x98\x80"));
        row("half a pair", QString(QChar(0xd83d)) + "b", QString(QChar(0xfffd)) + "b");
        row("long", QString(1000000, 'x'), QString(4000, 'x') + "... (1000000 characters in all)");
    }
    void makesTextsFit()
    {
        QFETCH(QString, text);
        QFETCH(QString, fit);
        const ReportDocument document = filled(text);
        QCOMPARE(document.title(), fit);
        QCOMPARE(std::get<ReportList>(document.blocks().at(2)).texts, QStringList({fit, fit}));
        const auto& table = std::get<ReportTable>(document.blocks().at(3));
        QCOMPARE(table.rows.last(), QStringList({fit, ""}));
        const QString page =
            pageText(*writtenReport(document, "html", [](double) { return true; }));
        QVERIFY(page.contains('\n' + fit + '|' + fit + "|\n"));
        for (const char* const suffix : {"pdf", "odt"}) {
            double share = 0;
            const auto file = writtenReport(document, suffix, [&share](double done) {
                share = done;
                return true;
            });
            QVERIFY(file->startsWith(suffix == QByteArray("pdf") ? "%PDF" : "PK\3\4"));
            QCOMPARE(share, 1.0);
        }
    }

    void breaksLongWords_data()
    {
        const Rows<QStringList, QStringList> row("found", "pieces");
        row("short", textPieces("data_1.c"), {"data_1.c"});
        row("number", textPieces("-0.0205347"), {"-0.0205347"});
        row("name", textPieces("a-b raw_results_long_name.csv, c-d"),
            {"a-b raw_", "results_", "long_", "name.", "csv, c-d"});
        row("text as code", codePieces("has changed " + QString(32, 'x')),
            {"has changed " + QString(32, 'x')});
        row("code", codePieces(QString(33, 'x')), {QString(32, 'x'), "x"});
        row("no code", codePieces(""), {});
    }
    void breaksLongWords()
    {
        QFETCH(QStringList, found);
        QTEST(found, "pieces");
    }

    void isolatesNames()
    {
        const QString hebrew = QString::fromUtf8("\u05d0\u05d1");
        QCOMPARE(documentName(QChar(0x202e) + hebrew), QChar(0x2068) + hebrew + QChar(0x2069));
        QCOMPARE(documentName(QString("a") + QChar(0x2066) + "b"), "ab");
        const QString longName(1000, 'n');
        const QString shownName = documentName(longName);
        QCOMPARE(shownName.size(), 40);
        QVector<endPoint> models(3);
        models[0].name = longName + '0';
        models[1].name = longName + '1';
        models[2].name = "b";
        QCOMPARE(modelName(models, 1), shownName + " (model 1)");
        QCOMPARE(modelName(models, 2), "b");
    }

    void partsTables()
    {
        ReportDocument document("", {});
        ReportTable table{"Wide.", {}, QByteArray(25, 'r'), {}, 2};
        for (int column = 0; column < 25; ++column) {
            table.headings.append(QString::number(column));
        }
        table.rows.fill(table.headings, ReportDocument::mostRows + 1);
        document.add(table);
        QStringList seen;
        for (const ReportBlock& block : document.blocks()) {
            const auto& part = std::get<ReportTable>(block);
            QCOMPARE(part.rows.size(), ReportDocument::mostRows);
            QCOMPARE(part.rows.first(), part.headings);
            QCOMPARE(part.headings.mid(0, 2), table.headings.mid(0, 2));
            QCOMPARE(part.alignment.size(), part.headings.size());
            seen += part.headings.mid(2);
        }
        QCOMPARE(seen, table.headings.mid(2));
        const QString caption = std::get<ReportTable>(document.blocks().first()).caption;
        QCOMPARE(caption, "Table 1. Wide. The first 2000 of 2001 rows.");
    }

    /// Numbers are not broken, however long the headings are.
    void leavesRoomForNumbers()
    {
        const QString number = "0.0558605";
        ReportDocument document("", {});
        const QStringList headings("Dose");
        document.add(ReportTable{"",
                                 headings + QVector<QString>(9, QString(40, 'n')).toList(),
                                 QByteArray(10, 'r'),
                                 {QVector<QString>(10, number).toList()}});
        QCOMPARE(document.blocks().size(), 2);
        for (const ReportBlock& block : document.blocks()) {
            for (const double share : columnShares(std::get<ReportTable>(block))) {
                QVERIFY(share * lettersInLine > number.size() + 1);
            }
        }
    }

    /// The check value of the checksum is that of its definition.
    void packs()
    {
        ZipArchive archive;
        archive.add("a", "123456789", ZipArchive::Packing::Stored);
        archive.add("b", QByteArray(100000, 'x'), ZipArchive::Packing::Deflated);
        const QByteArray bytes = archive.finished();
        QCOMPARE(bytes.mid(14, 4).toHex(), QByteArray("2639f4cb"));
        QVERIFY(bytes.size() < 500);
    }

    /// From endpoints of all models every method gives what it would have calculated.
    void comparesMethods_data()
    {
        const Rows<bool, bool> row("selecting", "individualOfv");
        for (const Method& method : allMethods) {
            row(qPrintable(QString("%1 %2").arg(method.selecting).arg(method.individualOfv)),
                method.selecting, method.individualOfv);
        }
    }
    void comparesMethods()
    {
        QFETCH(bool, selecting);
        QFETCH(bool, individualOfv);
        const Study study = threeModels();
        Study other = study;
        other.selecting = selecting;
        other.individualOfv = individualOfv;
        QVector<QVector<Table>> cached;
        EndpointCache cache(cached);
        cache.resize(1);
        Evaluation evaluation;
        probabilityCurve(study, 0, &cache, {}, &evaluation);
        const auto found = resultByMethod(study, evaluation, {selecting, individualOfv});
        QVERIFY(found.has_value());
        QCOMPARE(found->probability, *probabilityCurve(other, 0));
        Evaluation selected; // without the endpoints of other models
        Study chosen = study;
        chosen.selecting = true;
        probabilityCurve(chosen, 0, nullptr, {}, &selected);
        const bool isAtHand = selecting && individualOfv;
        QCOMPARE(resultByMethod(chosen, selected, {selecting, individualOfv}).has_value(),
                 isAtHand);
    }

    /// Without evaluations, of which one lacks the endpoints of other methods.
    void tellsMedsThatWereKept()
    {
        ReportInputs inputs;
        DoseSelection& selection = inputs.results.selection;
        Study study = threeModels();
        selection.made = doseProvenance(study);
        selection.levels = study.levels;
        QStringList told;
        for (const bool isLastSelected : {false, true}) {
            selection.evaluations.resize(2);
            for (Evaluation& evaluation : selection.evaluations) {
                study.selecting = isLastSelected && &evaluation == &selection.evaluations.last();
                probabilityCurve(study, 0, nullptr, {}, &evaluation);
            }
            selection.doses.fill({1, 2}, 2);
            selection.otherMeds.clear();
            const auto page = [&inputs] {
                ReportDocument document("", {});
                addManyMethods(document, {inputs, {}, {}});
                return pageText(*writtenReport(document, "html", [](double) { return true; }));
            };
            const QString fromEvaluations = page();
            for (const Evaluation& evaluation : qAsConst(selection.evaluations)) {
                selection.otherMeds.append(medsOfAllMethods(study, evaluation));
            }
            selection.evaluations.clear();
            QCOMPARE(page(), fromEvaluations);
            told.append(fromEvaluations);
        }
        QVERIFY(told.first() != told.last());
    }

    void checksFiles_data()
    {
        const Rows<QByteArray, int, QByteArray> row("later", "state", "hash");
        // Of "abc", by its definition.
        row("same", "abc", int(FileCheck::State::Same),
            "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
        row("other size", "abcd", int(FileCheck::State::Changed), "");
        row("gone", "", int(FileCheck::State::Gone), "");
    }
    void checksFiles()
    {
        QFETCH(QByteArray, later);
        const StudyFiles files;
        const QString path = files.write("file", "abc");
        const SourceFile noted = sourceFile(path);
        if (later.isEmpty()) {
            QVERIFY(QFile::remove(path) && QDir().mkdir(path));
        } else if (later != "abc") {
            files.write("file", later);
        }
        const FileCheck check = checkFile(noted, [](qint64) { return true; });
        QTEST(int(check.state), "state");
        QTEST(check.sha256, "hash");
        QVERIFY(checkFile(noted, [](qint64) { return false; }).sha256.isEmpty());
    }
};

QTEST_MAIN(TestReportDocument)
#include "tst_reportdocument.moc"
