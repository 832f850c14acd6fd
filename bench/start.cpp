// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/mainwindow.h"

#include <QApplication>
#include <qcustomplot.h>

#include <cstdlib>
#include <cstring>

namespace {

/// Ends the program when a window is painted. Closing down does not count as part of a start.
class EndWhenPainted : public QObject
{
public:
    EndWhenPainted() { QCoreApplication::instance()->installEventFilter(this); }

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            // All widgets of the window are painted before the next events.
            QMetaObject::invokeMethod(
                this, [] { std::_Exit(0); }, Qt::QueuedConnection);
        }
        return false;
    }
};

int show(QMainWindow& window)
{
    const EndWhenPainted end;
    window.show();
    return QApplication::exec();
}

} // namespace

/// Shows the window of Velmora, or a bare window of the same size with a chart, then ends.
int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    if (argc == 2 && std::strcmp(argv[1], "bare") == 0) {
        QMainWindow window;
        window.resize(912, 725);
        window.setCentralWidget(new QCustomPlot);
        return show(window);
    }
    MainWindow window;
    return show(window);
}
