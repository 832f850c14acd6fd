// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/findings/findingsview.h"
#include "tests/support/projectbytes.h"
#include "tests/support/windowtest.h"

/// How the window shows findings; the checks have tests of their own.
class TestFindings : public WindowTest
{
    Q_OBJECT

    QString tipOf(const char* table, int row, int column = 0) const
    {
        const QString text = the<QTableWidget>(table)->item(row, column)->toolTip();
        return text.startsWith("<pre>") ? QTextDocumentFragment::fromHtml(text).toPlainText()
                                        : text;
    }
    bool isTinted(const char* table, int row) const
    {
        return the<QTableWidget>(table)->item(row, 0)->data(Qt::BackgroundRole).isValid();
    }
    /// The finding on an input, or on the first cell of a table; empty unless it is tinted, too.
    QString found(const char* place) const
    {
        const auto* widget = the<QWidget>(place);
        const bool isTable = qobject_cast<const QTableWidget*>(widget);
        if (isTable ? !isTinted(place, 0) : !widget->testAttribute(Qt::WA_SetPalette)) {
            return {};
        }
        return isTable ? tipOf(place, 0) : tip(place);
    }
    static bool isYellow(QWidget* widget, const QPoint& place)
    {
        const QPoint inWindow = widget->mapTo(widget->window(), place);
        const QColor colour = widget->window()->grab().toImage().pixelColor(inWindow);
        return colour.red() - colour.blue() > 20;
    }
    void defineStudy()
    {
        importStudy({{{{2, 1}}}, {{{4, 1}}}});
        define("THETA1*DOSE", "THETA1+ETA1*DOSE", "0,1,2", "1.5");
        user::clickCell(reach<QTableWidget>(endpoints), 1, 0);
    }

private slots:
    void init() { openWindow(); }

    void inputs_data()
    {
        const Rows<QByteArray, QString, QString, QByteArray, QString> row("input", "right", "wrong",
                                                                          "place", "finding");
        const char doses[] = "_1_le_possibleDoses";
        const char levels[] = "_4_le_probabilities";
        const char lower[] = "_3_le_lowerBound";
        row("two findings in their order", endpoints, "(ofv)", "THETA2+EXP(1)", endpoints,
            "^Character 1: .*THETA2.*\nCharacter 8: ");
        row("text like markup", endpoints, "(ofv)", "<b>(1)", endpoints, "\"<b>\\(\"");
        row("no endpoint", endpoints, "(THETA1)", "", toDoses, "endpoint");
        row("THETA1 in a weight", weights, "(ofv)", "ofv+THETA1", weights, "^Character 5: ");
        row("no weight", weights, "(0-ofv)", "ofv/0*0", toCurve, "sample has a weight");
        row("column beyond the 21 there are", omega, "1", "COL30", omega, "30");
        row("column with a number below 0", omega, "1", "COL21", omega, "^In 1 of the first 2 ");
        row("text that omega does not take over", omega, "1", "abc", omega, "abc");
        row("variance of 0", omega, "1", "0", omega, "ETA1");
        row("dose that is no number", doses, "0,1", "0,x", doses, "\"x\"");
        row("level out of reach", levels, "50", "50,120", levels, "120");
        row("no lower bound", lower, "1", "", lower, "-10");
        row("upper bound below the lower", "_3_le_upperBound", "2", "0.5", lower, "0.5");
        if (const int threads = QThread::idealThreadCount(); threads > 1) {
            const char individuals[] = "_1_sb_numSimulations";
            row("individuals that threads cannot share", individuals, QString::number(2 * threads),
                QString::number(2 * threads + 1), individuals, "not simulated");
        }
    }
    void inputs()
    {
        QFETCH(QByteArray, input);
        QFETCH(QString, right);
        QFETCH(QString, wrong);
        QFETCH(QByteArray, place);
        QFETCH(QString, finding);
        importStudy({{{{2, 1}, {2, -1}}}});
        edit(endpoints, 0, 0, "THETA1+ETA1");
        reach<QWidget>(weights);
        type("_3_le_lowerBound", "1");
        set(input, wrong);
        const QString text = found(place);
        QVERIFY2(text.contains(QRegularExpression(finding)), qPrintable(text));
        QVERIFY(input != place || status() == text.section('\n', 0, 0));
        set(input, right);
        QCOMPARE(found(place), QString());
        QVERIFY(!tip(place).contains(text.section('\n', 0, 0)));
    }

    void whileTyping()
    {
        retype("_3_le_upperBound", "abc");
        QVERIFY2(status().contains("\"abc\" stands for 10"), qPrintable(status()));
    }

    void resultsAndColumns()
    {
        QByteArray lines = "model,minimization_successful,\"OMEGA(2,1)\",ofv\n";
        for (int sample = 0; sample <= 100; ++sample) {
            lines += QByteArray::number(sample) + (sample < 30 ? ",0" : ",1") + ",7.5,3\n";
        }
        pressAndAnswer("__pb_importFbF",
                       {files.writeRawResults("raw_results_emax.csv", {{7, 1}, {7, 3}}),
                        files.write("raw_results_linear.csv", lines)});
        QVERIFY2(status().startsWith("2 models, 1 data set"), qPrintable(status()));
        QVERIFY(tip("statusBar").contains("linear: 30 of 101"));
        user::rest(the<QWidget>("statusBar"), {});
        QVERIFY(tip("statusBar").contains("linear, endpoint: There is no endpoint expression"));
        reach<QWidget>(weights);
        type("_0_sb_model", "1");
        QVERIFY(tip("_0_sb_model").contains("30 of 101"));
        for (QTableWidgetItem* name :
             {the<QTableWidget>(endpoints)->verticalHeaderItem(1),
              the<QTableWidget>(weights)->verticalHeaderItem(1),
              the<QTableWidget>("_2_tw_relativeWeight")->horizontalHeaderItem(1)}) {
            QCOMPARE(name->toolTip(), tip("_0_sb_model"));
            QVERIFY(name->data(Qt::BackgroundRole).isValid());
        }
        // The third and fourth piece of the heading are one name; ofv stands in column 4.
        const auto* drifted = the<QTableWidget>("_0_tw_RawResults")->horizontalHeaderItem(3);
        QVERIFY2(drifted->toolTip().contains("ofv"), qPrintable(drifted->toolTip()));
        type("_0_sb_model", "0");
        QVERIFY(!tip("_0_sb_model").contains("30 of 101"));

        user::clickCell(reach<QTableWidget>(endpoints), 1, 0);
        user::clickCell(the<QTableWidget>("_1_tw_rawResLabels"), 0, 2);
        QVERIFY(status().contains("OMEGA(2,1)"));
        QStatusTipEvent ofMenu(""); // as a menu sends it
        QApplication::sendEvent(window.get(), &ofMenu);
        QVERIFY(status().contains("OMEGA(2,1)"));
        user::clickCell(the<QTableWidget>(endpoints), 0, 0);
        QCOMPARE(cell("_1_tw_rawResLabels", 0, 19), "\"ofv\"");
        edit(weights, 0, 0, "2");
        user::clickCell(reach<QTableWidget>("_2_tw_relativeWeight"), 0, 0);
        QCOMPARE(status(), "Selected model of this bootstrap sample");
    }

    void cacheThatNoLongerFits()
    {
        const char box[] = "_4_cb_useCash";
        defineStudy();
        press(box);
        const QString help = the<QWidget>(box)->accessibleDescription();
        press(toDoses);
        QCOMPARE(tip(box), help);
        type("_1_le_possibleDoses", "0,1");
        reach<QWidget>(box);
        QVERIFY(tip(box) != help);
        press("_4_pb_clearCash");
        QCOMPARE(tip(box), help);
    }

    void definitionsThatLookForgotten()
    {
        const auto write = [this](const char* name, double theta) {
            return files.writeRawResults(name, {{2, theta}, {2, theta}});
        };
        const QStringList paths{write("raw_results_b.csv", 1), write("raw_results_c.csv", 2)};
        pressAndAnswer("__pb_importFbF", paths);
        user::clickCell(reach<QTableWidget>(endpoints), 1, 0);
        QVERIFY(status().contains("no endpoint expression"));
        QVERIFY(tip(weights).contains("every probability will be 0"));
        reach<QWidget>(weights);
        QVERIFY(!tip(weights).contains("every probability will be 0"));
        edit(endpoints, 1, 0, "THETA1+DOSE");
        QVERIFY(tipOf(weights, 1).contains("K = 0"));
        edit(weights, 1, 0, "exp((0-ofv)/2)");
        QVERIFY(!isTinted(weights, 1));
        choose("_3_cb_aveORselect", 0);
        QVERIFY(tipOf(weights, 1).contains("log"));
        press("_2_cb_logScale");
        QVERIFY(!isTinted(weights, 1));

        // A model in front of the others shifts their texts.
        pressAndAnswer("__pb_importFbF", QStringList(write("raw_results_a.csv", 3)) + paths);
        for (const char* table : {endpoints, weights}) {
            QVERIFY2(tipOf(table, 1).startsWith("Typed for c, now stands at b."), table);
        }
        edit(endpoints, 1, 0, "THETA1-DOSE");
        QVERIFY(!isTinted(endpoints, 1));
        QVERIFY(copied("_3_cp_PoS", "Copy all findings").contains("\nb, weight: Typed for c, "));
        reach<QWidget>(weights);
        pressAndAnswer("__pb_importFbF", paths);
        QVERIFY(!tipOf(weights, 1).contains("Typed for"));
        QCOMPARE(the<QTableWidget>(weights)->rowCount(), 2);
    }

    void tintsAreVisible_data()
    {
        const Rows<QColor> row("ground");
        row("light", QColor(239, 239, 239));
        row("dark", QColor(53, 53, 53));
    }
    void tintsAreVisible()
    {
        QFETCH(QColor, ground);
        const QPalette before = QApplication::palette();
        QApplication::setPalette(QPalette(ground));
        QMainWindow view;
        auto* pages = new QToolBox;
        auto* page = new QWidget;
        auto* layout = new QVBoxLayout;
        page->setLayout(layout);
        pages->addItem(page, "page");
        view.setCentralWidget(pages);
        FindingsView findings(&view, pages, view.statusBar());
        const QVector<QWidget*> widgets{new QPushButton, new QCheckBox("x"), new QLineEdit,
                                        new QSpinBox, new QTableWidget};
        QStringList wrong;
        for (QWidget* widget : widgets) {
            layout->addWidget(widget);
            widget->setAccessibleDescription("help");
            findings.watch(
                widget, [&wrong] { return wrong; }, [] { return QStringList("note"); });
        }
        view.show();
        const auto tints = [&widgets] {
            QVector<bool> tinted;
            for (QWidget* widget : widgets) {
                tinted.append(isYellow(widget, {widget->width() / 3, widget->height() / 2}));
            }
            return tinted;
        };
        QCOMPARE(tints(), QVector<bool>(5, false));
        QCOMPARE(widgets.first()->toolTip(), "note\nhelp");
        wrong = QStringList("<b>wrong");
        findings.renewAll();
        QCOMPARE(tints(), QVector<bool>(5, true));
        QCOMPARE(widgets.first()->toolTip(), "<pre>&lt;b&gt;wrong\nnote\nhelp</pre>");
        QApplication::setPalette(before);
    }

    void cellsWithoutAnItem()
    {
        importPairs();
        auto* table = reach<QTableWidget>(endpoints);
        const QPoint place = table->visualRect(table->model()->index(1, 0)).center();
        QVERIFY(isYellow(table->viewport(), place));
        user::rest(table->viewport(), place);
        QTRY_VERIFY(QToolTip::text().contains("no endpoint expression"));
        edit(endpoints, 1, 0, "THETA1+DOSE");
        QVERIFY(!isYellow(table->viewport(), place));
    }

    void modelsWithoutResults()
    {
        ProjectItems items;
        items.rawResults = {{{{1}}, {{1}, {1}}}, {}};
        items.rawResultsHeaders = {{"a"}, {"a"}};
        files.write("project", ProjectBytes(items).bytes);
        open();
        type("_2_sb_dataNumber", "1");
        QCOMPARE(the<QTableWidget>("_2_tw_relativeWeight")->rowCount(), 2);
        type("_0_sb_model", "1");
        for (const char* widget : {"_0_sb_data", "_3_cb_dataNumber", toDoses}) {
            QVERIFY2(tip(widget).contains("Page \"0\""), widget);
        }
        press("_2_cb_logScale");
        QCOMPARE(the<QTableWidget>("_2_tw_relativeWeight")->rowCount(), 0);
    }

    void everythingHasANameAndCanBeReached()
    {
        defineStudy();
        QStringList failed;
        for (int page = 0; page < 7; ++page) {
            user::showPage(*window, page);
            QWidgetList reached{window.get()};
            for (int step = 0; step < 60; ++step) {
                QTest::keyClick(reached.last(), Qt::Key_Tab);
                reached.append(QApplication::focusWidget());
            }
            for (auto* widget : window->findChildren<QWidget*>(QRegularExpression("^(?!qt_)."))) {
                const auto* spoken = QAccessible::queryAccessibleInterface(widget);
                const bool isInput = widget->isVisible() && widget->isEnabled()
                                     && !widget->focusProxy()
                                     && widget->focusPolicy() != Qt::NoFocus;
                if (spoken->text(QAccessible::Name).isEmpty()
                    || (isInput && !reached.contains(widget))) {
                    failed.append(widget->objectName());
                }
            }
        }
        QCOMPARE(failed, QStringList());
    }
};

QTEST_MAIN(TestFindings)
#include "tst_findings.moc"
