// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/windowtest.h"

/// What charts show, and what leaves the window.
class TestExport : public WindowTest
{
    Q_OBJECT

    /// Chooses an entry that saves a file; gives what is in it.
    QByteArray saved(const char* widget, const QString& entry, const QString& fileName)
    {
        DialogDriver dialogs;
        dialogs.answerFiles({files.path(fileName)});
        user::chooseEntry(reach<QWidget>(widget), entry);
        return contentOf(files.path(fileName));
    }
    static void turnWheel(QWidget* plot)
    {
        const QPoint place = plot->rect().center();
        QWheelEvent event(place, plot->mapToGlobal(place), {}, {0, 120}, {}, {}, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(plot, &event);
    }

private slots:
    void init() { openWindow(); }

    void charts_data()
    {
        const Rows<QByteArray, QString, QPointF, QString> row("chart", "data", "place", "text");
        row("typical curve", "_1_cp_typicalDRPlot", "Dose\tEndpoint\n0\t1\n0.1\t1.1\n2\t3",
            {0.2, 1.2}, "Dose: 0.1\nEndpoint: 1.1");
        row("probability", "_3_cp_PoS", "DOSE\tProbability\n0\t0\n0.1\t50\n2\t50", {1.9, 60},
            "DOSE: 2\nProbability: 50 %, Monte Carlo error 35");
        row("comparison", "_5_cp_truthVisualization",
            "Level\tNominal\tOver\tOver or equal\tAll\n40\t0.8\t1\t2\t2\n60\t1.2\t1\t1\t2",
            {59, 0.1},
            "Level 60 %\nOver: 1\nEqual: 0\nUnder: 1\nNominal: 1.2 "
            "(0 to 2 in 95 % of studies by chance)\nCompatible with the level");
    }
    void charts()
    {
        QFETCH(QByteArray, chart);
        QFETCH(QPointF, place);
        QFETCH(QString, text);
        calculateDoses(1);
        compareWithTruth();
        QTEST(copied(chart, "Copy data"), "data");
        auto* plot = the<QCustomPlot>(chart);
        user::rest(plot, QPointF(plot->xAxis->coordToPixel(place.x()),
                                 plot->yAxis->coordToPixel(place.y()))
                             .toPoint());
        QTRY_COMPARE(QToolTip::text(), text);
        const QSignalSpy drawn(plot, &QCustomPlot::afterReplot);
        user::chooseEntry(plot, "Fit to data");
        QVERIFY(!drawn.isEmpty() && plot->yAxis->range().contains(curve(chart).last()));
    }

    void histograms_data()
    {
        const Rows<QByteArray, QByteArray, int, int, QString, double, QString> row(
            "chart", "table", "column", "dragsAfterWheel", "data", "place", "text");
        // Of 20 samples; each bin is 26.03 / 4 wide.
        row("results", "_0_cp_rawResHistoGram", "_0_tw_RawResults", 19,
            Qt::Horizontal | Qt::Vertical, "\"ofv\"\tFrequency\n-0.38\t7\n6.1275\t6\n12.635\t7", 9,
            "\"ofv\": 6.1275 to 12.635\nFrequency: 6");
        // Of 21 data sets, over the candidate doses; each bin is 4.62 / 3 wide.
        row("doses", "_4_cp_doseChoiceDistribution", "_4_tw_doseChoice", 0, Qt::Horizontal,
            "DOSE\tFrequency\n-0.06\t8\n1.48\t13", 2, "DOSE: 1.48 to 3.02\nFrequency: 13");
    }
    void histograms()
    {
        QFETCH(QByteArray, chart);
        QFETCH(QByteArray, table);
        QFETCH(int, column);
        QFETCH(QString, data);
        QFETCH(double, place);
        QFETCH(QString, text);
        RawResults results(1);
        for (int dataSet = 0; dataSet < 21; ++dataSet) {
            results[0].append(Table());
            for (int sample = 0; sample < 20; ++sample) {
                results[0].last().append({double(sample), dataSet < 8 ? 3.0 : 1.0});
            }
        }
        importStudy(results);
        edit(endpoints, 0, 0, "THETA1*DOSE");
        type("_1_le_possibleDoses", "0:1:3");
        reach<QWidget>(weights);
        type("_3_le_lowerBound", "2.5");
        type("_3_le_upperBound", "999");
        type("_4_le_probabilities", "50");
        press(toDoses);
        user::clickCell(reach<QTableWidget>(table), 0, column);
        QCOMPARE(copied(chart, "Copy data"), data);
        auto* plot = the<QCustomPlot>(chart);
        user::rest(plot, QPoint(int(plot->xAxis->coordToPixel(place)), plot->height() / 2));
        QTRY_COMPARE(QToolTip::text(), text);
        // Drag and zoom; a right click does neither, nor shows all.
        turnWheel(plot);
        QTEST(int(plot->axisRect()->rangeDrag()), "dragsAfterWheel");
        QTest::mouseDClick(plot, Qt::RightButton);
        QVERIFY(copied(chart, "Copy data") != data);
        QTEST(int(plot->axisRect()->rangeDrag()), "dragsAfterWheel");
        user::chooseEntry(plot, "Fit to data");
        QCOMPARE(copied(chart, "Copy data"), data);
        turnWheel(plot);
        QTest::mouseDClick(plot, Qt::LeftButton);
        QCOMPARE(copied(chart, "Copy data"), data);
        QTest::mouseClick(plot, Qt::LeftButton);
        QCOMPARE(plot->axisRect()->rangeDrag(), Qt::Horizontal);
        // Doses out of sight are shown once they are new, and all by an import.
        type("_1_le_possibleDoses", "90:1:93");
        press(toDoses);
        user::clickCell(reach<QTableWidget>("_4_tw_doseChoice"), 0, 0);
        QVERIFY(copied("_4_cp_doseChoiceDistribution", "Copy data").contains("\t21"));
        type("_1_le_possibleDoses", "0:1:3");
        turnWheel(plot);
        importStudy(results);
        press(toDoses);
        user::clickCell(reach<QTableWidget>(table), 0, column);
        QCOMPARE(copied(chart, "Copy data"), data);
    }

    void savesTables()
    {
        calculateDoses(1);
        compareWithTruth();
        QByteArray text = saved("_0_tw_RawResults", "Save as CSV...", "results.csv");
        QVERIFY(text.startsWith("\"\"\"model\"\"\","));
        QVERIFY(text.endsWith(",0,0,2,2\r\n"));
        text = saved("_5_tw_Summary", "Save as CSV...", "summary.csv");
        QVERIFY(text.startsWith(",for all,>50%\r\nAve. Est MED > The MED,0.1,0\r\n"));
        DialogDriver dialogs;
        dialogs.answerFiles({"/proc/table.csv"});
        dialogs.acknowledge("The file could not be written.");
        user::chooseEntry(reach<QWidget>("_4_tw_doseChoice"), "Save as CSV...");
    }

    void exportsPictures()
    {
        calculateDoses(1);
        auto* plot = reach<QCustomPlot>("_3_cp_PoS");
        QCOMPARE(saved("_3_cp_PoS", "Save data as CSV...", "curve"), "unreadable");
        QCOMPARE(contentOf(files.path("curve.csv")),
                 "DOSE,Probability\r\n0,0\r\n0.1,50\r\n2,50\r\n");
        const QImage image = QImage::fromData(saved("_3_cp_PoS", "Save as PNG...", "curve.png"));
        QCOMPARE(image.width(), qRound(plot->width() * 300.0 / plot->logicalDpiX()));
        QCOMPARE(image.dotsPerMeterX(), 11811);
        const QByteArray pdf = saved("_3_cp_PoS", "Save as PDF...", "curve.pdf");
        QVERIFY(pdf.startsWith("%PDF"));
        QVERIFY(pdf.contains("/Font")); // no picture
        user::chooseEntry(plot, "Copy picture");
        QCOMPARE(QApplication::clipboard()->image().size(), plot->size());
    }

    void exportsBandsToReadWithoutColours()
    {
        calculateDoses(1);
        compareWithTruth();
        auto* plot = reach<QCustomPlot>("_5_cp_truthVisualization");
        const QImage shown = plot->grab().toImage();
        user::chooseEntry(plot, "Copy picture");
        const QImage picture = QApplication::clipboard()->image();
        QCOMPARE(picture.size(), plot->size());
        const auto hatching = [&](double level, double count) {
            const QPointF place(plot->xAxis->coordToPixel(level), plot->yAxis->coordToPixel(count));
            int dark = 0;
            for (int pixel = 0; pixel < 144; ++pixel) {
                dark +=
                    qGray(picture.pixel(place.toPoint() + QPoint(pixel % 12, pixel / 12 - 6))) < 60;
            }
            return dark;
        };
        const int above = hatching(50, 0.4);
        QVERIFY(above > 0);
        QCOMPARE(hatching(43, 1.35), 0); // equal
        QVERIFY(hatching(55, 1.7) > above);
        QVERIFY(plot->legend->visible());
        QCOMPARE(plot->legend->itemCount(), 4);
        QCOMPARE(plot->grab().toImage(), shown);
    }

    void summarisesTheAnalysis()
    {
        calculateDoses(1);
        compareWithTruth();
        type("_4_le_probabilities", "40"); // the comparison stays that of 40 and 60
        press(toDoses);
        edit(endpoints, 1, 0, "THETA1+DOSE+ETA1");
        edit(omega, 0, 0, "COL30");
        const QString text = copied("_4_tw_doseChoice", "Copy analysis summary");
        QVERIFY(text.startsWith("Velmora "));
        const QString made = "Model Selection, using individual ofv, 1.05 < endpoint <= 10\n";
        QStringList missing{
            the<QLabel>("__lb_directory")->text() + "\nColumns: OFV 20, THETA1 21\n",
            "\nDoses: 0, 0.1, 2\nPopulation: Mean of the Population, 100 ",
            "\nLevels (%): 40\n",
            "\nmodel 1\traw_results_estimation_model1_data*.csv\t2\t2\tTHETA1+DOSE+ETA1\t(0-1-",
            "\n\nOmega of model 1\nCOL30\n",
            "\nmodel 1, omega: ",
            "\nRelative weights, data set 0\n",
            "data set 0, " + made + "Out of date; since changed: endpoints. It was made with:\n",
            "\nmodel 1\tTHETA1+DOSE\t",
            "(%)\n0\t0\n0.1\t50\n2\t50\n",
            "\nLevel (%)\tDose\tData sets\n40\t0.1\t2\n",
            "\nDoses by " + made + "Out of date; since changed: chosen doses.\n",
            "changed: endpoints, levels. The doses were selected with:\n",
            "\n40\t1\t1\t0\t0.1\n60\t1\t0\t1\t2\n",
            "\n40\t0.8\t0 to 2\tyes\n60\t1.2\t0 to 2\tyes\n\nFindings\n",
            "model 1, weight: Proposed with K = 1 ",
        };
        missing.erase(std::remove_if(missing.begin(), missing.end(),
                                     [&](const QString& part) { return text.contains(part); }),
                      missing.end());
        QCOMPARE(missing, QStringList());
    }
};

QTEST_MAIN(TestExport)
#include "tst_export.moc"
