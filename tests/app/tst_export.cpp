// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/csv.h"
#include "tests/support/windowtest.h"

const char writeFailed[] = "The file could not be written.";

static const auto clipboardText = [] { return QApplication::clipboard()->text(); };

/// Right-clicks a widget and chooses an entry of the menu that opens.
static void chooseEntry(QWidget* widget, const QString& text)
{
    user::reach(widget);
    const auto* table = qobject_cast<QTableWidget*>(widget);
    QWidget* place = table ? table->viewport() : widget;
    const QPoint centre =
        table ? table->visualItemRect(table->currentItem()).center() : place->rect().center();
    QTest::mouseClick(place, Qt::RightButton, {}, centre);
    QContextMenuEvent request(QContextMenuEvent::Mouse, centre, place->mapToGlobal(centre));
    QApplication::sendEvent(place, &request);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    user::require(menu, widget, "has no menu");
    for (QAction* action : menu->actions()) {
        if (action->text() == text && action->isEnabled()) {
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            QCoreApplication::processEvents(); // the menu goes
            user::reach(widget);
            return;
        }
    }
    user::require(false, widget, qPrintable("does not offer " + text));
}

class TestExport : public WindowTest
{
    Q_OBJECT

    /// Chooses an entry that saves a file; gives what is in it.
    QByteArray saved(const char* widget, const QString& entry, const QString& fileName)
    {
        DialogDriver dialogs;
        dialogs.answerFiles({files.path(fileName)});
        chooseEntry(reach<QWidget>(widget), entry);
        return contentOf(files.path(fileName));
    }

private slots:
    void init() { openWindow(); }

    void copiesTheSelection()
    {
        calculateDoses(1);
        QTableWidget* table = reach<QTableWidget>("_0_tw_RawResults");
        const auto click = [table](int row, int column, Qt::KeyboardModifiers modifiers) {
            const QRect cell = table->visualItemRect(table->item(row, column));
            QTest::mouseClick(table->viewport(), Qt::LeftButton, modifiers, cell.center());
        };
        user::clickCell(table, 0, 20);
        QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(clipboardText(), "0.333333");
        click(1, 19, Qt::ShiftModifier);
        QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(clipboardText(), "2\t0.333333\n2\t2");
        chooseEntry(table, "Copy with full precision");
        QCOMPARE(clipboardText(), "2\t0.33333333333333331\n2\t2");
        click(0, 19, Qt::ControlModifier); // no longer selected
        QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(clipboardText(), "\"ofv\"\t\"THETA1\"\n\t0.333333\n2\t2");

        // What was typed into a cell is not in the state, and an editor has the keys itself.
        compareWithTruth();
        table = reach<QTableWidget>("_5_tw_trueModelTMED");
        user::editCell(table, 0, 0, "0.5");
        chooseEntry(table, "Copy with full precision");
        QCOMPARE(clipboardText(), "0.5");
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, user::clickCell(table, 1, 0));
        QTest::keyClicks(QApplication::focusWidget(), "77");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home, Qt::ShiftModifier);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(clipboardText(), "77");
    }

    void copiesComputedNumbers()
    {
        calculateDoses(1);
        compareWithTruth();
        // clang-format off
        const std::pair<const char*, const char*> tables[] = {
            // 1 / (1 + 1/e)
            {"_2_tw_relativeWeight", "0.7310585786300049\t0.2689414213699951\n0.2689414213699951\t0.7310585786300049"},
            {"_4_tw_doseChoice", "0.10000000000000001\tnan\n0.10000000000000001\t2"},
            {"_5_tw_trueModelTMED", "0\t0.10000000000000001\n1\t0"},
            {"_5_tw_Summary", "0.099999999999999978\t0\n0.5\t0\n0.099999999999999978\t0.19999999999999996\n"
                              "0.19999999999999996\t0\n1\t0\n0.19999999999999996\t0.19999999999999996"},
            {"_5_tw_aveUnderEstOverEst", "0.10000000000000001\n2"}};
        // clang-format on
        for (const auto& [name, text] : tables) {
            auto* table = reach<QTableWidget>(name);
            table->setFocus();
            QTest::keyClick(table, Qt::Key_A, Qt::ControlModifier);
            chooseEntry(table, "Copy with full precision");
            QCOMPARE(clipboardText(), text);
        }
    }

    void savesTables()
    {
        calculateDoses(1);
        QByteArray text = saved("_0_tw_RawResults", "Save as CSV...", "table.csv");
        QVERIFY(text.startsWith("\"\"\"model\"\"\",") && text.endsWith(",0,0,2,2\r\n"));
        compareWithTruth();
        edit("_5_tw_trueModelTMED", 0, 0, "1,5");
        text = saved("_5_tw_trueModelTMED", "Save as CSV...", "models.csv");
        QVERIFY(text.endsWith("\"1,5\",0.1\r\n1,0\r\n"));
        text = saved("_5_tw_Summary", "Save as CSV...", "summary.csv");
        QVERIFY(text.startsWith(",for all,>50%\r\nAve. Est MED > The MED,0.1,0\r\n"));

        DialogDriver dialogs; // a folder has the name
        dialogs.answerFiles({"/proc/table.csv"});
        dialogs.acknowledge(writeFailed);
        chooseEntry(reach<QWidget>("_4_tw_doseChoice"), "Save as CSV...");
    }

    void exportsCharts()
    {
        calculateDoses(1);
        compareWithTruth();
        const char probability[] = "DOSE\tProbability\n0\t0\n0.1\t50\n2\t50";
        auto* plot = reach<QCustomPlot>("_3_cp_PoS");
        chooseEntry(plot, "Copy data");
        QCOMPARE(clipboardText(), probability);
        QCOMPARE(saved("_3_cp_PoS", "Save data as CSV...", "curve"), "unreadable");
        QCOMPARE(csvReadToDouble(files.path("curve.csv")).mid(1),
                 Table({{0, 0}, {0.1, 50}, {2, 50}}));
        chooseEntry(reach<QWidget>("_5_cp_truthVisualization"), "Copy data");
        QCOMPARE(clipboardText(), "Level\tNominal\tOver\tOver or equal\tAll\n"
                                  "40\t0.8\t1\t2\t2\n60\t1.2\t1\t1\t2");

        const QImage image = QImage::fromData(saved("_3_cp_PoS", "Save as PNG...", "curve.png"));
        QCOMPARE(image.width(), plot->width() * 300 / plot->logicalDpiX());
        QCOMPARE(image.dotsPerMeterX(), 11811);
        const QByteArray pdf = saved("_3_cp_PoS", "Save as PDF...", "curve.pdf");
        QVERIFY(pdf.startsWith("%PDF") && pdf.contains("/Font")
                && !pdf.contains("/Subtype /Image"));
        chooseEntry(plot, "Copy picture");
        QCOMPARE(QApplication::clipboard()->image().size(), plot->size());
    }

    void keepsRangesAtARightClick()
    {
        Table samples{{9, 9}};
        for (int value = 0; value < 10; ++value) {
            samples.append(QVector<double>(2, value));
        }
        importStudy({{samples}});
        user::clickCell(reach<QTableWidget>("_0_tw_RawResults"), 0, 20);
        auto* plot = the<QCustomPlot>("_0_cp_rawResHistoGram");
        const QCPRange fitted = plot->xAxis->range();
        plot->xAxis->setRange(3, 11);
        QTest::mouseDClick(plot, Qt::RightButton);
        chooseEntry(plot, "Copy data");
        QCOMPARE(clipboardText(), "\"THETA1\"\tFrequency\n3\t4");
        QCOMPARE(plot->axisRect()->rangeDrag(), Qt::Horizontal | Qt::Vertical);
        QCOMPARE(plot->xAxis->range(), QCPRange(3, 11));
        QTest::mouseMove(plot, plot->axisRect()->rect().center() - QPoint(9, 0));
        QTRY_COMPARE(QToolTip::text(), "\"THETA1\": 3 to 7\nFrequency: 4");
        chooseEntry(plot, "Fit to data");
        QCOMPARE(plot->xAxis->range(), fitted);
        QTest::mouseClick(plot, Qt::LeftButton);
        QCOMPARE(plot->axisRect()->rangeDrag(), Qt::Horizontal);
    }

    void tellsThePointUnderTheMouse()
    {
        calculateDoses(1);
        compareWithTruth();
        reach<QTableWidget>("_4_tw_doseChoice")->setCurrentCell(0, 0);
        // clang-format off
        const std::tuple<const char*, double, double, const char*> places[] = {
            {"_1_cp_typicalDRPlot", 0.2, 1.2, "Dose: 0.1\nEndpoint: 1.1"},
            {"_3_cp_PoS", 1.9, 60, "DOSE: 2\nProbability: 50 %"},
            {"_5_cp_truthVisualization", 59, 0.1, "Level 60 %\nOver: 1\nEqual: 0\nUnder: 1\nNominal: 1.2"}};
        // clang-format on
        for (const auto& [name, key, value, text] : places) {
            auto* plot = reach<QCustomPlot>(name);
            QTest::mouseMove(plot, QPoint(int(plot->xAxis->coordToPixel(key)),
                                          int(plot->yAxis->coordToPixel(value))));
            QTRY_COMPARE(QToolTip::text(), text);
        }
        auto* chart = the<QWidget>("_5_cp_truthVisualization");
        QTest::mouseMove(chart, QPoint(2, 2)); // beside the data
        QTRY_COMPARE(QToolTip::text(), chart->toolTip());
    }

    void countsUpToOneWithoutDataSets()
    {
        calculateDoses(1);
        compareWithTruth("0,0.05\n"); // of one data set, not of both
        auto* plot = reach<QCustomPlot>("_5_cp_truthVisualization");
        QCOMPARE(plot->yAxis->range(), QCPRange(0, 1));
        chooseEntry(plot, "Fit to data");
        QCOMPARE(plot->yAxis->range(), QCPRange(0, 1));
    }

    void summarisesTheAnalysis()
    {
        calculateDoses(1);
        compareWithTruth();
        type("_4_le_probabilities", "40"); // the comparison stays that of 40 and 60
        press("_4_pb_startCalculation");
        edit("_1_tw_endPoints", 1, 0, "THETA1+DOSE+ETA1");
        edit("_1_tw_etaDefinition", 0, 0, "COL3");
        chooseEntry(reach<QWidget>("_4_tw_doseChoice"), "Copy analysis summary");
        const QString text = clipboardText();
        QVERIFY(text.startsWith("Velmora "));
        const QString made = "Model Selection, using individual ofv, 1.05 < endpoint <= 10\n";
        const QStringList parts{
            "\nDirectory: " + the<QLabel>("__lb_directory")->text()
                + "\nColumns: OFV 20, THETA1 21\n",
            "\nDoses: 0, 0.1, 2\nPopulation: Mean of the Population, 100 individuals\n",
            "\nMethod: Model Selection, using individual ofv\nLevels (%): 40\n",
            "\nmodel 1\traw_results_estimation_model1_data*.csv\t2\t2\tTHETA1+DOSE+ETA1\t(0-1-",
            "\n\nOmega of model 1\nCOL3\n",
            "\nRelative weights, data set 0\n",
            "\nmodel 1\t0.5\t1\n",
            "data set 0, " + made + "Stale, since changed: endpoints. It was made with:\n",
            "\nmodel 1\tTHETA1+DOSE\t(0-1-ofv/2)\n",
            "\nDose\tProbability (%)\n0\t0\n0.1\t50\n2\t50\n",
            "\nLevel (%)\tDose\tData sets\n40\t0.1\t2\n",
            "\nDoses by " + made + "Stale, since changed: chosen doses.\n",
            "\nStale, since changed: endpoints, levels. The doses were selected with:\n",
            "\n40\t1\t1\t0\t0.1\n60\t1\t0\t1\t2\n\nFindings\n",
            "model 1, weight: Proposed with K = 1 for the endpoint as it read then; now K is 2"};
        for (const QString& part : parts) {
            QVERIFY2(text.contains(part), qPrintable(part));
        }
    }
};

QTEST_MAIN(TestExport)
#include "tst_export.moc"
