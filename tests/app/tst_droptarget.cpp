// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/windowtest.h"

class TestDropTarget : public WindowTest
{
    Q_OBJECT

    /// Drags files of the folder over the page and drops them on a widget of it; false if they
    /// are refused.
    bool drop(const QStringList& names, QWidget* target)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& name : names) {
            urls.append(QUrl::fromLocalFile(files.path(name)));
        }
        data.setUrls(urls);
        data.setText(names.join('\n')); // as file managers do
        const QPoint place = target->rect().center();
        const auto offered = Qt::MoveAction | Qt::CopyAction; // the former by default
        for (const auto type : {QEvent::DragEnter, QEvent::DragMove, QEvent::Drop}) {
            QDragMoveEvent event(place, offered, &data, Qt::LeftButton, Qt::ShiftModifier, type);
            event.ignore();
            QApplication::sendEvent(target, &event);
            if (!event.isAccepted() || event.dropAction() != Qt::CopyAction) {
                return false;
            }
        }
        QCoreApplication::processEvents();
        return true;
    }

private slots:
    void initTestCase()
    {
        files.writeRawResults("raw_results_estimation_model0_data0.csv", {{5, 1}});
        files.writeRawResults("raw_results_b.csv", {{7, 1}});
        files.writeRawResults("raw_results_a.csv", {{8, 1}});
        files.write("wide.csv", "a," + QByteArray(70000, 'b') + '\n' + QByteArray(19, ',') + "6\n");
        files.write("picture.csv", QByteArray("\x89PNG,\0\n", 7));
        openWindow();
        pressAndAnswer("__pb_import", {files.path()});
        save();
    }

    void takesDroppedFiles_data()
    {
        const Rows<QStringList, QByteArray, QString> row("names", "target", "ofv");
        row("files in the order of their names", {"raw_results_b.csv", "raw_results_a.csv"},
            "__pb_importFbF", "8");
        row("file on an input", {"raw_results_b.csv"}, "_m1_le_colNumOFV", "7");
        row("folder on a label", {"./"}, "label_20", "5");
        row("file of a long heading", {"wide.csv"}, "page_6", "6");
        row("project", {"project"}, "tabWidget", "5");
        row("results and a project", {"raw_results_b.csv", "project"}, "page_6", "");
        row("picture on an input", {"picture.csv"}, "_m1_le_colNumOFV", "");
    }
    void takesDroppedFiles()
    {
        QFETCH(QStringList, names);
        QFETCH(QByteArray, target);
        QFETCH(QString, ofv);
        openWindow();
        QCOMPARE(drop(names, reach<QWidget>(target)), !ofv.isEmpty());
        QCOMPARE(cell("_0_tw_RawResults", 0, 19), ofv);
        QCOMPARE(the<QLineEdit>("_m1_le_colNumOFV")->text(), "20");
    }

    void refusesFilesBelowADialog()
    {
        QProgressDialog busy(window.get());
        busy.setWindowModality(Qt::WindowModal);
        busy.show();
        QVERIFY(!drop({"raw_results_b.csv"}, the<QWidget>("page_6")));
    }
};

QTEST_MAIN(TestDropTarget)
#include "tst_droptarget.moc"
