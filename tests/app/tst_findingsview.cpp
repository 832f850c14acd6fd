// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/findings/blankcelldelegate.h"
#include "app/findings/findingsview.h"
#include "tests/support/rows.h"
#include "tests/support/userinput.h"

class TestFindingsView : public QObject
{
    Q_OBJECT

    /// How yellow a place of a widget is painted.
    static int yellowness(QWidget* widget, const QPoint& place)
    {
        const QPoint inWindow = widget->mapTo(widget->window(), place);
        const QRgb colour = widget->window()->grab().toImage().pixel(inWindow);
        return qAbs(qRed(colour) - qBlue(colour));
    }

private slots:
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
        QMainWindow window;
        auto* pages = new QToolBox;
        auto* page = new QWidget;
        auto* layout = new QVBoxLayout;
        page->setLayout(layout);
        pages->addItem(page, "page");
        window.setCentralWidget(pages);
        FindingsView view(&window, pages, window.statusBar());
        const QVector<QWidget*> inputs{new QPushButton, new QCheckBox("x"), new QLineEdit,
                                       new QSpinBox, new QTableWidget};
        QStringList found;
        for (QWidget* input : inputs) {
            layout->addWidget(input);
            input->setAccessibleDescription("help");
            input->setAccessibleName("input");
            view.watch(
                input, [&found] { return found; }, [] { return QStringList("note"); });
        }
        window.show();
        const auto tints = [&inputs] {
            QVector<int> colours;
            for (QWidget* input : inputs) {
                colours.append(yellowness(input, {input->width() / 3, input->height() / 2}) > 20);
            }
            return colours;
        };
        QCOMPARE(tints(), QVector<int>(5, 0));
        QCOMPARE(inputs[0]->toolTip(), "note\nhelp");
        found = QStringList("<b>wrong");
        view.renewAll();
        QCOMPARE(tints(), QVector<int>(5, 1));
        QCOMPARE(inputs[0]->toolTip(), "<pre>&lt;b&gt;wrong\nnote\nhelp</pre>");
        QCOMPARE(view.all(), QStringList({"input: <b>wrong", "input: note"}));
        QApplication::setPalette(before);
    }

    void tintsCellsWithoutAnItem()
    {
        QTableWidget table(2, 1);
        new BlankCellDelegate(&table, "never typed");
        table.setItem(0, 0, new QTableWidgetItem(""));
        table.show();
        const auto centre = [&table](int row) {
            return table.visualRect(table.model()->index(row, 0)).center();
        };
        QVERIFY(yellowness(table.viewport(), centre(0)) < 20);
        QVERIFY(yellowness(table.viewport(), centre(1)) > 20);
        QCOMPARE(table.item(1, 0), nullptr);
        user::rest(table.viewport(), centre(1));
        QTRY_COMPARE(QToolTip::text(), "never typed");
        user::rest(table.viewport(), centre(0));
        QTRY_COMPARE(QToolTip::text(), QString());
    }
};

QTEST_MAIN(TestFindingsView)
#include "tst_findingsview.moc"
