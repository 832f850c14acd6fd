// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/findings/blankcelldelegate.h"
#include "app/findings/findingsview.h"

#include <QtTest>
#include <QtWidgets>

class TestFindingsView : public QObject
{
    Q_OBJECT

private slots:
    void tintsAreVisible_data()
    {
        QTest::addColumn<QColor>("ground");
        QTest::newRow("light") << QColor(239, 239, 239);
        QTest::newRow("dark") << QColor(53, 53, 53);
    }
    void tintsAreVisible()
    {
        QFETCH(QColor, ground);
        const QPalette before = QApplication::palette();
        QApplication::setPalette(QPalette(ground));
        QMainWindow window;
        auto* pages = new QToolBox;
        auto* page = new QWidget;
        auto* rows = new QVBoxLayout(page);
        QWidget* const inputs[] = {new QPushButton, new QCheckBox("x"), new QLineEdit, new QSpinBox,
                                   new QTableWidget};
        QStringList found;
        for (QWidget* input : inputs) {
            rows->addWidget(input);
        }
        pages->addItem(page, "page");
        window.setCentralWidget(pages);
        window.show();
        FindingsView view(&window, pages, window.statusBar());
        const auto pixels = [&inputs] {
            QVector<QRgb> colours;
            for (QWidget* input : inputs) {
                const QPoint place(input->width() / 3, input->height() / 2);
                colours.append(
                    input->window()->grab().toImage().pixel(input->mapTo(input->window(), place)));
            }
            return colours;
        };
        for (QWidget* input : inputs) {
            input->setAccessibleDescription("help");
            input->setAccessibleName("input");
            view.watch(
                input, [&found] { return found; }, [] { return QStringList("note"); });
        }
        const QVector<QRgb> plain = pixels();
        QCOMPARE(inputs[0]->toolTip(), "note\nhelp");
        found = QStringList("<b>wrong");
        view.renewAll();
        const QVector<QRgb> tinted = pixels();
        for (int i = 0; i < tinted.size(); ++i) {
            QVERIFY2(qAbs(qRed(tinted.at(i)) - qBlue(tinted.at(i)))
                         > qAbs(qRed(plain.at(i)) - qBlue(plain.at(i))) + 20,
                     inputs[i]->metaObject()->className());
        }
        QCOMPARE(inputs[0]->toolTip(), "<pre>&lt;b&gt;wrong\nnote\nhelp</pre>");
        QCOMPARE(view.all(), QStringList({"input: <b>wrong", "input: note"}));
        found.clear();
        view.renewAll();
        QCOMPARE(pixels(), plain);
        QApplication::setPalette(before);
    }

    void tintsCellsWithoutAnItem()
    {
        QTableWidget table(2, 1);
        new BlankCellDelegate(&table, "never typed");
        table.setItem(0, 0, new QTableWidgetItem(""));
        table.show();
        const auto pixel = [&table](int row) {
            const QPoint place = table.visualRect(table.model()->index(row, 0)).center();
            return table.viewport()->grab().toImage().pixel(place);
        };
        QVERIFY(pixel(0) != pixel(1) && table.item(1, 0) == nullptr);
        for (const auto& [row, text] : {std::pair(1, "never typed"), {0, ""}}) {
            const QPoint place = table.visualRect(table.model()->index(row, 0)).center();
            QHelpEvent help(QEvent::ToolTip, place, table.viewport()->mapToGlobal(place));
            QApplication::sendEvent(table.viewport(), &help);
            QTRY_COMPARE(QToolTip::text(), text);
        }
    }
};

QTEST_MAIN(TestFindingsView)
#include "tst_findingsview.moc"
