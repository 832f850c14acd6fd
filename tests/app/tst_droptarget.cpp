// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/windowtest.h"

class TestDropTarget : public WindowTest
{
    Q_OBJECT

    /// Drags files over the page and drops them on a widget of it; false if they are refused.
    bool drop(const QStringList& paths, QWidget* target)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& path : paths) {
            urls.append(QUrl::fromLocalFile(path));
        }
        data.setUrls(urls);
        data.setText(paths.join('\n')); // as file managers do
        const QPoint place = target->rect().center();
        QDragEnterEvent enter(place, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, {});
        QDragMoveEvent move(place, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, {});
        QDropEvent drop(place, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, {});
        for (QDropEvent* event :
             {static_cast<QDropEvent*>(&enter), static_cast<QDropEvent*>(&move), &drop}) {
            event->ignore();
            QApplication::sendEvent(target, event);
            if (!event->isAccepted() || event->dropAction() != Qt::CopyAction) {
                return false;
            }
        }
        QCoreApplication::processEvents();
        return true;
    }

private slots:
    void init() { openWindow(); }

    void takesDroppedFiles()
    {
        const QString first = files.writeRawResults("raw_results_b.csv", {{7, 1}});
        const QString second = files.writeRawResults("raw_results_a.csv", {{8, 1}});
        const QString picture = files.write("picture.csv", QByteArray("\x89PNG,\0\n", 7));
        const QString wide = files.write("raw_results_c.csv", "a," + QByteArray(70000, 'b') + '\n'
                                                                  + QByteArray(19, ',') + "6\n");
        const StudyFiles folder;
        folder.writeRawResults("raw_results_estimation_model0_data0.csv", {{5, 1}});
        const QString project = folder.path("analysis");
        pressAndAnswer("__pb_import", {folder.path()});
        pressShortcut(Qt::Key_S, project);
        // clang-format off
        const std::tuple<QStringList, const char*, QString> drops[] = { // with model 0's OFV
            {{first, second}, "__pb_importFbF", "8"}, {{first}, "_m1_le_colNumOFV", "7"},
            {{folder.path() + '/'}, "label_20", "5"}, {{second}, "tabWidget", "8"}, {{wide}, "page_6", "6"},
            {{project}, "page_6", "5"}, {{first, project}, "page_6", ""}, {{}, "page_6", ""},
            {{first, folder.path()}, "page_6", ""}, {{picture}, "page_6", ""},
            {{files.path("missing.csv")}, "_m1_le_colNumOFV", ""}, {{"/dev/null"}, "page_6", ""}};
        // clang-format on
        QString shown = "5";
        for (const auto& [paths, target, ofv] : drops) {
            QCOMPARE(drop(paths, reach<QWidget>(target)), !ofv.isEmpty());
            shown = ofv.isEmpty() ? shown : ofv;
            QCOMPARE(cell("_0_tw_RawResults", 0, 19), shown);
            QCOMPARE(the<QLineEdit>("_m1_le_colNumOFV")->text(), "20");
        }
        QProgressDialog busy(window.get());
        busy.setWindowModality(Qt::WindowModal);
        busy.show();
        QVERIFY(!drop({first}, the<QWidget>("page_6")));
    }
};

QTEST_MAIN(TestDropTarget)
#include "tst_droptarget.moc"
