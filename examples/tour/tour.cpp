// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "examples/tour/tour.h"

#include "tests/support/dialogdriver.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QTableWidget>
#include <QTest>
#include <qcustomplot.h>

Tour::Tour(const QString& outputFolder)
    : m_output(outputFolder)
    , m_watched(QGuiApplication::platformName() != "offscreen")
{
    require(m_output.mkpath("."), "cannot create " + outputFolder);
    user::show(m_window);
}

void Tour::showPage(Page page)
{
    user::showPage(m_window, page);
    pause();
}

void Tour::pause() const
{
    QTest::qWait(m_watched ? 800 : 0);
}

void Tour::require(bool condition, const QString& problem) const
{
    if (!condition) {
        qFatal("%s", qPrintable(problem));
    }
}

void Tour::savePicture(const QString& name)
{
    pause();
    const QString path = m_output.filePath(name + ".png");
    require(m_window.grab().save(path), "cannot write " + path);
}

void Tour::savePictureOfTip(const QString& name, const char* table, int column)
{
    const auto* cells = widget<QTableWidget>(table);
    const QPoint mouse = cells->visualRect(cells->model()->index(0, column)).center();
    user::rest(cells->viewport(), mouse);
    pause();
    QWidget* tip = nullptr;
    for (QWidget* shown : QApplication::topLevelWidgets()) {
        tip = shown->inherits("QTipLabel") && shown->isVisible() ? shown : tip;
    }
    require(tip, QString("%1 shows no tooltip").arg(table));
    QPixmap picture = m_window.grab();
    // Another window: below the mouse, where a screen wider than this window has it, but not
    // beyond this one's edge.
    QPoint place = cells->viewport()->mapTo(&m_window, mouse + QPoint(2, 16));
    place.setX(qMin(place.x(), m_window.width() - tip->width()));
    tip->render(&picture, place);
    const QString path = m_output.filePath(name + ".png");
    require(picture.save(path), "cannot write " + path);
}

void Tour::saveTable(const QString& name, const char* table) const
{
    writeFile(name + ".csv", tableText(table));
}

QString Tour::tableText(const char* table) const
{
    const auto* cells = widget<QTableWidget>(table);
    const auto textOf = [](const QTableWidgetItem* item) {
        return item ? item->text() : QString();
    };

    QString content;
    for (int column = 0; column < cells->columnCount(); ++column) {
        content += ',' + textOf(cells->horizontalHeaderItem(column));
    }
    for (int row = 0; row < cells->rowCount(); ++row) {
        content += '\n' + textOf(cells->verticalHeaderItem(row));
        for (int column = 0; column < cells->columnCount(); ++column) {
            content += ',' + textOf(cells->item(row, column));
        }
    }
    return content + '\n';
}

void Tour::saveCurves(const QString& name, const char* plot, const QString& heading) const
{
    const auto* chart = widget<QCustomPlot>(plot);
    require(chart->graphCount() > 0, QString("%1 shows no curve").arg(plot));

    const int points = chart->graph(0)->dataCount();
    QString content = heading + '\n';
    for (int point = 0; point < points; ++point) {
        content += QString::number(chart->graph(0)->dataMainKey(point), 'g', 17);
        for (int curve = 0; curve < chart->graphCount(); ++curve) {
            require(chart->graph(curve)->dataCount() == points,
                    QString("the curves of %1 differ in length").arg(plot));
            content += ',' + QString::number(chart->graph(curve)->dataMainValue(point), 'g', 17);
        }
        content += '\n';
    }
    writeFile(name + ".csv", content);
}

void Tour::saveCopied(const QString& name, const char* source, const QString& entry) const
{
    user::chooseEntry(widget<QWidget>(source), entry);
    writeFile(name + ".txt", QGuiApplication::clipboard()->text() + '\n');
}

void Tour::saveEndpoints(const QString& name, const char* source)
{
    save(name + ".csv", source, "Save endpoint values as CSV...");
}

void Tour::saveReports(const QString& name)
{
    for (const char* const ending : {".html", ".pdf", ".odt"}) {
        save(name + ending, "_4_tw_doseChoice", "Save report...");
    }
}

/// By an entry in the menu of a table or chart.
void Tour::save(const QString& name, const char* source, const QString& entry)
{
    const QString path = QFileInfo(m_output.filePath(name)).absoluteFilePath();
    QFile::remove(path);
    DialogDriver dialogs;
    dialogs.answerFiles({path});
    user::chooseEntry(widget<QWidget>(source), entry);
    require(QFileInfo(path).size() > 0, "there is no " + path);
}

void Tour::saveProject(const QString& path)
{
    require(!QFile::exists(path) || QFile::remove(path), "cannot replace " + path);
    DialogDriver dialogs;
    dialogs.answerFiles({QFileInfo(path).absoluteFilePath()});
    QTest::keyClick(&m_window, Qt::Key_S, Qt::ControlModifier);
    require(QFileInfo(path).size() > 0, "no project was saved as " + path);
}

void Tour::writeFile(const QString& name, const QString& content) const
{
    QFile file(m_output.filePath(name));
    const QByteArray bytes = content.toUtf8();
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(),
            "cannot write " + file.fileName());
}
